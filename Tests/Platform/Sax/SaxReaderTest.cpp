#include "Platform/Dom/DomTestSupport.h"
#include "Support/ComFake.h"
#include "Support/Growth.h"
#include "Support/Rows.h"

#include <utility>

namespace {

std::string Of(const wchar_t* text, int length) {
    CComBSTR copy(length, text);
    return Narrow(copy);
}

/// Writes down what it is told.
class Recorder final : public ISAXContentHandler, public ISAXErrorHandler, public ISAXLexicalHandler {
public:
    std::string told;
    CComPtr<ISAXLocator> locator;
    std::string failAt;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (riid == __uuidof(ISAXLexicalHandler))
            *object = static_cast<ISAXLexicalHandler*>(this);
        else if (riid == __uuidof(ISAXErrorHandler))
            *object = static_cast<ISAXErrorHandler*>(this);
        else if (riid == __uuidof(ISAXContentHandler) || riid == __uuidof(IUnknown))
            *object = static_cast<ISAXContentHandler*>(this);
        else
            return E_NOINTERFACE;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT Tell(const std::string& what) {
        told += what;
        return !failAt.empty() && what.starts_with(failAt) ? E_ABORT : S_OK;
    }

    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator* where) override {
        locator = where;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE startDocument() override { return Tell("["); }
    HRESULT STDMETHODCALLTYPE endDocument() override { return Tell("]"); }
    HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t* prefix, int prefixLength, const wchar_t* uri,
                                                 int uriLength) override {
        return Tell("+" + Of(prefix, prefixLength) + "=" + Of(uri, uriLength) + " ");
    }
    HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t* prefix, int prefixLength) override {
        return Tell("-" + Of(prefix, prefixLength) + " ");
    }
    HRESULT STDMETHODCALLTYPE startElement(const wchar_t* uri, int uriLength, const wchar_t* local,
                                           int localLength, const wchar_t* qName, int qNameLength,
                                           ISAXAttributes* attributes) override {
        std::string tag =
            "<{" + Of(uri, uriLength) + "}" + Of(local, localLength) + "|" + Of(qName, qNameLength);
        int count = 0;
        EXPECT_EQ(S_OK, attributes->getLength(&count));
        for (int index = 0; index < count; ++index) {
            const wchar_t *value = nullptr, *name = nullptr, *base = nullptr, *space = nullptr;
            int valueLength = 0, nameLength = 0, baseLength = 0, spaceLength = 0;
            EXPECT_EQ(S_OK, attributes->getName(index, &space, &spaceLength, &base, &baseLength, &name,
                                                &nameLength));
            EXPECT_EQ(S_OK, attributes->getValue(index, &value, &valueLength));
            tag += " {" + Of(space, spaceLength) + "}" + Of(base, baseLength) + "|" + Of(name, nameLength) +
                   "=" + Of(value, valueLength);
            const wchar_t* again = nullptr;
            int againLength = 0;
            EXPECT_EQ(S_OK, attributes->getValueFromQName(name, nameLength, &again, &againLength));
            EXPECT_EQ(value, again);
        }
        const wchar_t* none = nullptr;
        int noneLength = 0;
        EXPECT_EQ(E_INVALIDARG, attributes->getValue(count, &none, &noneLength));
        EXPECT_EQ(E_INVALIDARG, attributes->getValueFromName(L"", 0, L"nonesuch", 8, &none, &noneLength));
        return Tell(tag + ">");
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* qName,
                                         int qNameLength) override {
        return Tell("</" + Of(qName, qNameLength) + ">");
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override {
        return Tell(Of(text, length));
    }
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t*, int) override { return Tell("_"); }
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t* target, int targetLength,
                                                    const wchar_t* data, int dataLength) override {
        return Tell("<?" + Of(target, targetLength) + " " + Of(data, dataLength) + "?>");
    }
    HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t*, int) override { return Tell("skipped"); }

    HRESULT STDMETHODCALLTYPE error(ISAXLocator*, const wchar_t*, HRESULT) override { return Tell("error"); }
    HRESULT STDMETHODCALLTYPE fatalError(ISAXLocator* where, const wchar_t* message, HRESULT code) override {
        int line = 0;
        EXPECT_EQ(S_OK, where->getLineNumber(&line));
        EXPECT_NE(L'\0', message[0]);
        EXPECT_TRUE(FAILED(code));
        return Tell("!" + std::to_string(line));
    }
    HRESULT STDMETHODCALLTYPE ignorableWarning(ISAXLocator*, const wchar_t*, HRESULT) override {
        return Tell("warning");
    }

    HRESULT STDMETHODCALLTYPE startDTD(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                                       int) override {
        return Tell("dtd");
    }
    HRESULT STDMETHODCALLTYPE endDTD() override { return Tell("dtd"); }
    HRESULT STDMETHODCALLTYPE startEntity(const wchar_t*, int) override { return Tell("entity"); }
    HRESULT STDMETHODCALLTYPE endEntity(const wchar_t*, int) override { return Tell("entity"); }
    HRESULT STDMETHODCALLTYPE startCDATA() override { return Tell("<!["); }
    HRESULT STDMETHODCALLTYPE endCDATA() override { return Tell("]]>"); }
    HRESULT STDMETHODCALLTYPE comment(const wchar_t* text, int length) override {
        return Tell("<!--" + Of(text, length) + "-->");
    }
};

constexpr const wchar_t* prefixes = L"http://xml.org/sax/features/namespace-prefixes";

class SaxReader : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, reader.CoCreateInstance(__uuidof(SAXXMLReader60)));
        ASSERT_EQ(S_OK, reader->putContentHandler(&recorder));
        ASSERT_EQ(S_OK, reader->putErrorHandler(&recorder));
    }

    Recorder recorder;
    CComPtr<ISAXXMLReader> reader;
};

TEST_F(SaxReader, TellsEverythingInSourceOrder) {
    const CComVariant lexical(static_cast<IUnknown*>(static_cast<ISAXLexicalHandler*>(&recorder)));
    ASSERT_EQ(S_OK, reader->putProperty(L"http://xml.org/sax/properties/lexical-handler", lexical));
    EXPECT_EQ(S_OK, reader->parse(
                        Value("<?xml version='1.0'?><?p d?>\n<a x='&lt;&amp;&#10;' xmlns:p='urn:p' p:y=\"2\" "
                              "xmlns='urn:d'>t&amp;\xF0\x9F\x98\x80<p:b/><!--c--><![CDATA[<]]></a>")));
    EXPECT_EQ(
        "[<?p d?>+p=urn:p +=urn:d <{urn:d}a|a {}x|x=<&\n {}|xmlns:p=urn:p {urn:p}y|p:y=2 {}|xmlns=urn:d>"
        "t&\xF0\x9F\x98\x80<{urn:p}b|p:b></p:b><!--c--><![<]]></a>- -p ]",
        recorder.told);
}

TEST_F(SaxReader, LeavesDeclarationsOutIfToldSo) {
    EXPECT_EQ(VARIANT_TRUE, Got(reader, &ISAXXMLReader::getFeature, prefixes));
    EXPECT_EQ(S_OK, reader->putFeature(prefixes, VARIANT_FALSE));
    EXPECT_EQ(S_OK, reader->parse(Value("<a xmlns='urn:d' x='1'/>")));
    EXPECT_EQ("[+=urn:d <{urn:d}a|a {}x|x=1></a>- ]", recorder.told);
    EXPECT_EQ(E_INVALIDARG, reader->putFeature(L"nonesuch", VARIANT_TRUE));
    EXPECT_EQ(E_NOTIMPL, reader->putFeature(L"prohibit-dtd", VARIANT_FALSE));
}

TEST_F(SaxReader, TakesTextBytesStreamsAndDocuments) {
    using namespace std::string_literals;
    const CComVariant inputs[] = {
        Value("<?xml version='1.0' encoding='UTF-16'?><a>\xC3\xBC</a>"),
        Bytes("\xEF\xBB\xBF<a>\xC3\xBC</a>"),
        Bytes("\xFF\xFE<\0a\0>\0\xFC\0<\0/\0a\0>\0"s),
        CComVariant(StreamOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xFC</a>").p),
        CComVariant(static_cast<IUnknown*>(Parsed("<a>\xC3\xBC</a>").p)),
    };
    for (const CComVariant& input : inputs) {
        recorder.told.clear();
        EXPECT_EQ(S_OK, reader->parse(input));
        EXPECT_EQ("[<{}a|a>\xC3\xBC</a>]", recorder.told);
    }
    EXPECT_EQ(E_INVALIDARG, reader->parse(CComVariant(1)));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), reader->parseURL(Wide("nonesuch.xml")));
}

/// `text` with a mark, as big-endian or little-endian UTF-16.
std::string Utf16(std::string_view utf8, bool bigEndian) {
    const CComBSTR text = Wide(utf8);
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (UINT at = 0; at < text.Length(); ++at) {
        const char high = static_cast<char>(text[at] >> 8), low = static_cast<char>(text[at]);
        bytes += {bigEndian ? high : low, bigEndian ? low : high};
    }
    return bytes;
}

TEST_F(SaxReader, TellsOfAStreamWhatItTellsOfTheSameBytes) {
    // Longer than what is read at once, with characters of every length across the seams, and with a tag and
    // a text that are longer themselves.
    const std::string content = Times(1000, [](std::size_t n) {
        return "<a p:y='\xC3\xBC' xmlns:p='u" + std::to_string(n) + "' z=\"&#10;\">x\xE2\x82\xAC" +
               std::string(n % 7, '.') + "\xF0\x9F\x98\x80</a>";
    });
    const std::string xml = "<r big='" + Times(20'000, [](std::size_t) { return "\xF0\x9F\x98\x80"; }) +
                            "'>" + content + "<![CDATA[" + std::string(20'000, '<') + "]]></r>";
    for (const std::string& bytes : {xml, "\xEF\xBB\xBF" + xml, Utf16(xml, false), Utf16(xml, true),
                                     Utf16("<?xml version='1.0' encoding='UTF-16'?>" + xml, true)}) {
        recorder.told.clear();
        ASSERT_EQ(S_OK, reader->parse(Bytes(bytes)));
        const std::string wanted = std::exchange(recorder.told, {});
        ASSERT_EQ(S_OK, reader->parse(CComVariant(StreamOf(bytes).p)));
        EXPECT_TRUE(wanted == recorder.told) << bytes.size() << " bytes differ";
    }
    const std::string attributes =
        Times(1100, [](std::size_t n) { return " x" + std::to_string(n) + "=''"; });
    const std::string declared = "<?xml version='1.0' encoding='UTF-16'?><a/>";
    for (const std::string& bytes : {std::string(), std::string("<a"), Utf16("<a/>", false) + " ", declared,
                                     Utf16("<a>", false) + std::string("\x00\xD8", 2),
                                     std::string("<\0a\0/\0>\0", 8), "<a" + attributes + "/>"}) {
        const HRESULT wanted = reader->parse(Bytes(bytes));
        EXPECT_TRUE(FAILED(wanted));
        EXPECT_EQ(wanted, reader->parse(CComVariant(StreamOf(bytes).p))) << bytes.substr(0, 50);
    }
}

/// Gives a long document, as it is asked for.
class LongDocument final : public ComFake<ISequentialStream> {
public:
    std::size_t given = 0;
    HRESULT failure = S_OK; // behind the first bytes

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
        if (given != 0 && FAILED(failure)) return failure;
        constexpr std::string_view start = "<a><b/>";
        *read = std::min<ULONG>(count, 5000);
        for (ULONG at = 0; at < *read; ++at, ++given)
            static_cast<char*>(buffer)[at] = given < start.size() ? start[given]
                                             : given % 64 == 0    ? '\n'
                                                                  : '.';
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
};

TEST_F(SaxReader, ReadsAStreamOnlyAsFarAsItIsAsked) {
    const auto document = MakeFake<LongDocument>();
    recorder.failAt = "</b>";
    EXPECT_EQ(E_ABORT, reader->parse(CComVariant(static_cast<IUnknown*>(document.p))));
    EXPECT_LT(document->given, std::size_t{64} * 1024);

    recorder.failAt.clear();
    recorder.told.clear();
    const auto failing = MakeFake<LongDocument>();
    failing->failure = STG_E_REVERTED;
    EXPECT_EQ(STG_E_REVERTED, reader->parse(CComVariant(static_cast<IUnknown*>(failing.p))));
    EXPECT_EQ(recorder.told.find(']'), std::string::npos);

    const auto endless = MakeFake<LongDocument>();
    ASSERT_EQ(S_OK, reader->putContentHandler(nullptr));
    EXPECT_EQ(static_cast<HRESULT>(0xC00CE587),
              reader->parse(CComVariant(static_cast<IUnknown*>(endless.p))));
}

TEST_F(SaxReader, AHandlersFailureEndsTheParse) {
    for (const char* at : {"[", "+p", "<{}a", "t", "</p:b", "-p", "]"}) {
        recorder.told.clear();
        recorder.failAt = at;
        EXPECT_EQ(E_ABORT, reader->parse(Value("<a>t<p:b xmlns:p='u'/></a>"))) << at;
        EXPECT_TRUE(recorder.told.find(at) != std::string::npos) << recorder.told;
        EXPECT_EQ(std::string::npos, recorder.told.find('!')) << "it is no error of the text";
        EXPECT_EQ(at == std::string("]"), recorder.told.ends_with("]"));
    }
}

TEST_F(SaxReader, ReportsErrorsWithTheirLine) {
    const Rows<const char*, std::uint32_t, const char*> cases{
        {"<a>\n<b></a>", 0xC00CE56D, "[<{}a|a>\n<{}b|b>!2"},
        {"<!DOCTYPE a><a/>", 0xC00CE584, "[!1"},
        {"<a>&nbsp;</a>", 0xC00CE002, "!1"},
        {"", 0xC00CE558, "!0"},
    };
    for (const auto& [xml, code, told] : cases) {
        recorder.told.clear();
        EXPECT_EQ(static_cast<HRESULT>(code), reader->parse(Value(xml))) << xml;
        EXPECT_TRUE(recorder.told.ends_with(told)) << recorder.told;
    }
    const std::string deep = Times(300, [](std::size_t) { return "<a>"; });
    EXPECT_EQ(static_cast<HRESULT>(0xC00CE586), reader->parse(Value(deep)));
    int line = 9;
    EXPECT_EQ(S_OK, recorder.locator->getLineNumber(&line)) << "a locator outlives the parse";
    EXPECT_EQ(0, line);
}

} // namespace
