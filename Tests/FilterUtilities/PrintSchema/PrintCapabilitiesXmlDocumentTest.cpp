#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/FilterJob.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

std::string Shape(const CComPtr<IXMLDOMNode>& node) {
    CComBSTR xml;
    EXPECT_EQ(node->get_xml(&xml), S_OK);
    return Narrow(xml.m_str);
}

std::string Property(const std::string& name, const std::string& type, const std::string& value) {
    return "<psf:Property name=\"" + name + "\"><psf:Value xsi:type=\"xsd:" + type + "\">" + value +
           "</psf:Value></psf:Property>";
}

TEST(PrintCapabilitiesXmlDocument, WritesTheStandardShapes) {
    PrintCapabilitiesXmlDocument document = Capabilities("");
    using Create = std::function<void(IXMLDOMElement**)>;
    const Rows<Create, std::string, std::string> cases{
        {[&](auto out) { document.CreateFeature(L"psk:", L"PageA", L"A", out); },
         "psf:Feature name=\"psk:PageA\"", Property("psk:DisplayName", "string", "A")},
        {[&](auto out) { document.CreatePickOneFeature(L"ok:", L"PageA", L"A & B", out); },
         "psf:Feature name=\"ok:PageA\"",
         Property("psk:DisplayName", "string", "A &amp; B") +
             Property("psf:SelectionType", "QName", "psk:PickOne")},
        {[&](auto out) { document.CreateOption(L"psk:", L"On", L"An", out); }, "psf:Option name=\"psk:On\"",
         Property("psk:DisplayName", "string", "An")},
        {[&](auto out) {
             document.CreateIntegerParameterDef(L"psk:", L"P", L"Conditional", L"D", 5, -1, 9, 2, L"microns",
                                                out);
         },
         "psf:ParameterDef name=\"psk:P\"",
         Property("psf:DataType", "QName", "xsd:integer") + Property("psf:DefaultValue", "integer", "5") +
             Property("psf:MaxValue", "integer", "9") + Property("psf:MinValue", "integer", "-1") +
             Property("psf:Mandatory", "QName", "psk:Conditional") +
             Property("psf:UnitType", "string", "microns") + Property("psf:Multiple", "integer", "2") +
             Property("psk:DisplayName", "string", "D")},
        {[&](auto out) {
             document.CreateRealParameterDef(L"psk:", L"P", L"Optional", L"D", 0.5F, -1, 9.126F, 0, L"u",
                                             out);
         },
         "psf:ParameterDef name=\"psk:P\"",
         Property("psf:DataType", "QName", "xsd:decimal") + Property("psf:DefaultValue", "decimal", "0.50") +
             Property("psf:MaxValue", "decimal", "9.13") + Property("psf:MinValue", "decimal", "-1.00") +
             Property("psf:Mandatory", "QName", "psk:Optional") + Property("psf:UnitType", "string", "u") +
             Property("psk:DisplayName", "string", "D")},
        {[&](auto out) {
             document.CreateStringParameterDef(L"ok:", L"P", L"Unconditional", L"D", L"text", 1, 80,
                                               L"characters", out);
         },
         "psf:ParameterDef name=\"ok:P\"",
         Property("psf:DataType", "QName", "xsd:string") + Property("psf:MaxLength", "integer", "80") +
             Property("psf:MinLength", "integer", "1") +
             Property("psf:Mandatory", "QName", "psk:Unconditional") +
             Property("psf:UnitType", "string", "characters") + Property("psk:DisplayName", "string", "D") +
             Property("psf:DefaultValue", "string", "text")},
    };
    for (const auto& [create, start, content] : cases) {
        CComPtr<IXMLDOMElement> created;
        create(&created);
        EXPECT_EQ(OutsideView(document, "count(/*/*)"), "0") << "the caller attaches it";
        document.AppendChildToRootNode(created);
        std::string shape = Shape(NodeOf(document, L"/psf:PrintCapabilities/*"));
        for (const std::string& declaration :
             {Declare("psf", frameworkUri), Declare("xsi", "http://www.w3.org/2001/XMLSchema-instance")}) {
            std::string quoted = declaration;
            std::replace(quoted.begin(), quoted.end(), '\'', '"');
            for (std::size_t at; (at = shape.find(quoted)) != std::string::npos;)
                shape.erase(at, quoted.size());
        }
        EXPECT_EQ(shape, "<" + start + ">" + content + "</" + start.substr(0, start.find(' ')) + ">");
        document.DeleteNode(NodeOf(document, L"/psf:PrintCapabilities/*"));
    }

    CComPtr<IXMLDOMElement> out;
    EXPECT_EQ(ResultOf([&] { return document.CreateFeature(L"psk:", L"A", L"", &out); }), E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] {
                  return document.CreateStringParameterDef(L"psk:", L"A", L"Optional", L"D", nullptr, 0, 9,
                                                           L"u", &out);
              }),
              E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] { return document.CreateOption(L"psk:", L"A", L"B", nullptr); }), E_POINTER);
    EXPECT_EQ(ResultOf([&] { return document.CreateAndAppendOption(L"psk:", L"A", L"B", nullptr); }),
              E_INVALIDARG);
    EXPECT_EQ(out, nullptr);
}

// The type that a parameter definition names in its text must have a declared prefix too.
TEST(PrintCapabilitiesXmlDocument, DeclaresTheTypesWhereTheDocumentDoesNot) {
    PrintCapabilitiesXmlDocument document(CXString(
        ("<psf:PrintCapabilities" + Declare("psf", frameworkUri) + Declare("psk", keywordsUri) + "/>")
            .c_str()));
    CComPtr<IXMLDOMElement> parameter;
    document.CreateIntegerParameterDef(L"psk:", L"P", L"Optional", L"D", 1, 1, 1, 1, L"u", &parameter);
    document.AppendChildToRootNode(parameter);
    const std::string dataType = "//psf:Property[@name='psf:DataType']/psf:Value";
    EXPECT_EQ(OutsideView(document, dataType), "xsd:integer");
    EXPECT_EQ(OutsideView(document, dataType + "/namespace::xsd"), "http://www.w3.org/2001/XMLSchema");
    EXPECT_EQ(OutsideView(document, dataType + "/@xsi:type"), "xsd:QName");
}

const std::string twoFeatures =
    "<psf:Feature name='psk:First'><psf:Option name='psk:On'>" + DisplayName("first on") +
    ScoredProperty("psk:Weight", Value("80")) + "</psf:Option></psf:Feature><psf:Feature name='psk:Second'>" +
    DisplayName("second") + "<psf:Option name='psk:Off'/><psf:Option name='psk:On'>" +
    DisplayName("second on") + ScoredProperty("psk:Weight", Value("120 g")) +
    ScoredProperty("psk:Empty", Value("")) +
    ScoredProperty("psk:Refers", "<psf:ParameterRef name='psk:P'/>") + ScoredProperty("psk:Bare", "") +
    "</psf:Option><psf:Feature name='psk:Nested'><psf:Option name='psk:Deep'/></psf:Feature></psf:Feature>"
    "<psf:ParameterDef name='psk:P'/>";

TEST(PrintCapabilitiesXmlDocument, AnswersForANodeAndNotForTheDocument) {
    PrintCapabilitiesXmlDocument document = Capabilities(twoFeatures);
    const CComPtr<IXMLDOMNode> second = NodeOf(document, L"//psf:Feature[2]");
    CComPtr<IXMLDOMNodeList> options;
    EXPECT_EQ(document.GetChildOptionNodes(second, &options), S_OK);
    LONG count = 0;
    options->get_length(&count);
    EXPECT_EQ(count, 2); // that of the nested feature is not its own

    CComPtr<IXMLDOMNode> option;
    EXPECT_EQ(document.GetChildOptionNodeIfExists(second, L"psk:", L"Deep", &option), S_FALSE);
    EXPECT_EQ(document.GetChildOptionNodeIfExists(second, L"psk:", L"On", &option), S_OK);
    EXPECT_EQ(Narrow(document.GetChildDisplayNamePropertyValue(option)), "second on");
    EXPECT_EQ(Narrow(document.GetChildScoredPropertyValueAsString(option, L"Weight")), "120 g");
    EXPECT_EQ(document.GetChildScoredPropertyValueAsInteger(option, L"Weight"), 120);
    EXPECT_EQ(Narrow(document.GetChildScoredPropertyValueAsString(option, L"Empty")), "");

    for (const wchar_t* const missing : {L"Refers", L"Bare", L"None"}) {
        ExpectRaised([&] { document.GetChildScoredPropertyValueAsString(option, missing); }, E_FAIL,
                     "PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueAsString");
        CXString text = L"before";
        EXPECT_EQ(document.GetChildScoredPropertyValueIfExists(option, missing, text), S_FALSE);
        EXPECT_TRUE(text.IsEmpty());
    }
    const CComPtr<IXMLDOMNode> off = NodeOf(document, L"//psf:Option[@name='psk:Off']");
    ExpectRaised([&] { document.GetChildDisplayNamePropertyValue(off); }, E_FAIL,
                 "PrintCapabilitiesXmlDocument::GetChildDisplayNamePropertyValue");
    CComPtr<IXMLDOMNodeList> none;
    ExpectRaised([&] { document.GetChildOptionNodes(nullptr, &none); }, E_POINTER,
                 "PrintCapabilitiesXmlDocument::GetChildOptionNodes");
}

TEST(PrintCapabilitiesXmlDocument, ReplacesDisplayNamesAndDeletesParameters) {
    PrintCapabilitiesXmlDocument document = Capabilities(twoFeatures);
    const CComPtr<IXMLDOMNode> first = NodeOf(document, L"//psf:Feature[1]");
    const CComPtr<IXMLDOMNode> second = NodeOf(document, L"//psf:Feature[2]");
    // The first feature has no name of its own; that of its option, or of the other, is not touched.
    EXPECT_EQ(document.ReplaceDisplayNamePropertyValue(first, L"x"), E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(document.ReplaceOptionDisplayNamePropertyValue(second, L"psk:", L"Off", L"x"),
              E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(document.ReplaceOptionDisplayNamePropertyValue(second, L"psk:", L"Deep", L"x"),
              E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(document.ReplaceDisplayNamePropertyValue(second, L"new"), S_OK);
    EXPECT_EQ(document.ReplaceOptionDisplayNamePropertyValue(second, L"psk:", L"On", L"<on>"), S_OK);
    EXPECT_EQ(OutsideView(document, "concat(//psf:Feature[1], //psf:Feature[2])"), "first on80new<on>120 g");
    EXPECT_EQ(ResultOf([&] { return document.ReplaceDisplayNamePropertyValue(nullptr, L"x"); }),
              E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] { return document.ReplaceDisplayNamePropertyValue(second, L""); }), E_INVALIDARG);

    EXPECT_EQ(document.DeleteParameterDefNodeIfExists(L"psk:", L"P"), S_OK);
    EXPECT_EQ(document.DeleteParameterDefNodeIfExists(L"psk:", L"P"), S_FALSE);
}

TEST(PrintCapabilitiesXmlDocument, KnowsTheSizeOfAnOption) {
    const PrintCapabilitiesXmlDocument document = Capabilities(
        SizeFeature(SizeOption("psk:ISOA5", "148000", "210000") + SizeOption("psk:CustomMediaSize", "", "") +
                    SizeOption("PSCustomMediaSize", "1", "2") + SizeOption("psk:ISOA6", "105000", "")));
    const auto custom = [](const std::string& option, const std::string& height) {
        return Feature("psk:PageMediaSize", option,
                       ScoredProperty("psk:MediaSizeWidth", "<psf:ParameterRef name='psk:W'/>") + height) +
               "<psf:ParameterInit name='psk:W'>" + Value("111000") + "</psf:ParameterInit>";
    };
    const auto height = [](const char* text) { return ScoredProperty("psk:MediaSizeHeight", Value(text)); };
    const Rows<const wchar_t*, std::string, std::pair<int, int>, std::pair<int, int>> cases{
        {L"psk:ISOA5", "", {148000, 210000}, {148000, 210000}},
        {L"psk:CustomMediaSize", "", {215900, 279400}, {210000, 297000}},
        {L"psk:CustomMediaSize",
         Feature("psk:PageMediaSize", "psk:ISOA3", ScoredProperty("psk:MediaSizeWidth", Value("297000"))),
         {215900, 279400},
         {210000, 297000}},
        {L"psk:CustomMediaSize",
         custom("psk:CustomMediaSize", height("222000")),
         {111000, 222000},
         {111000, 222000}},
        {L"PSCustomMediaSize",
         custom("psk:CustomMediaSize", height("222000")),
         {111000, 222000},
         {111000, 222000}},
        {L"psk:CustomMediaSize",
         custom("psk:PSCustomMediaSize", height("222000")),
         {215900, 279400},
         {210000, 297000}},
        {L"psk:CustomMediaSize",
         custom("psk:CustomMediaSize", height("0")),
         {215900, 279400},
         {210000, 297000}},
        // Nothing to read: failures.
        {L"psk:CustomMediaSize", custom("psk:CustomMediaSize", ""), {}, {}},
        {L"psk:ISOA6", "", {}, {}},
    };
    // A process reads its locale once, so each is asked in a process of its own.
    const auto ask = [&](bool isEnglish) {
        int failures = 0;
        for (const auto& row : cases) {
            const auto& [givenOption, givenTicket, english, other] = row;
            OpenTicket ticket(Ticket(givenTicket));
            const std::wstring option = L"//psf:Option[@name='" + std::wstring(givenOption) + L"']";
            std::pair<int, int> size = {};
            try {
                document.GetWidthAndLengthPropertyValues(&ticket, NodeOf(document, option.c_str()),
                                                         size.first, size.second);
            } catch (const CPComException&) {
                size = {};
            }
            if (size != (isEnglish ? english : other)) {
                std::fprintf(stderr, "case %d: %d x %d\n", static_cast<int>(&row - cases.data()), size.first,
                             size.second);
                ++failures;
            }
        }
        std::exit(failures);
    };
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    for (const char* const locale : {"en_US.UTF-8", "de_DE.UTF-8"}) {
        setenv("LC_ALL", locale, 1);
        EXPECT_EXIT(ask(std::string_view(locale) == "en_US.UTF-8"), testing::ExitedWithCode(0), "") << locale;
    }
    unsetenv("LC_ALL");
}

TEST(PrintCapabilitiesXmlDocument, ComesFromAPrinter) {
    EXPECT_EQ(PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(L"No such printer", nullptr),
              nullptr);
    const SampleQueue queue;
    const auto create = [] {
        return PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(SampleQueue::name, nullptr);
    };
    const auto document = create();
    ASSERT_NE(document, nullptr);
    EXPECT_NE(OutsideView(*document, "count(//psf:Feature[@name='psk:PageMediaSize']/psf:Option)"), "0");

    // Only opening may fail without a word.
    int silent = 0;
    int raised = 0;
    for (LONG number = 1;; ++number) {
        const OvPlatform::FaultInjectionScope scope(number, E_ACCESSDENIED);
        try {
            if (create() == nullptr) ++silent;
        } catch (const CPComException& failure) {
            EXPECT_TRUE(FAILED(failure.GetHresult())) << number;
            ++raised;
        }
        if (!OvPlatform::FaultInjection::HasFailed()) break;
    }
    EXPECT_EQ(silent, 1);
    EXPECT_GT(raised, 4);
}

} // namespace
