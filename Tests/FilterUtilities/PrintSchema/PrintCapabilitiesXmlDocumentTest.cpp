#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/FilterJob.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <algorithm>
#include <cstdlib>
#include <regex>

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
        const std::string shape = std::regex_replace(Shape(NodeOf(document, L"/psf:PrintCapabilities/*")),
                                                     std::regex(" xmlns:[^ >]*"), "");
        EXPECT_EQ(shape, "<" + start + ">" + content + "</" + start.substr(0, start.find(' ')) + ">");
        document.DeleteNode(NodeOf(document, L"/psf:PrintCapabilities/*"));
    }

    CComPtr<IXMLDOMElement> out;
    EXPECT_EQ(ResultOf([&] { return document.CreateFeature(L"psk:", L"A", L"", &out); }), E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] { return document.CreateOption(L"psk:", L"A", L"B", nullptr); }), E_POINTER);
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
        EXPECT_EQ(ResultOf([&] {
                      document.GetChildScoredPropertyValueAsString(option, missing);
                      return S_OK;
                  }),
                  E_FAIL);
        CXString text = L"before";
        EXPECT_EQ(document.GetChildScoredPropertyValueIfExists(option, missing, text), S_FALSE);
        EXPECT_TRUE(text.IsEmpty());
    }
    const CComPtr<IXMLDOMNode> off = NodeOf(document, L"//psf:Option[@name='psk:Off']");
    ExpectRaised([&] { document.GetChildDisplayNamePropertyValue(off); }, E_FAIL,
                 "PrintCapabilitiesXmlDocument::GetChildDisplayNamePropertyValue");
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
    using Size = std::pair<int, int>;
    const auto sizeOf = [&](const std::wstring& option, const std::string& ticketText) {
        OpenTicket ticket(Ticket(ticketText));
        Size size;
        document.GetWidthAndLengthPropertyValues(
            &ticket, NodeOf(document, (L"//psf:Option[@name='" + option + L"']").c_str()), size.first,
            size.second);
        return size;
    };
    const auto custom = [](const std::string& option, const std::string& height) {
        return Feature("psk:PageMediaSize", option,
                       ScoredProperty("psk:MediaSizeWidth", "<psf:ParameterRef name='psk:W'/>") + height) +
               "<psf:ParameterInit name='psk:W'>" + Value("111000") + "</psf:ParameterInit>";
    };
    const auto height = [](const char* text) { return ScoredProperty("psk:MediaSizeHeight", Value(text)); };
    EXPECT_EQ(sizeOf(L"psk:ISOA5", ""), Size(148000, 210000));
    for (const wchar_t* option : {L"psk:CustomMediaSize", L"PSCustomMediaSize"})
        EXPECT_EQ(sizeOf(option, custom("psk:CustomMediaSize", height("222000"))), Size(111000, 222000));
    EXPECT_THROW(sizeOf(L"psk:CustomMediaSize", custom("psk:CustomMediaSize", "")), CPComException);
    EXPECT_THROW(sizeOf(L"psk:ISOA6", ""), CPComException);

    // Where the ticket does not say it, the locale does. A process reads its locale once, so each is asked
    // in a process of its own.
    const std::string silent[] = {
        "", Feature("psk:PageMediaSize", "psk:ISOA3", ScoredProperty("psk:MediaSizeWidth", Value("297000"))),
        custom("psk:PSCustomMediaSize", height("222000")), custom("psk:CustomMediaSize", height("0"))};
    const auto ask = [&](const Size& expected) {
        std::exit(static_cast<int>(std::ranges::count_if(silent, [&](const std::string& ticket) {
            return sizeOf(L"psk:CustomMediaSize", ticket) != expected;
        })));
    };
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    setenv("LC_ALL", "en_US.UTF-8", 1);
    EXPECT_EXIT(ask({215900, 279400}), testing::ExitedWithCode(0), "");
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_EXIT(ask({210000, 297000}), testing::ExitedWithCode(0), "");
    unsetenv("LC_ALL");
}

TEST(PrintCapabilitiesXmlDocument, ComesFromAPrinter) {
    const auto create = [](const wchar_t* name) {
        return PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(name, nullptr);
    };
    EXPECT_EQ(create(L"No such printer"), nullptr);
    const SampleQueue queue;
    const auto document = create(SampleQueue::name);
    ASSERT_NE(document, nullptr);
    EXPECT_NE(OutsideView(*document, "count(//psf:Feature[@name='psk:PageMediaSize']/psf:Option)"), "0");

    // Only opening may fail without a word.
    int silent = 0;
    for (LONG number = 1;; ++number) {
        const OvPlatform::FaultInjectionScope scope(number, E_ACCESSDENIED);
        try {
            if (create(SampleQueue::name) == nullptr) ++silent;
        } catch (const CPComException& failure) {
            EXPECT_TRUE(FAILED(failure.GetHresult())) << number;
        }
        if (!OvPlatform::FaultInjection::HasFailed()) break;
    }
    EXPECT_EQ(silent, 1);
}

} // namespace
