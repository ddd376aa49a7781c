#include "Support/FakePipeline.h"
#include "Support/VirtualSlots.h"

#include <XpsParts/CFileResourceCache.h>
#include <XpsParts/CResourceCopier.h>

#include <gtest/gtest.h>

namespace {

class SomeResource : public IResWriter {
public:
    explicit SomeResource(std::wstring key = L"logo", std::wstring uri = L"/Resources/logo.png")
        : m_key(std::move(key)), m_uri(std::move(uri)) {}

    int timesWritten = 0;
    HRESULT writeResult = S_OK;

    HRESULT WriteResource(IUnknown* newPart, IPrintWriteStream* stream) override {
        EXPECT_NE(newPart, nullptr);
        ++timesWritten;
        return FAILED(writeResult) ? writeResult : stream->WriteBytes("logo bytes", 10, nullptr);
    }
    HRESULT GetKey(BSTR* key) override {
        *key = SysAllocString(m_key.c_str());
        return S_OK;
    }
    HRESULT GetUri(BSTR* uri) override {
        *uri = SysAllocString(m_uri.c_str());
        return S_OK;
    }
    IID GetPartIid() override { return __uuidof(IPartImage); }

private:
    std::wstring m_key;
    std::wstring m_uri;
};

class OpenCache : public CFileResourceCache {
public:
    using CFileResourceCache::IsInCache;
};

struct CFileResourceCacheTest : testing::Test {
    CComPtr<FakeXpsConsumer> consumer = MakeFake<FakeXpsConsumer>();
    CComPtr<FakeFixedPage> first = MakeFake<FakeFixedPage>(L"/1.fpage");
    CComPtr<FakeFixedPage> second = MakeFake<FakeFixedPage>(L"/2.fpage");
    OpenCache cache;
    SomeResource logo;
};

TEST_F(CFileResourceCacheTest, ResourceIsWrittenOnceAndBoundToEachPage) {
    EXPECT_EQ(cache.WriteResource(consumer, first, &logo), S_OK);
    EXPECT_EQ(cache.WriteResource(consumer, second, &logo), S_OK);

    EXPECT_EQ(logo.timesWritten, 1);
    ASSERT_EQ(consumer->newStreams.size(), 1u);
    EXPECT_EQ(consumer->newStreams[0]->bytes, "logo bytes");
    EXPECT_EQ(consumer->newStreams[0]->timesClosed, 1);
    EXPECT_EQ(consumer->newUris[0], L"/Resources/logo.png");
    ASSERT_EQ(first->boundParts.size(), 1u);
    ASSERT_EQ(second->boundParts.size(), 1u);
    EXPECT_TRUE(first->boundParts[0].IsEqualObject(second->boundParts[0]));

    SomeResource other(L"seal", L"/Resources/seal.png");
    EXPECT_EQ(cache.WriteResource(consumer, first, &other), S_OK);
    EXPECT_EQ(other.timesWritten, 1);
}

TEST_F(CFileResourceCacheTest, KeysAreTheSameIfTheLocaleSaysSo) {
    SomeResource composed(L"caf\x00E9");
    SomeResource decomposed(L"cafe\x0301");
    SomeResource capital(L"CAF\x00C9");
    EXPECT_EQ(cache.WriteResource(consumer, first, &composed), S_OK);
    EXPECT_EQ(cache.WriteResource(consumer, second, &decomposed), S_OK);
    EXPECT_EQ(decomposed.timesWritten, 0);
    EXPECT_EQ(second->boundParts.size(), 1u);
    EXPECT_FALSE(cache.IsInCache(CComBSTR(L"CAF\x00C9")));
    EXPECT_EQ(cache.WriteResource(consumer, second, &capital), S_OK);
    EXPECT_EQ(capital.timesWritten, 1);
}

TEST(IResWriter, KeepsItsSlots) {
    // A destructor takes two.
    EXPECT_EQ(SlotOf(&IResWriter::WriteResource), 2u);
    EXPECT_EQ(SlotOf(&IResWriter::GetKey), 3u);
    EXPECT_EQ(SlotOf(&IResWriter::GetUri), 4u);
    EXPECT_EQ(SlotOf(&IResWriter::GetPartIid), 5u);
}

TEST_F(CFileResourceCacheTest, FailedWriteClosesItsStreamAndLeavesNothing) {
    logo.writeResult = E_ACCESSDENIED;
    EXPECT_EQ(cache.WriteResource(consumer, first, &logo), E_ACCESSDENIED);
    EXPECT_EQ(consumer->newStreams[0]->timesClosed, 1);
    EXPECT_TRUE(first->boundParts.empty());
    EXPECT_FALSE(cache.IsInCache(CComBSTR(L"logo")));

    logo.writeResult = S_OK;
    EXPECT_EQ(cache.WriteResource(consumer, first, &logo), S_OK);
    EXPECT_EQ(logo.timesWritten, 2);
}

TEST_F(CFileResourceCacheTest, AnswersForWhatItKnows) {
    ASSERT_EQ(cache.WriteResource(consumer, first, &logo), S_OK);
    const CComBSTR key(L"logo");
    CComBSTR uri;
    ASSERT_EQ(cache.GetURI(key, &uri), S_OK);
    EXPECT_STREQ(uri, L"/Resources/logo.png");
    CComPtr<IPartBase> part;
    ASSERT_EQ(cache.GetIPartBaseFromCache(key, &part), S_OK);
    EXPECT_TRUE(part.IsEqualObject(first->boundParts[0]));

    const CComBSTR unknown(L"seal");
    CComBSTR noUri;
    CComPtr<IPartBase> noPart;
    EXPECT_EQ(cache.GetURI(unknown, &noUri), E_INVALIDARG);
    EXPECT_EQ(cache.GetIPartBaseFromCache(unknown, &noPart), E_INVALIDARG);
    EXPECT_EQ(cache.GetURI(key, nullptr), E_POINTER);
    EXPECT_EQ(cache.GetIPartBaseFromCache(key, nullptr), E_POINTER);
    EXPECT_EQ(cache.WriteResource(nullptr, first, &logo), E_POINTER);
    EXPECT_EQ(cache.WriteResource(consumer, nullptr, &logo), E_POINTER);
    EXPECT_EQ(cache.WriteResource(consumer, first, nullptr), E_POINTER);
}

TEST_F(CFileResourceCacheTest, CopySharesThePartsAndOutlivesItsSource) {
    {
        OpenCache source;
        ASSERT_EQ(source.WriteResource(consumer, first, &logo), S_OK);
        cache = source;
    }
    EXPECT_EQ(cache.WriteResource(consumer, second, &logo), S_OK);
    EXPECT_EQ(logo.timesWritten, 1);
}

TEST_F(CFileResourceCacheTest, TakesInTheClientsResourcesByPrefix) {
    const auto takeIn = [&](IFixedPage* page) {
        return cache.InitializeWithAnnotationResourcesEmbeddedByClient(page, CXString(L"/A/"));
    };
    const auto stamp = MakeFake<FakeImagePart>(L"/A/stamp.png");
    first->parts = {{L"/Resources/photo.png", MakeFake<FakeImagePart>(L"/Resources/photo.png").p},
                    {L"/A/stamp.png", stamp.p},
                    {L"/A/none", MakeFake<FakeUnknownPart>().p}, // without bytes, which ends it
                    {L"/A/later.png", MakeFake<FakeImagePart>(L"/A/later.png").p}};
    EXPECT_EQ(takeIn(first), E_NOINTERFACE);
    EXPECT_EQ(takeIn(nullptr), E_POINTER);
    EXPECT_FALSE(cache.IsInCache(CComBSTR(L"/Resources/photo.png")));
    EXPECT_FALSE(cache.IsInCache(CComBSTR(L"/A/later.png")));

    SomeResource clientStamp(L"/A/stamp.png", L"/A/stamp.png");
    EXPECT_EQ(cache.WriteResource(consumer, second, &clientStamp), S_OK);
    EXPECT_EQ(clientStamp.timesWritten, 0);
    ASSERT_EQ(second->boundParts.size(), 1u);
    EXPECT_TRUE(second->boundParts[0].IsEqualObject(stamp));
}

TEST_F(CFileResourceCacheTest, PageResourcesAreBoundUntilOneFails) {
    first->parts = {{L"/1.png", MakeFake<FakeImagePart>(L"/1.png").p},
                    {L"/2.png", MakeFake<FakeImagePart>(L"/2.png").p}};
    CResourceCopier copier;
    EXPECT_EQ(copier.CopyPageResources(first, second), S_OK);
    ASSERT_EQ(second->boundParts.size(), 2u);
    EXPECT_TRUE(second->boundParts[1].IsEqualObject(first->parts[1].second));
    second->setPagePartResult = E_PENDING;
    EXPECT_EQ(copier.CopyPageResources(first, second), E_PENDING);
    EXPECT_EQ(copier.CopyPageResources(nullptr, second), E_POINTER);
    EXPECT_EQ(copier.CopyPageResources(first, nullptr), E_POINTER);
}

} // namespace
