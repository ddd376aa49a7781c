#include "Platform/Dom/DomTestSupport.h"
#include "Support/FakePrinterPropertyBag.h"
#include "Support/Growth.h"
#include "Support/Rows.h"

#include <Xml/AttributeBound.h>
#include <Xml/DocumentBound.h>

namespace {

TEST(DomLoad, ReadsWhatIsWellFormed) {
    using namespace std::string_literals;
    const Rows<const char*, std::string, const char*> cases{
        {"declared UTF-8", "<?xml version='1.0' encoding='utf-8'?><a>\xC3\xBC</a>", "<a>\xC3\xBC</a>"},
        {"UTF-8 mark and declaration", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>", "<a/>"},
        {"UTF-16, big-endian, surrogates", "\xFE\xFF\0<\0a\0>\xD8\x3D\xDE\x00\0<\0/\0a\0>"s,
         "<a>\xF0\x9F\x98\x80</a>"},
        {"Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xFC</a>", "<a>\xC3\xBC</a>"},
        {"characters by number", "<a>&#x1F600;&#65;&amp;</a>",
         "<a>\xF0\x9F\x98\x80"
         "A&amp;</a>"},
        {"an xml:id like other attributes", "<a xml:id='1 2'><b xml:id='x'/><b xml:id='x'/></a>",
         "<a xml:id=\"1 2\"><b xml:id=\"x\"/><b xml:id=\"x\"/></a>"},
        {"names that are no URIs", "<p:a xmlns:p='not a uri'/>", "<p:a xmlns:p=\"not a uri\"/>"},
    };
    for (const auto& [name, bytes, root] : cases) {
        for (const CComVariant& source : {Bytes(bytes), CComVariant(StreamOf(bytes).p)}) {
            auto document = NewDocument();
            EXPECT_EQ(S_OK, Load(document, source)) << name << FailureOf(document).reason;
            EXPECT_EQ(root, XmlOf(RootOf(document))) << name;
        }
    }
}

TEST(DomLoad, RefusesWithCodeAndPlace) {
    const Rows<const char*, std::uint32_t, LONG, LONG, const char*> cases{
        {"<a>\n  <b></c>\n</a>", 0xC00CE56D, 2, 10, "mismatch"},
        {"<a>", 0xC00CE553, 1, 4, ""},
        {"<a/><b/>", 0xC00CE555, 1, 5, ""},
        {"<a x='1' x='2'/>", 0xC00CE554, 1, 15, "x"},
        {"<a x=1/>", 0xC00CE502, 1, 6, ""},
        {"<a>&nbsp;</a>", 0xC00CE002, 1, 10, "nbsp"},
        {"<p:a/>", 0xC00CE01D, 1, 5, "p"},
        {"<a>\x01</a>", 0xC00CE508, 1, 4, ""},
        {"<a>\xFC</a>", 0xC00CE508, 1, 4, "UTF-8"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>&e;</a>", 0xC00CE584, 1, 0, "DTD"},
        {"<?xml version='1.0' encoding='UTF-16'?><a/>", 0xC00CE56F, 0, 0, "UTF-16"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>", 0xC00CE56F, 0, 0, "ISO-8859-1"},
        {"<?xml version='1.0' encoding='nonesuch'?><a/>", 0xC00CE56E, 1, 0, "nonesuch"},
        {"", 0xC00CE558, 0, 0, "empty"},
        {"no markup", 0xC00CE558, 1, 1, ""},
    };
    for (const auto& [bytes, code, line, column, inReason] : cases) {
        auto document = Parsed("<before/>");
        EXPECT_EQ(S_FALSE, Load(document, Bytes(bytes))) << bytes;
        const ParseFailure failure = FailureOf(document);
        EXPECT_EQ(static_cast<HRESULT>(code), failure.code) << bytes << ": " << failure.reason;
        EXPECT_EQ(line, failure.line) << bytes;
        if (column != 0) {
            EXPECT_EQ(column, failure.column) << bytes;
        }
        EXPECT_NE(std::string::npos, failure.reason.find(inReason)) << failure.reason;
        EXPECT_EQ("", XmlOf(document)) << "a failed load leaves nothing of what was there";
    }
}

TEST(DomLoad, PointsAtTheLineOfTheError) {
    auto document = NewDocument();
    EXPECT_EQ(S_FALSE, Load(document, Bytes("<a>\r\n <b>\xC3\xBC</c>\r\n</a>")));
    EXPECT_EQ(" <b>\xC3\xBC</c>", FailureOf(document).source);

    // Of a text in one long line only the surroundings are given.
    EXPECT_EQ(S_FALSE, Load(document, Bytes("<a>" + std::string(100000, 'x') + "</b>")));
    EXPECT_LE(FailureOf(document).source.size(), 1024U);
    EXPECT_NE(std::string::npos, FailureOf(document).source.find("</b>"));
    EXPECT_EQ(VARIANT_TRUE, Got(document, &IXMLDOMDocument::loadXML, Wide("<a/>")));
    EXPECT_EQ(S_OK, FailureOf(document).code);
}

TEST(DomLoad, WideTextNeedsItsMarkAndAgreesWithItsDeclaration) {
    using namespace std::string_literals;
    auto document = NewDocument();
    EXPECT_EQ(S_FALSE, Load(document, Bytes("<\0a\0/\0>\0"s)));
    EXPECT_EQ(S_FALSE, Load(document, Bytes("\xFF\xFE<\0a\0/\0"s)));
    EXPECT_EQ(S_FALSE, Load(document, Bytes("\xFF\xFE<\0a\0>\0\x00\xD8<\0/\0a\0>\0"s)));
    std::string wide = "\xFF\xFE";
    for (char c : "<?xml version='1.0' encoding='UTF-8'?><a/>"s)
        wide += {c, '\0'};
    EXPECT_EQ(S_FALSE, Load(document, Bytes(wide)));
    EXPECT_EQ(static_cast<HRESULT>(0xC00CE56F), FailureOf(document).code);

    // Text that already is text has no bytes for its declaration to speak of.
    EXPECT_EQ("<a/>", XmlOf(RootOf(Parsed("<?xml version='1.0' encoding='nonesuch'?><a/>"))));
}

TEST(DomLoad, BoundsDepthAndSize) {
    const auto nested = [](std::size_t depth) {
        return Times(depth, [](std::size_t) { return "<a>"; }) +
               Times(depth, [](std::size_t) { return "</a>"; });
    };
    auto document = NewDocument();
    EXPECT_EQ(S_OK, Load(document, Bytes(nested(256))));
    EXPECT_EQ(S_FALSE, Load(document, Bytes(nested(257))));
    EXPECT_NE(std::string::npos, FailureOf(document).reason.find("deep"));
    EXPECT_EQ(S_OK, document->setProperty(CComBSTR(L"MaxElementDepth"), CComVariant(3000)));
    EXPECT_EQ(S_OK, Load(document, Bytes(nested(3000))));
    EXPECT_EQ(S_FALSE, Load(document, Bytes(nested(100000))));

    const std::string large = "<a>" + std::string(12 << 20, 'x') + "</a>";
    EXPECT_EQ(S_OK, Load(document, Bytes(large)));
    EXPECT_EQ(12U << 20, TextOf(document).size());
    EXPECT_EQ(S_OK, document->setProperty(CComBSTR(L"MaxXMLSize"), CComVariant(1024)));
    EXPECT_EQ(S_FALSE, Load(document, Bytes(large)));
}

TEST(DomLoad, TakesPathsStreamsAndDocumentsAndNothingElse) {
    const std::string path = ::testing::TempDir() + "dom-load-\xC3\xBC.xml";
    auto source = Parsed("<a><b/></a>");
    EXPECT_EQ(S_OK, source->save(Value(path)));

    auto document = NewDocument();
    EXPECT_EQ(S_OK, Load(document, Value(path)));
    EXPECT_EQ("<a><b/></a>", XmlOf(RootOf(document)));
    EXPECT_EQ(path, Narrow(Got(document, &IXMLDOMDocument::get_url)));

    EXPECT_EQ(S_FALSE, Load(document, Value(path + ".none")));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), FailureOf(document).code);
    EXPECT_EQ(S_FALSE, Load(document, Value(::testing::TempDir())));
    EXPECT_EQ(S_FALSE, Load(document, Value("http://localhost/a.xml")));
    EXPECT_EQ(E_ACCESSDENIED, FailureOf(document).code);

    CComVariant byReference;
    CComVariant inner(static_cast<IUnknown*>(source.p));
    byReference.vt = VT_VARIANT | VT_BYREF;
    byReference.pvarVal = &inner;
    EXPECT_EQ(S_OK, Load(document, byReference));

    // A stream is read from where it stands.
    auto stream = StreamOf("junk<a/>");
    char junk[4];
    EXPECT_EQ(S_OK, stream->Read(junk, sizeof junk, nullptr));
    EXPECT_EQ(S_OK, Load(document, CComVariant(stream.p)));

    CComVariant words;
    words.vt = VT_ARRAY | VT_UI2;
    words.parray = ::SafeArrayCreateVector(VT_UI2, 0, 4);
    EXPECT_EQ(E_INVALIDARG, Load(document, words));
    EXPECT_EQ(E_INVALIDARG, Load(document, CComVariant(static_cast<IUnknown*>(nullptr))));
    EXPECT_EQ(E_INVALIDARG, Load(document, CComVariant(3)));
}

// A stream that never ends, and says what size it likes.
class EndlessStream : public FakePropertyStream {
public:
    EndlessStream() : FakePropertyStream(std::make_shared<std::string>(), Trouble::None) {}

    ULONGLONG claimedSize = 0;
    ULONGLONG given = 0;

    HRESULT STDMETHODCALLTYPE Read(void* to, ULONG wanted, ULONG* read) override {
        std::memset(to, ' ', wanted);
        given += wanted;
        *read = wanted;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD) override {
        *status = {};
        status->cbSize.QuadPart = claimedSize;
        return S_OK;
    }
};

TEST(DomLoad, IsBoundWhoeverHandsTheBytesOver) {
    const auto document = NewDocument();
    constexpr ULONGLONG claims[] = {0, OvPlatform::mostDocumentBytes, ULONGLONG{1} << 40};
    for (const ULONGLONG claimed : claims) {
        const auto endless = MakeFake<EndlessStream>();
        endless->claimedSize = claimed;
        EXPECT_EQ(S_FALSE, Load(document, CComVariant(static_cast<IUnknown*>(endless.p))));
        EXPECT_EQ("The text is longer than the document allows", FailureOf(document).reason) << claimed;
        EXPECT_EQ(OvPlatform::mostDocumentBytes + 1, endless->given) << "no more than shows it";
    }
    std::string longest = "<a>" + std::string(OvPlatform::mostDocumentBytes - 7, 'x') + "</a>";
    EXPECT_EQ(S_OK, Load(document, Bytes(longest)));
    longest += ' ';
    EXPECT_EQ(S_FALSE, Load(document, Bytes(longest)));
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(S_FALSE, document->loadXML(Wide(longest), &loaded));
    // The writer of a document is told where it is full, and the document is what it was.
    EXPECT_EQ(S_OK, Load(document, Bytes("<a/>")));
    CComPtr<IStream> writer;
    ASSERT_EQ(S_OK, document->QueryInterface(&writer));
    const auto whole = static_cast<ULONG>(longest.size());
    EXPECT_EQ(STG_E_MEDIUMFULL, writer->Write(longest.data(), whole, nullptr));
    EXPECT_EQ("<a/>", XmlOf(RootOf(document)));
    EXPECT_EQ(S_OK, writer->Write(longest.data(), whole - 1, nullptr));
    EXPECT_EQ(STG_E_MEDIUMFULL, writer->Write("x", 1, nullptr));
}

TEST(DomLoad, HasABoundOnAttributes) {
    using OvPlatform::AttributeBound;
    const auto element = [](std::size_t attributes, const char* rest) {
        return "<a" + Times(attributes, [](std::size_t i) { return " a" + std::to_string(i) + "='>/>'"; }) +
               rest;
    };
    const std::string full = element(AttributeBound::mostOfOneElement, ">");
    const std::string beside = element(AttributeBound::mostOfOneElement, "/>");
    const std::string close = "</a>", four = full + full + full + full,
                      closed = close + close + close + close;
    const Rows<const char*, std::string, bool> cases = {
        {"one element", element(AttributeBound::mostOfOneElement, "/>"), true},
        {"one more", element(AttributeBound::mostOfOneElement + 1, "/>"), false},
        {"side by side", full + beside + beside + full + close + beside + beside + close, true},
        {"in one another", four + closed, true},
        {"one more in force", four + "<b c=''/>" + closed, false},
        {"quotes elsewhere", "<?p ' ?><a><!-- > ' --><![CDATA[<b ' > ]] ]]>'\"'" + full + close + "</a>",
         true},
    };
    for (const auto& [name, text, passes] : cases) {
        const auto document = NewDocument();
        EXPECT_EQ(passes ? S_OK : S_FALSE, Load(document, Bytes(text))) << name;
        EXPECT_EQ(passes, AttributeBound::PassesWhole(text)) << name;
        for (const std::size_t piece : {1, 3, 1000}) {
            AttributeBound bound;
            bool hasPassed = true;
            for (std::size_t at = 0; at < text.size(); at += piece)
                hasPassed = bound.Passes(std::string_view(text).substr(at, piece));
            EXPECT_EQ(passes, hasPassed) << name << " by " << piece;
        }
    }
}

TEST(DomLoad, KeepsSettingsAcrossLoads) {
    auto document = NewDocument();
    SelectWith(document, "xmlns:p='urn:x'");
    EXPECT_EQ(S_OK, document->put_preserveWhiteSpace(VARIANT_TRUE));
    EXPECT_EQ(S_OK, Load(document, Bytes("<q:a xmlns:q='urn:x'> </q:a>")));
    EXPECT_TRUE(First(document, "/p:a"));
    EXPECT_EQ("<q:a xmlns:q=\"urn:x\"> </q:a>", XmlOf(document));
    const Rows<const wchar_t*, CComVariant, HRESULT> cases{
        {L"SelectionLanguage", L"XSLPattern", E_FAIL}, {L"SelectionNamespaces", L"xmlns:p=", E_FAIL},
        {L"SelectionNamespaces", L"/><x", E_FAIL},     {L"ProhibitDTD", false, E_NOTIMPL},
        {L"MaxElementDepth", -1, E_INVALIDARG},        {L"NewParser", false, S_OK},
    };
    for (const auto& [name, value, result] : cases)
        EXPECT_EQ(result, document->setProperty(CComBSTR(name), value)) << Narrow(CComBSTR(name));
    const auto namespaces = Got(document, &IXMLDOMDocument2::getProperty, CComBSTR(L"SelectionNamespaces"));
    EXPECT_EQ("xmlns:p='urn:x'", Narrow(namespaces.bstrVal)) << "what was refused changed nothing";
}

} // namespace
