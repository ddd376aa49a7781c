#include "Support/MemoryStreams.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <XpsParts/CSaxHandler.h>
#include <XpsParts/CWideToUTF8.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class SomeHandler : public CSaxHandler {
public:
    using CSaxHandler::EscapeEntity;
    using CSaxHandler::WriteToPrintStream;
};

TEST(CSaxHandler, HandlesEveryEventAndKeepsItsSlots) {
    CComPtr<ISAXContentHandler> handler;
    handler.Attach(new SomeHandler);
    EXPECT_EQ(handler->startElement(L"", 0, L"a", 1, L"a", 1, nullptr), S_OK);
    EXPECT_EQ(handler->endDocument(), S_OK);
    EXPECT_EQ(SlotOf(&CSaxHandler::putDocumentLocator), 3u);
    EXPECT_EQ(SlotOf(&CSaxHandler::startElement), 8u);
    EXPECT_EQ(SlotOf(&CSaxHandler::skippedEntity), 13u);
}

TEST(CSaxHandler, EscapesReservedCharactersOnce) {
    SomeHandler handler;
    CComBSTR text(L"&amp;<\">'\xD83D\xDE00");
    EXPECT_EQ(handler.EscapeEntity(&text), S_OK);
    EXPECT_STREQ(text, L"&amp;amp;&lt;&quot;&gt;&apos;\xD83D\xDE00");
    CComBSTR none;
    EXPECT_EQ(handler.EscapeEntity(&none), S_OK);
    EXPECT_FALSE(none);
    EXPECT_EQ(handler.EscapeEntity(nullptr), E_POINTER);
}

TEST(CSaxHandler, WritesUtf8ToBothKindsOfStream) {
    SomeHandler handler;
    CXString text(L"\x00E9\xD83D\xDE00");
    const auto stream = MakeFake<MemoryWriteStream>();
    EXPECT_EQ(handler.WriteToPrintStream(&text, static_cast<IPrintWriteStream*>(stream)), S_OK);
    EXPECT_EQ(stream->bytes, "\xC3\xA9\xF0\x9F\x98\x80");

    CComPtr<IStream> memory;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &memory), S_OK);
    EXPECT_EQ(handler.WriteToPrintStream(&text, static_cast<ISequentialStream*>(memory)), S_OK);
    EXPECT_EQ(ReadAll(memory), stream->bytes);

    EXPECT_EQ(handler.WriteToPrintStream(nullptr, static_cast<IPrintWriteStream*>(stream)), E_POINTER);
    EXPECT_EQ(handler.WriteToPrintStream(&text, static_cast<ISequentialStream*>(nullptr)), E_POINTER);
}

TEST(CWideToUTF8, ConvertsAsOftenAsAsked) {
    const Rows<std::wstring, std::string> cases{
        {L"\xD834\xDD1E!", "\xF0\x9D\x84\x9E!"},
        {L"x\xD83Dy", "x\xEF\xBF\xBDy"}, // half a pair
        {std::wstring(70000, L'e'), std::string(70000, 'e')},
    };
    CXString text;
    CWideToUTF8 converter(&text);
    for (const auto& [givenText, wantedBytes] : cases) {
        text = givenText.c_str();
        void* bytes = nullptr;
        ULONG count = 0;
        ASSERT_EQ(converter.GetBuffer(&bytes, &count), S_OK);
        EXPECT_EQ(std::string(static_cast<const char*>(bytes), count), wantedBytes);
    }
}

TEST(CWideToUTF8, CannotWriteAnEmptyText) {
    CXString empty;
    CWideToUTF8 converter(&empty);
    void* bytes = nullptr;
    ULONG count = 0;
    EXPECT_EQ(converter.GetBuffer(&bytes, &count), E_FAIL);
    EXPECT_EQ(converter.GetBuffer(nullptr, &count), E_POINTER);
    EXPECT_EQ(converter.GetBuffer(&bytes, nullptr), E_POINTER);

    const auto stream = MakeFake<MemoryWriteStream>();
    EXPECT_EQ(converter.WriteToPrintStream(stream), E_FAIL);
    EXPECT_EQ(CWideToUTF8::WriteToPrintStream(nullptr, stream), E_POINTER);
    EXPECT_EQ(CWideToUTF8::WriteToPrintStream(&empty, nullptr), E_POINTER);
    EXPECT_THROW(CWideToUTF8(nullptr), CPComException);

    CXString text(L"x");
    stream->writeResult = E_PENDING;
    EXPECT_EQ(CWideToUTF8::WriteToPrintStream(&text, stream), E_PENDING);
}

} // namespace
