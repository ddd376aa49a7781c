#include "Support/PipelineJob.h"
#include "Support/Rows.h"

#include <Parts/FontPart.h>
#include <Parts/PartFactory.h>
#include <Source/PackageSource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xpsobjectmodel.h>

using namespace OvPipeline;

namespace {

class PartsTest : public testing::Test {
protected:
    void SetUp() override {
        SampleJob().Write(m_folder / "job.xps");
        m_context = OpenJobPackage(m_folder / "job.xps", std::make_shared<JobState>());
    }
    CComPtr<IFixedPage> FirstPage() {
        CComPtr<PackageSource> source;
        source.Attach(new PackageSource(m_context));
        return NextPage(*source);
    }
    template <class Interface>
    CComPtr<Interface> NewPart(const std::string& name, CComPtr<IPrintWriteStream>& stream) {
        CComPtr<Interface> part;
        EXPECT_EQ(S_OK, MakeNewPart(m_context, name, __uuidof(Interface), reinterpret_cast<void**>(&part),
                                    &stream));
        return part;
    }
    CComPtr<IPartFont2> Font() {
        CComPtr<IUnknown> part = MakeStoredPart(m_context, *m_context->package->Find(SampleJob::fontName));
        return CComQIPtr<IPartFont2>(part);
    }

    TemporaryFolder m_folder;
    SharedContext m_context;
};

std::string Packed(IPartFont* font, const std::string& name) {
    std::string bytes;
    const PackagedFont packed = PackFont(font, name);
    Drain(packed.bytes ? *packed.bytes : *CComQIPtr<IHostPart>(font)->Core().content->Open(),
          [&](const void* chunk, std::size_t size) { bytes.append(static_cast<const char*>(chunk), size); });
    return bytes;
}

TEST_F(PartsTest, FontsAreReadPlainAndPackedAsTheirOptionsSay) {
    const auto font = Font();
    EXPECT_EQ(SampleJob::FontBytes(), BytesOf(font));
    EXPECT_EQ(SampleJob::StoredFontBytes(), Packed(font, SampleJob::fontName));
    ASSERT_EQ(S_OK, font->SetFontOptions(Font_Normal));
    EXPECT_EQ(SampleJob::FontBytes(), Packed(font, SampleJob::fontName));

    CComPtr<IPrintWriteStream> stream;
    const auto made = NewPart<IPartFont>("/Fonts/00010203-0405-0607-0809-0a0b0c0d0e0f.odttf", stream);
    WriteAll(stream, SampleJob::FontBytes());
    EXPECT_EQ(SampleJob::StoredFontBytes(),
              Packed(made, "/Fonts/00010203-0405-0607-0809-0a0b0c0d0e0f.odttf"));
    EXPECT_EQ(SampleJob::FontBytes(), BytesOf(made));

    stream.Release();
    const auto nameless = NewPart<IPartFont>("/Fonts/plain.ttf", stream);
    WriteAll(stream, SampleJob::FontBytes());
    nameless->SetFontOptions(Font_Obfusticate);
    EXPECT_THROW(PackFont(nameless, "/Fonts/plain.ttf"), HostError) << "no key in the name";
}

TEST_F(PartsTest, AFontTellsItsEmbeddingRestriction) {
    const auto fontWith = [](const std::string& bits) {
        std::string font("\0\1\0\0\0\1\0\0\0\0\0\0", 12);
        return font + std::string("OS/2\0\0\0\0\0\0\0\x1c\0\0\0\x0a", 16) + std::string(8, '\0') + bits;
    };
    const Rows<std::string, EXpsFontRestriction> fonts{
        {fontWith({'\0', '\4'}), Xps_Restricted_Font_PreviewPrint},
        {fontWith({'\1', '\x8'}), Xps_Restricted_Font_Editable},
        {fontWith({'\0', '\2'}), Xps_Restricted_Font_NoEmbedding},
        {"no font at all", Xps_Restricted_Font_Installable}};
    for (const auto& [bytes, expected] : fonts) {
        CComPtr<IPrintWriteStream> stream;
        const auto font = NewPart<IPartFont2>("/Fonts/f.ttf", stream);
        WriteAll(stream, bytes);
        EXpsFontRestriction restriction{};
        EXPECT_EQ(S_OK, font->GetFontRestriction(&restriction));
        EXPECT_EQ(expected, restriction);
    }
}

TEST_F(PartsTest, StreamsSeekAndTellTheirEnd) {
    const auto font = Font();
    CComPtr<IPrintReadStream> stream;
    ASSERT_EQ(S_OK, font->GetStream(&stream));
    ULONGLONG position = 0;
    EXPECT_EQ(S_OK, stream->Seek(0, STREAM_SEEK_END, &position));
    EXPECT_EQ(SampleJob::FontBytes().size(), position);
    char bytes[16];
    ULONG read = 1;
    BOOL atEnd = FALSE;
    EXPECT_EQ(S_OK, stream->Seek(-5, STREAM_SEEK_CUR, nullptr));
    EXPECT_EQ(S_OK, stream->ReadBytes(bytes, 16, &read, &atEnd));
    EXPECT_EQ("plain", std::string(bytes, read));
    EXPECT_TRUE(atEnd);
    EXPECT_EQ(E_INVALIDARG, stream->Seek(-1, STREAM_SEEK_SET, nullptr));
    EXPECT_EQ(E_INVALIDARG, stream->Seek(0, 3, nullptr));
}

TEST_F(PartsTest, APagesMarkupIsTheOldOneUntilItsNewStreamIsClosed) {
    const auto page = FirstPage();
    const std::string before = BytesOf(page);
    CComPtr<IPrintWriteStream> stream;
    ASSERT_EQ(S_OK, page->GetWriteStream(&stream));
    ULONG written = 0;
    ASSERT_EQ(S_OK, stream->WriteBytes("<new/>", 6, &written));
    EXPECT_EQ(before, BytesOf(page));
    stream->Close();
    EXPECT_EQ("<new/>", BytesOf(page));
    EXPECT_EQ(E_UNEXPECTED, stream->WriteBytes("x", 1, &written)) << "a closed stream takes no more";
}

TEST_F(PartsTest, ANewPartIsReadOnlyWhenItIsWhole) {
    CComPtr<IPrintWriteStream> stream;
    const auto image = NewPart<IPartImage>("/Images/new.png", stream);
    ULONG written = 0;
    stream->WriteBytes("half", 4, &written);
    CComPtr<IPrintReadStream> reader;
    EXPECT_EQ(E_PENDING, image->GetStream(&reader)) << "its writer would wait for itself";
    stream.Release();
    EXPECT_EQ(XPS_E_MISSING_PART_STREAM, image->GetStream(&reader)) << "given up without Close";
}

TEST_F(PartsTest, AllPagePartsCanBeDeletedOnTheWayThroughThem) {
    const auto page = FirstPage();
    CComPtr<IXpsPartIterator> iterator;
    ASSERT_EQ(S_OK, page->GetXpsPartIterator(&iterator));
    for (; !iterator->IsDone(); iterator->Next()) {
        CComBSTR uri;
        ASSERT_EQ(S_OK, iterator->Current(&uri, nullptr));
        EXPECT_EQ(S_OK, page->DeleteResource(uri));
        EXPECT_EQ(E_ELEMENT_NOT_FOUND, page->DeleteResource(uri));
    }
    iterator->Reset();
    EXPECT_TRUE(iterator->IsDone()) << "one was left out";
}

TEST_F(PartsTest, PagePartsAreReplacedAddedAndDeleted) {
    const auto page = FirstPage();
    CComPtr<IPrintWriteStream> stream;
    const auto image = NewPart<IPartImage>("/Resources/Picture.png", stream);
    WriteAll(stream, "another picture");
    ASSERT_EQ(S_OK, page->SetPagePart(image));
    CComPtr<IUnknown> part;
    ASSERT_EQ(S_OK, page->GetPagePart(L"/Resources/Picture.png", &part));
    EXPECT_EQ("another picture", BytesOf(CComQIPtr<IPartBase>(part)));

    EXPECT_EQ(S_OK, page->DeleteResource(L"/Resources/Brushes.dict"));
    part.Release();
    ASSERT_EQ(S_OK, page->GetPagePart(L"/Resources/Picture.png", &part))
        << "others are found after a deletion";

    stream.Release();
    const auto ticket = NewPart<IPartPrintTicket>("/Metadata/new.xml", stream);
    WriteAll(stream, "<ticket/>");
    ASSERT_EQ(S_OK, page->SetPagePart(ticket)) << "a ticket becomes the page's ticket";
    CComPtr<IPartPrintTicket> got;
    ASSERT_EQ(S_OK, page->GetPrintTicket(&got));
    EXPECT_EQ("/Metadata/new.xml", UriOf(got.p));

    EXPECT_EQ(E_INVALIDARG, page->SetPagePart(page)) << "a page is no part of a page";
    EXPECT_EQ(E_POINTER, page->SetPagePart(nullptr));
}

TEST_F(PartsTest, OnlyPublishedKindsOfPartsWithPartNamesAreMade) {
    void* part = nullptr;
    IPrintWriteStream* stream = nullptr;
    EXPECT_EQ(E_NOINTERFACE,
              MakeNewPart(m_context, "/a.dict", __uuidof(IPartResourceDictionary), &part, &stream));
    for (const char* name : {"", "a.png", "/a//b.png", "/a\\b.png"})
        EXPECT_THROW(MakeNewPart(m_context, name, __uuidof(IPartImage), &part, &stream), HostError) << name;
}

TEST_F(PartsTest, ManyBytesOfANewPartComeBackFromTheDisk) {
    CComPtr<IPrintWriteStream> stream;
    const auto image = NewPart<IPartImage>("/Images/large.tif", stream);
    std::string expected;
    for (int i = 0; expected.size() <= 2 * SpooledBytes::memoryBound; ++i) {
        const std::string line = "line " + std::to_string(i) + std::string(1000, '.');
        expected += line;
        ULONG written = 0;
        ASSERT_EQ(S_OK, stream->WriteBytes(line.data(), static_cast<ULONG>(line.size()), &written));
    }
    stream->Close();
    EXPECT_TRUE(expected == BytesOf(image));
}

} // namespace
