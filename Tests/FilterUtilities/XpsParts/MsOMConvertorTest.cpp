#include "Support/FakeParts.h"
#include "Support/Rows.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <Xml/DocumentBound.h>
#include <XpsParts/MsOMConvertor.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

HRESULT ResultOf(const std::function<void()>& body) {
    try {
        body();
        return S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

CComPtr<IStream> Copy(IPrintReadStream* reader) {
    return CreateIStreamFromIPrintReadStream(CComPtr<IPrintReadStream>(reader));
}

TEST(CreateIStreamFromIPrintReadStream, CopiesTheWholeStreamWhereverItStood) {
    const Rows<std::string, ULONG> cases{
        {std::string(100000, 'x') + "end", 4096}, {"few bytes", 1}, {"few bytes", 0xFFFFFFFF}, {"", 7}};
    for (const auto& [bytes, chunk] : cases) {
        for (const bool tellsEndOfFile : {true, false}) {
            const auto reader = MakeFake<MemoryReadStream>(bytes);
            reader->mostBytesAtATime = chunk;
            reader->tellsEndOfFile = tellsEndOfFile;
            reader->Seek(5, STREAM_SEEK_SET, nullptr);
            const CComPtr<IStream> copy = Copy(reader);
            ASSERT_TRUE(copy);
            ULARGE_INTEGER position{};
            EXPECT_EQ(copy->Seek(LARGE_INTEGER{}, STREAM_SEEK_CUR, &position), S_OK);
            EXPECT_EQ(position.QuadPart, 0u);
            EXPECT_EQ(ReadAll(copy), bytes) << chunk;
        }
    }
}

// A reader that has other bytes than it said, and notes how far beyond the block it was asked to write.
class LyingReader : public MemoryReadStream {
public:
    using MemoryReadStream::MemoryReadStream;
    ULONGLONG claimed = 0;
    ULONGLONG given = 0;
    bool askedBeyond = false;
    ULONG toldMore = 0;

    HRESULT STDMETHODCALLTYPE ReadBytes(void* bytes, ULONG wanted, ULONG* read, BOOL* end) override {
        askedBeyond |= given + wanted > claimed;
        const auto room = static_cast<ULONG>((std::min)(ULONGLONG{wanted}, claimed - given));
        const HRESULT result = MemoryReadStream::ReadBytes(bytes, room, read, end);
        given += *read;
        *read += toldMore;
        return result;
    }
};

TEST(CreateIStreamFromIPrintReadStream, NeverAsksForMoreThanIsLeftOfTheBlock) {
    for (const LONGLONG claimedMore : {-3, 0, 5}) {
        for (const ULONG chunk : {3u, 100u}) {
            const auto reader = MakeFake<LyingReader>("ten bytes.");
            reader->claimedMore = claimedMore;
            reader->claimed = static_cast<ULONGLONG>(10 + claimedMore);
            reader->mostBytesAtATime = chunk;
            reader->tellsEndOfFile = false;
            EXPECT_EQ(ReadAll(Copy(reader)), std::string("ten bytes.").substr(0, reader->claimed));
            EXPECT_FALSE(reader->askedBeyond) << claimedMore << " by " << chunk;
        }
    }
    const auto boaster = MakeFake<LyingReader>("ten bytes.");
    boaster->claimed = 10;
    boaster->toldMore = 1;
    EXPECT_EQ(ResultOf([&] { Copy(boaster); }), E_UNEXPECTED);
}

TEST(CreateIStreamFromIPrintReadStream, FailuresAreThrown) {
    const auto reader = MakeFake<MemoryReadStream>("bytes");
    reader->readResult = E_ACCESSDENIED;
    EXPECT_EQ(ResultOf([&] { Copy(reader); }), E_ACCESSDENIED);
    reader->seekResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { Copy(reader); }), E_PENDING);
    EXPECT_EQ(reader->References(), 1u);
    EXPECT_EQ(ResultOf([] { Copy(nullptr); }), E_INVALIDARG);

    const auto part = MakeFake<FakeImagePart>(L"/Resources/1.png", "image bytes");
    EXPECT_EQ(ReadAll(GetIStreamFromPart(CComPtr<IPartBase>(part))), "image bytes");
    part->streamResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { GetIStreamFromPart(CComPtr<IPartBase>(part)); }), E_PENDING);
    EXPECT_EQ(ResultOf([] { GetIStreamFromPart(nullptr); }), E_INVALIDARG);
}

TEST(CreateIStreamFromTicketStream, RefusesATicketTooLargeBeforeItIsRead) {
    static_assert(mostTicketBytes == OvPlatform::mostDocumentBytes);
    const auto reader = MakeFake<MemoryReadStream>("few bytes");
    EXPECT_EQ(ReadAll(CreateIStreamFromTicketStream(CComPtr<IPrintReadStream>(reader))), "few bytes");
    reader->readResult = E_ABORT;
    reader->claimedMore = static_cast<LONGLONG>(mostTicketBytes) - 8;
    EXPECT_EQ(ResultOf([&] { CreateIStreamFromTicketStream(CComPtr<IPrintReadStream>(reader)); }),
              E_OUTOFMEMORY);
}

TEST(CreateOpcPartUriFromPart, NamesThePart) {
    const MsSafeCoInit apartment;
    CComPtr<IOpcFactory> factory;
    ASSERT_EQ(factory.CoCreateInstance(__uuidof(OpcFactory)), S_OK);
    const auto part = MakeFake<FakeImagePart>(L"/Resources/1.png");
    const CComPtr<IOpcPartUri> uri = CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory);
    ASSERT_TRUE(uri);
    CComPtr<IOpcPartUri> same;
    ASSERT_EQ(factory->CreatePartUri(L"/resources/1.PNG", &same), S_OK);
    INT32 order = 1;
    EXPECT_EQ(uri->ComparePartUri(same, &order), S_OK);
    EXPECT_EQ(order, 0);

    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(nullptr, factory); }), E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), nullptr); }), E_INVALIDARG);
    part->uri = L"http://elsewhere/1.png";
    EXPECT_TRUE(FAILED(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory); })));
    part->uriResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory); }), E_PENDING);
}

} // namespace
