#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"

#include <vector>

using namespace PrintSchema;

namespace {

const std::string v11 = Declare("pskv11", keywordsV11Uri);

// ---- Loading

TEST(PrintSchemaXmlDocument, LearnsThePrefixesOfTheRootElement) {
    const Rows<const char*, std::string, const char*, const char*, const char*, const char*> cases{
        {"usual", Ticket("", v11 + Declare("ok", PrivateUri())), "psf:", "psk:", "pskv11:", "ok:"},
        {"private prefix of its own", Ticket("", Declare("ns0001", PrivateUri())), "psf:", "psk:", "(null)",
         "ok:"},
        {"v1.1 as the default", Ticket("", Declare("", keywordsV11Uri)), "psf:", "psk:", "(null)", "ns0000:"},
        {"odd prefixes",
         "<a:PrintTicket" + Declare("a", frameworkUri) + Declare("psf", keywordsUri) +
             "><a:Feature name='psf:X'/>"
             "</a:PrintTicket>",
         "a:", "psf:", "(null)", "ns0000:"},
        {"no keywords", "<f:PrintTicket" + Declare("f", frameworkUri) + "/>", "f:", "(null)", "(null)",
         "ns0000:"},
        {"two prefixes for one namespace: the first counts", Ticket("", Declare("other", frameworkUri)),
         "psf:", "psk:", "(null)", "ns0000:"},
    };
    for (const auto& [what, xml, framework, keywords, keywordsV11, userKeywords] : cases) {
        SCOPED_TRACE(what);
        const OpenTicket ticket(xml);
        EXPECT_EQ(TextOf(ticket.GetFrameworkNsPrefix()), framework);
        EXPECT_EQ(TextOf(ticket.GetKeywordsNsPrefix()), keywords);
        EXPECT_EQ(TextOf(ticket.GetKeywordsV11NsPrefix()), keywordsV11);
        EXPECT_EQ(TextOf(ticket.GetUserKeywordsNsPrefix()), userKeywords);
        EXPECT_EQ(ticket.IsKeywordsV11NsPrefixDefined(), keywordsV11 != std::string("(null)"));
        EXPECT_TRUE(ticket.GetRootNode());
        // Queries use the document's own prefix.
        CComPtr<IXMLDOMNodeList> features;
        EXPECT_EQ(ticket.GetNodes(L"Feature", &features), S_OK);
    }
}

TEST(PrintSchemaXmlDocument, RefusesWhatIsNoTicket) {
    const std::string psf = Declare("psf", frameworkUri);
    const Rows<const char*, std::string, HRESULT, const char*> cases{
        {"other root", "<psf:PrintCapabilities" + psf + "/>", S_FALSE, "Failed to get root node"},
        {"root in another namespace", "<psf:PrintTicket xmlns:psf='urn:other'/>", S_FALSE,
         "Failed to get root node"},
        {"framework as the default namespace", "<PrintTicket" + Declare("", frameworkUri) + "/>", E_FAIL,
         "without a prefix"},
        {"keywords as the default namespace", "<psf:PrintTicket" + psf + Declare("", keywordsUri) + "/>",
         E_FAIL, "without a prefix"},
        {"the private prefix taken",
         Ticket(Feature("my:A", "my:B"), Declare("my", PrivateUri()) + Declare("ok", "urn:other")), E_FAIL,
         "from my: to ok: (which the document binds to another namespace, urn:other)"},
        {"malformed", "<psf:PrintTicket" + psf + ">\n<psf:Feature>\n</psf:PrintTicket>", E_FAIL, "line 3"},
        {"nothing", "", E_FAIL, "does not parse"},
        {"document type", "<!DOCTYPE a [<!ENTITY e 'x'>]>" + Ticket("&e;").substr(39), E_FAIL,
         "does not parse"},
    };
    for (const auto& [what, xml, result, message] : cases) {
        SCOPED_TRACE(what);
        try {
            const OpenTicket ticket(xml);
            ADD_FAILURE() << "was taken";
        } catch (const CPComException& failure) {
            EXPECT_EQ(failure.GetHresult(), result);
            EXPECT_NE(std::string(failure.getExceptionMessage()).find(message), std::string::npos)
                << failure.getExceptionMessage();
        }
    }
    EXPECT_NO_THROW(
        OpenTicket("<wrapper><psf:PrintTicket" + psf + "><psf:Feature/></psf:PrintTicket></wrapper>"));
}

TEST(PrintSchemaXmlDocument, LoadsBytesAsTheySayAndTextWhateverItSays) {
    const std::string utf8 = Ticket(Feature("psk:A", "psk:\xC3\xA4\xF0\x9F\x96\xA8"));
    CComBSTR option;
    EXPECT_EQ(OpenTicket("\xEF\xBB\xBF" + utf8).GetFeatureOption(L"psk:", L"A", &option, nullptr), S_OK);
    EXPECT_EQ(TextOf(option), "\xC3\xA4\xF0\x9F\x96\xA8");
    std::string declared16 = Ticket(Feature("psk:A", "psk:x"));
    declared16.replace(declared16.find("UTF-8"), 5, "UTF-16");
    for (const std::string& bytes : {declared16, Ticket(Feature("psk:A", "psk:\xC3("))})
        EXPECT_THROW((OpenTicket(bytes)), CPComException);
    // What stands before the document is dropped.
    for (const wchar_t* junk : {L"", L"\xFEFF", L"junk \xFEFF"}) {
        PrintTicketXmlDocument ticket(junk + CXString(declared16.c_str()));
        EXPECT_EQ(ticket.QueryNode(L"//psf:Feature"), S_OK);
        EXPECT_EQ(ticket.SetProcessingInstructionsEncodingUtf8(), S_OK);
        CComPtr<IXMLDOMNode> first;
        ticket.GetDomDocPtr()->get_firstChild(&first);
        CComBSTR text;
        first->get_xml(&text);
        EXPECT_NE(TextOf(text).find("UTF-8"), std::string::npos) << TextOf(text);
    }
    OpenTicket undeclared(Ticket("").substr(39));
    EXPECT_EQ(undeclared.SetProcessingInstructionsEncodingUtf8(), E_FAIL);
}

TEST(PrintSchemaXmlDocument, RenamesThePrivatePrefixInNamesOnly) {
    const OpenTicket ticket(
        Ticket(Feature("ns0001:A", "ns0001:B",
                       ScoredProperty("ns0001:C", "<psf:Value xsi:type='xsd:QName'>ns0001:D</psf:Value>")) +
                   Feature("psk:ns0001:E", "xns0001:F") + "<other name='ns0001:I' alias='ns0001:J'/>",
               Declare("ns0001", PrivateUri())));
    EXPECT_EQ(OutsideView(ticket, "/psf:PrintTicket[not(namespace::ns0001)]/namespace::ok"), PrivateUri());
    const Rows<const char*, const char*> cases{
        {"//psf:Feature[1]/@name", "ok:A"},
        {"//psf:Option[1]/@name", "ok:B"},
        {"//psf:ScoredProperty/@name", "ok:C"},
        {"//psf:Value", "ns0001:D"},
        {"//psf:Feature[2]/@name", "psk:ns0001:E"},
        {"//psf:Feature[2]/*/@name", "xns0001:F"},
        {"//other/@name", "ok:I"},
        {"//other/@alias", "ns0001:J"},
    };
    for (const auto& [xpath, found] : cases)
        EXPECT_EQ(OutsideView(ticket, xpath), found) << xpath;
    // Loading it again changes nothing.
    const std::string once = XmlOf(ticket);
    EXPECT_EQ(XmlOf(OpenTicket(once)), once);
}

TEST(PrintSchemaXmlDocument, CopiesWorkOnOneTree) {
    OpenTicket ticket(Ticket(Feature("psk:A", "psk:B")));
    PrintTicketXmlDocument copy(ticket);
    PrintTicketXmlDocument assigned{static_cast<IXMLDOMDocument2*>(nullptr)};
    assigned = copy;
    EXPECT_EQ(copy.DeleteFeatureNodeIfADuplicateExists(L"psk:", L"A"), S_FALSE);
    EXPECT_EQ(assigned.SetFeatureOption(L"A", true, L"C", true), S_OK);
    EXPECT_EQ(OutsideView(ticket, "//psf:Option/@name"), "psk:C");
    EXPECT_EQ(ticket.GetDomDocPtr(), copy.GetDomDocPtr());
    EXPECT_EQ(TextOf(assigned.GetUserKeywordsNsPrefix()), "ns0000:");
}

TEST(PrintSchemaXmlDocument, WithoutDomRefusesEveryQuestion) {
    PrintTicketXmlDocument ticket{static_cast<IXMLDOMDocument2*>(nullptr)};
    CComBSTR text;
    CComPtr<IXMLDOMNode> node;
    EXPECT_FALSE(ticket.HasDomDocument());
    EXPECT_FALSE(ticket.GetRootNode());
    EXPECT_EQ(ticket.get_xml(&text), E_FAIL);
    EXPECT_EQ(ticket.SetProcessingInstructionsEncodingUtf8(), S_FALSE);
    EXPECT_EQ(ticket.AddUserKeywordsNamespaceDefinitionIfMissing(), E_PENDING);
    ExpectRaised([&] { ticket.GetNode(L"//a", &node); }, E_PENDING, "PrintSchemaXmlDocument::GetNode");
    const std::function<HRESULT()> operations[] = {
        [&] { return ticket.QueryNode(L"//a"); },
        [&] { return ticket.DeletePrivateFeatures(USER_KEYWORDS_URI); },
        [&] { return ticket.GetFeatureOption(L"psk:", L"A", &text, nullptr); },
        [&] { return ticket.AppendStringParameterInit(L"psk:", L"A", L"B"); },
        [&] { return ticket.AddOrReplaceOcptParameterInit(L"<a/>"); },
    };
    for (const auto& operation : operations)
        EXPECT_EQ(ResultOf(operation), E_PENDING);
}

// ---- Names and prefixes

TEST(PrintSchemaXmlDocument, TellsKeywordsFromPrivateKeywords) {
    const OpenTicket ticket(Ticket("", Declare("my", PrivateUri())));
    const Rows<const wchar_t*, const char*, HRESULT, MsPrintTicketNamespacesEnum> cases{
        {L"PSK:A", "A", S_OK, KeywordsNs},  {L"OK:A", "A", S_OK, UserKeywordsNs},
        {L"A", "A", S_OK, KeywordsNs},      {L"psk:a:b", "a:b", S_OK, KeywordsNs},
        {L"my:A", "A", E_FAIL, KeywordsNs}, {L":A", "A", E_FAIL, KeywordsNs},
    };
    for (const auto& [name, wantedKeyword, result, wantedNs] : cases) {
        SCOPED_TRACE(Narrow(name));
        CXString keyword(L"old");
        MsPrintTicketNamespacesEnum ns = FrameworkNs;
        EXPECT_EQ(ticket.GetKeywordAndPrefixFromName(name, keyword, ns), result);
        EXPECT_EQ(Narrow(keyword), wantedKeyword);
        EXPECT_EQ(ns, wantedNs);
    }
    const OpenTicket foreign(Ticket("", Declare("ns0000", "urn:other")));
    CXString keyword;
    MsPrintTicketNamespacesEnum ns{};
    EXPECT_EQ(foreign.GetKeywordAndPrefixFromName(L"ns0000:A", keyword, ns), E_FAIL);
}

TEST(PrintSchemaXmlDocument, KnowsThreeNamespacesByNumber) {
    const OpenTicket ticket(Ticket(""));
    EXPECT_EQ(TextOf(ticket.GetNsPrefix(FrameworkNs)), "psf:");
    EXPECT_EQ(TextOf(ticket.GetNsPrefix(KeywordsNs)), "psk:");
    EXPECT_EQ(TextOf(ticket.GetNsPrefix(UserKeywordsNs)), "ns0000:");
    const auto ask = [&](int number) {
        (void)ticket.GetNsPrefix(static_cast<MsPrintTicketNamespacesEnum>(number));
    };
    EXPECT_NE(MessageOf([&] { ask(2); }).find("switch statment for 2."), std::string::npos);
    ExpectRaised([&] { ask(4); }, E_INVALIDARG, "PrintSchemaXmlDocument::GetNsPrefix");
}

TEST(PrintSchemaXmlDocument, FindsPrefixesOnTheRootElementOnly) {
    const OpenTicket ticket(
        Ticket("<psf:Feature xmlns:low='urn:low'/>", " xmlns='urn:default' about='urn:about'"));
    CComBSTR prefix;
    EXPECT_EQ(ticket.GetPrefixFromURI(KEYWORDS_URI, &prefix), S_OK);
    EXPECT_EQ(TextOf(prefix), "psk:");
    CComBSTR untouched(L"untouched");
    BSTR out = untouched;
    EXPECT_EQ(ticket.GetPrefixFromURI(L"urn:low", &out), S_FALSE);
    EXPECT_EQ(out, untouched.m_str);
    CComBSTR none;
    const Rows<const wchar_t*, HRESULT> refused{
        {L"urn:default", E_FAIL}, {L"urn:about", E_FAIL}, {L"", E_INVALIDARG}};
    for (const auto& [uri, result] : refused)
        ExpectRaised([&, &uri = uri] { ticket.GetPrefixFromURI(uri, &none); }, result,
                     "PrintSchemaXmlDocument::GetPrefixFromURI");
}

TEST(PrintSchemaXmlDocument, AddsThePrivateNamespaceOnce) {
    OpenTicket ticket(Ticket(""));
    EXPECT_EQ(ticket.AddUserKeywordsNamespaceDefinitionIfMissing(), S_FALSE);
    EXPECT_EQ(ticket.AddUserKeywordsNamespaceDefinitionIfMissing(), S_OK);
    EXPECT_EQ(OutsideView(ticket, "/psf:PrintTicket/namespace::ok"), PrivateUri());
    EXPECT_EQ(TextOf(ticket.GetUserKeywordsNsPrefix()), "ns0000:");
    // What is read anew knows better.
    EXPECT_EQ(TextOf(OpenTicket(XmlOf(ticket)).GetUserKeywordsNsPrefix()), "ok:");
}

// ---- Values

const std::string valueTicket = Ticket(
    Feature("psk:Direct", "psk:O", ScoredProperty("psk:Width", Value(" 210000 "))) +
    Feature("psk:ByRef", "psk:O", ScoredProperty("psk:Width", "<psf:ParameterRef name='psk:Two'/>")) +
    Feature("psk:Orphan", "psk:O", ScoredProperty("psk:Width", "<psf:ParameterRef name='psk:Nine'/>")) +
    Feature("psk:Bare", "psk:O", ScoredProperty("psk:Width", "")) +
    Feature("psk:Empty", "psk:O", ScoredProperty("psk:Width", Value(""))) +
    Feature("psk:Real", "psk:O", ScoredProperty("psk:Width", Value("12.75x"))) +
    "<psf:ParameterInit name='psk:One'>" + Value("1") + "</psf:ParameterInit>" +
    "<psf:ParameterInit name='psk:Two'>" + Value("2") + "</psf:ParameterInit>" +
    "<psf:ParameterInit name='psk:Two'>" + Value("3") + "</psf:ParameterInit>");

std::wstring WidthOf(const char* feature) {
    const std::string name = feature;
    return L"//psf:Feature[@name='psk:" + std::wstring(name.begin(), name.end()) + L"']//psf:ScoredProperty";
}

TEST(PrintSchemaXmlDocument, FindsValuesDirectlyOrThroughTheirParameter) {
    const OpenTicket ticket(valueTicket);
    const Rows<const char*, HRESULT, const char*, int, float> cases{
        {"Direct", S_OK, "210000", 210000, 210000.f},
        {"ByRef", S_OK, "2", 2, 2.f},
        {"Real", S_OK, "12.75x", 12, 12.75f},
        {"Empty", S_OK, "(null)", 0, 0.f},
        {"Orphan", E_ELEMENT_NOT_FOUND, "(null)", -7, -7.f},
        {"Bare", E_ELEMENT_NOT_FOUND, "(null)", -7, -7.f},
    };
    for (const auto& [feature, result, wantedText, wantedInteger, wantedReal] : cases) {
        SCOPED_TRACE(feature);
        const std::wstring xpath = WidthOf(feature);
        CComBSTR text;
        int integer = -7;
        float real = -7.f;
        EXPECT_EQ(ticket.QueryNodeValue(xpath.c_str(), &text), result);
        EXPECT_EQ(TextOf(text), wantedText);
        EXPECT_EQ(ticket.QueryNodeValue(xpath.c_str(), &integer), result);
        EXPECT_EQ(integer, wantedInteger);
        EXPECT_EQ(ticket.QueryNodeValue(xpath.c_str(), &real), result);
        EXPECT_EQ(real, wantedReal);
    }
    EXPECT_EQ(ticket.QueryNode(L"//psf:Feature"), S_OK);
    EXPECT_EQ(ticket.QueryNode(L"//psf:Nothing"), E_ELEMENT_NOT_FOUND);
}

TEST(PrintSchemaXmlDocument, TellsNamesApartInAllAlphabets) {
    const auto init = [](const std::string& name) {
        return "<psf:ParameterInit name='psk:" + name + "'>" + Value(name) + "</psf:ParameterInit>";
    };
    const OpenTicket ticket(Ticket(
        Feature("psk:A", "psk:O", ScoredProperty("psk:Width", "<psf:ParameterRef name='psk:\xC3\xA4'/>")) +
        init("\xC3\x96") + init("\xC3\x84") + init("\xC3\xA4")));
    CComBSTR text;
    EXPECT_EQ(ticket.QueryNodeValue(L"//psf:ScoredProperty", &text), S_OK);
    EXPECT_EQ(TextOf(text), "\xC3\xA4");
}

TEST(PrintSchemaXmlDocument, SetsValuesWhereItFindsThem) {
    OpenTicket ticket(valueTicket);
    EXPECT_EQ(ticket.SetNodeValue(WidthOf("Direct").c_str(), L"<5>"), S_OK);
    EXPECT_EQ(ticket.SetNodeValue(WidthOf("ByRef").c_str(), L"6"), S_OK);
    for (const char* absent : {"Orphan", "Bare", "Missing"})
        EXPECT_EQ(ticket.SetNodeValue(WidthOf(absent).c_str(), L"7"), S_FALSE) << absent;
    EXPECT_EQ(OutsideView(ticket, "//psf:Feature[1]//psf:Value"), "<5>");
    EXPECT_EQ(OutsideView(ticket, "//psf:Feature[1]//psf:Value/@xsi:type"), "xsd:integer");
    // The content of the initialiser goes, its Value included.
    EXPECT_EQ(OutsideView(ticket, "//psf:ParameterInit[2]"), "6");
    EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit[2]/*)"), "0");
    EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit/psf:Value)"), "2");
}

TEST(PrintSchemaXmlDocument, ChecksItsArguments) {
    OpenTicket ticket(valueTicket);
    IXMLDOMNode* const root = ticket.GetRootNode();
    const std::string before = XmlOf(ticket);
    CComPtr<IXMLDOMNode> node;
    CComPtr<IXMLDOMElement> out;
    CComBSTR text;
    const Rows<std::function<HRESULT()>, HRESULT> cases{
        {[&] { return ticket.GetNode(L"//a", nullptr); }, E_POINTER},
        {[&] { return ticket.GetNode(L"", &node); }, E_INVALIDARG},
        {[&] { return ticket.GetNode(L"//undeclared:a", &node); }, E_FAIL},
        {[&] { return ticket.QueryNodeValue(L"//psf:a", static_cast<int*>(nullptr)); }, E_POINTER},
        {[&] { return ticket.GetAttributeValue(nullptr, L"name", &text); }, E_POINTER},
        {[&] { return ticket.GetAttributeValue(root, L"absent", &text); }, S_FALSE},
        {[&] { return ticket.GetFeatureNode(L"psk:", L"Missing", &node); }, E_FAIL},
        {[&] { return ticket.GetFeatureNodeIfExists(L"psk:", L"", &node); }, E_INVALIDARG},
        {[&] { return ticket.DeleteFeatureNodeIfExists(L"psk:", nullptr); }, E_INVALIDARG},
        {[&] { return ticket.SetNodeValue(L"//psf:ScoredProperty", L""); }, E_INVALIDARG},
        {[&] { return ticket.GetParameterInitNodeIfExists(L"psk:", L"", &node); }, E_INVALIDARG},
        {[&] { return ticket.DeletePropertyNodesIfExist(L"psk:", L""); }, E_FAIL},
        {[&] { return ticket.DeletePrivateFeatures(L""); }, E_INVALIDARG},
        {[&] { return ticket.DeleteNode(nullptr); }, E_POINTER},
        {[&] { return ticket.get_xml(nullptr); }, E_POINTER},
        {[&] { return ticket.CreateParameterRef(L"", L"A", &out); }, E_INVALIDARG},
        {[&] { return ticket.CreateParameterRef(L"psk:", L"A", nullptr); }, E_POINTER},
        {[&] { return ticket.CreateProperty(KeywordsNs, L"A", L"", L"B", &out); }, E_INVALIDARG},
        {[&] { return ticket.CreateStringScoredProperty(L"A", L"", &out); }, E_INVALIDARG},
        {[&] { return ticket.AppendChild(nullptr, root); }, E_INVALIDARG},
        {[&] { return ticket.AppendChildStringProperty(root, KeywordsNs, L"A", L""); }, E_INVALIDARG},
        {[&] { return ticket.AppendChildQNameScoredProperty(root, L"A", L""); }, E_INVALIDARG},
        {[&] { return ticket.AppendChildToRootNode(nullptr); }, E_POINTER},
    };
    for (const auto& row : cases) {
        const auto& [operation, result] = row;
        EXPECT_EQ(ResultOf(operation), result) << (&row - cases.data());
        EXPECT_FALSE(out);
    }
    EXPECT_EQ(XmlOf(ticket), before);
}

// ---- Deleting

TEST(PrintSchemaXmlDocument, DeletesTheFirstOfDuplicates) {
    OpenTicket ticket(
        Ticket(Feature("psk:A", "psk:1") + Feature("psk:A", "psk:2") + Feature("psk:A", "psk:3")));
    for (const char* left : {"psk:2", "psk:3"}) {
        EXPECT_EQ(ticket.DeleteFeatureNodeIfADuplicateExists(L"psk:", L"A"), S_OK);
        EXPECT_EQ(OutsideView(ticket, "//psf:Option/@name"), left);
    }
    EXPECT_EQ(ticket.DeleteFeatureNodeIfADuplicateExists(L"psk:", L"A"), S_FALSE);
    EXPECT_EQ(ticket.DeleteFeatureNodeIfADuplicateExists(L"psk:", L"B"), S_FALSE);
}

TEST(PrintSchemaXmlDocument, DeletesWhatItIsAskedToAndNothingElse) {
    const std::string content =
        Feature("psk:A", "psk:O", "<psf:Property name='psk:P'/>") + Feature("my:B", "my:O") +
        "<psf:Feature name='psk:C'><psf:Feature name='my:D'/><psf:Feature name='myother:E'/></psf:Feature>" +
        "<psf:Feature name='my:F'><psf:Feature name='my:G'/></psf:Feature><psf:Feature/>" +
        "<psf:Property name='psk:P'/><psf:Property name='psk:Q'/>";
    OpenTicket ticket(Ticket(content, Declare("my", "urn:my")));
    const auto features = [&] { return OutsideView(ticket, "count(//psf:Feature)"); };
    EXPECT_EQ(features(), "8");
    EXPECT_EQ(ticket.DeletePrivateFeatures(L"urn:unknown"), S_FALSE);
    EXPECT_EQ(features(), "8");
    EXPECT_EQ(ticket.DeletePrivateFeatures(L"urn:my"), S_OK);
    EXPECT_EQ(features(), "4");
    EXPECT_EQ(OutsideView(ticket, "//psf:Feature/psf:Feature/@name"), "myother:E");
    EXPECT_EQ(ticket.DeletePropertyNodesIfExist(L"psk:", L"P"), S_OK);
    EXPECT_EQ(ticket.DeletePropertyNodesIfExist(L"psk:", L"P"), S_FALSE);
    EXPECT_EQ(OutsideView(ticket, "//psf:Property/@name"), "psk:Q");
    EXPECT_EQ(ticket.DeleteFeatureNodeIfExists(L"psk:", L"A"), S_OK);
    EXPECT_EQ(ticket.DeleteFeatureNodeIfExists(L"psk:", L"A"), S_FALSE);
    EXPECT_EQ(features(), "3");

    CComPtr<IXMLDOMNode> gone;
    ASSERT_EQ(ticket.GetFeatureNode(L"psk:", L"C", &gone), S_OK);
    EXPECT_EQ(ticket.DeleteNode(gone), S_OK);
    EXPECT_EQ(ticket.DeleteNode(gone), S_FALSE);
}

// ---- Building

TEST(PrintSchemaXmlDocument, BuildsPropertiesThatAnOutsideReaderUnderstands) {
    OpenTicket ticket(Ticket("<psf:Feature/>", Declare("my", PrivateUri())));
    CComPtr<IXMLDOMNode> parent;
    ASSERT_EQ(ticket.GetNode(L"//psf:Feature", &parent), S_OK);
    EXPECT_EQ(ticket.AppendChildIntegerProperty(parent, UserKeywordsNs, L"A", -5), S_OK);
    EXPECT_EQ(ticket.AppendChildStringProperty(parent, FrameworkNs, L"B", L"a < b & \"c\""), S_OK);
    EXPECT_EQ(ticket.AppendChildIntegerScoredProperty(parent, L"C", 7), S_OK);
    EXPECT_EQ(ticket.AppendChildQNameScoredProperty(parent, L"D", L"Paper"), S_OK);
    EXPECT_EQ(ticket.AppendChildParameterRefScoredProperty(parent, L"ok:", L"E", L"psk:", L"F"), S_OK);
    CComPtr<IXMLDOMElement> real;
    CComPtr<IXMLDOMElement> outer;
    EXPECT_EQ(ticket.CreateRealScoredProperty(L"G", 1.005e2, &real), S_OK);
    EXPECT_EQ(ticket.CreateScoredProperty(L"H", real, &outer), S_OK);
    EXPECT_EQ(ticket.AppendChildToRootNode(outer), S_OK);
    CComPtr<IXMLDOMNode> cdata;
    EXPECT_EQ(ticket.CreateCDATASectionXMLElement(L"<raw>", &cdata), S_OK);
    EXPECT_EQ(ticket.AppendChild(outer, cdata), S_OK);

    const Rows<const char*, const char*> cases{
        {"//psf:Feature/psf:Property[1]/@name", "ok:A"},
        {"//psf:Feature/psf:Property[1]/psf:Value", "-5"},
        {"//psf:Feature/psf:Property[1]/psf:Value/@xsi:type", "xsd:integer"},
        {"//psf:Feature/psf:Property[2]/@name", "psf:B"},
        {"//psf:Feature/psf:Property[2]/psf:Value", "a < b & \"c\""},
        {"//psf:Feature/psf:Property[2]/psf:Value/@xsi:type", "xsd:string"},
        {"//psf:ScoredProperty[@name='psk:C']/psf:Value", "7"},
        {"//psf:ScoredProperty[@name='psk:D']/psf:Value[@xsi:type='xsd:QName']", "psk:Paper"},
        {"//psf:ScoredProperty[@name='ok:E']/psf:ParameterRef/@name", "psk:F"},
        {"/*/psf:ScoredProperty[@name='psk:H']/psf:ScoredProperty[@name='psk:G']/psf:Value", "100.50"},
        {"/*/psf:ScoredProperty[@name='psk:H']/psf:ScoredProperty/psf:Value/@xsi:type", "xsd:decimal"},
        {"/*/psf:ScoredProperty[@name='psk:H']/text()", "<raw>"},
    };
    for (const auto& [xpath, found] : cases)
        EXPECT_EQ(OutsideView(ticket, xpath), found) << xpath;
}

TEST(PrintSchemaXmlDocument, TypedValuesFitIntoTicketsThatUseTheUsualPrefixesOtherwise) {
    const std::string schema = "http://www.w3.org/2001/XMLSchema";
    const Rows<std::string, std::string, const char*, const char*> cases{
        {"f", Declare("f", frameworkUri), "xsd:string", "xsd"},
        {"xsd", Declare("xsd", frameworkUri), "xsd1:string", "xsd1"},
        {"xsi", Declare("xsi", frameworkUri) + Declare("xsd", "urn:other") + Declare("xsd1", "urn:other"),
         "xsd2:string", "xsd2"},
        {"f", Declare("f", frameworkUri) + Declare("xsi", "urn:other") + Declare("xsi1", schema),
         "xsi1:string", "xsi1"},
    };
    for (const auto& [root, declarations, type, prefix] : cases) {
        SCOPED_TRACE(declarations);
        OpenTicket ticket("<" + root + ":PrintTicket" + declarations + "/>");
        EXPECT_EQ(ticket.AppendStringParameterInit(L"ok:", L"A", L"B"), S_OK);
        const std::string value = "/psf:PrintTicket/psf:ParameterInit[@name='ok:A']/psf:Value";
        EXPECT_EQ(OutsideView(ticket, value), "B");
        EXPECT_EQ(OutsideView(ticket, value + "/@xsi:type"), type);
        EXPECT_EQ(OutsideView(ticket, value + "/namespace::" + prefix), schema);
        EXPECT_NO_THROW(OpenTicket(XmlOf(ticket)));
    }
}

} // namespace
