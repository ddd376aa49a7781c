#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"

#include <PrintSchema/DomDocumentCache.h>

#include <set>

// Private names keep their namespace, whatever the prefixes of a document stand for: in the document they are
// written to, for an outside reader of its text, and for the library when it reads that text again.

namespace {

using Texts = std::multiset<std::string>;

const std::string other = "urn:other";
const std::string third = "urn:third";

// The local names that an outside reader finds in a namespace, by the scope that each name stands in.
Texts NamesIn(const std::string& xml, const std::string& uri) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> tree(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, "UTF-8", XML_PARSE_NONET),
        xmlFreeDoc);
    Texts names;
    const std::function<void(xmlNode*)> visit = [&](xmlNode* node) {
        for (; node != nullptr; node = node->next) {
            if (node->type != XML_ELEMENT_NODE) continue;
            const std::unique_ptr<xmlChar, void (*)(void*)> attribute(
                xmlGetProp(node, reinterpret_cast<const xmlChar*>("name")), xmlFree);
            const std::string name = attribute ? reinterpret_cast<const char*>(attribute.get()) : "";
            const std::size_t colon = name.find(':');
            if (colon != std::string::npos) {
                const xmlNs* const ns = xmlSearchNs(
                    tree.get(), node, reinterpret_cast<const xmlChar*>(name.substr(0, colon).c_str()));
                if (ns != nullptr && uri == reinterpret_cast<const char*>(ns->href))
                    names.insert(name.substr(colon + 1));
            }
            visit(node->children);
        }
    };
    if (tree) visit(xmlDocGetRootElement(tree.get()));
    return names;
}

const Texts everyName = {"JobOrvelOpifJobTicket",
                         "JobOrvelCompleteDocSettings",
                         "Feature",
                         "Option",
                         "Set",
                         "Property",
                         "Scored",
                         "Reference"};

// Every road by which a private name gets into a ticket, one name each; the first failure.
HRESULT WriteEveryName(OpenTicket& ticket) {
    const CComBSTR own = ticket.GetUserKeywordsNsPrefix();
    const std::function<HRESULT()> roads[] = {
        [&] { return ticket.AddOrReplaceOcptParameterInit(L"<a/>"); },
        [&] { return ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(ByteBuffer(1, 7)); },
        [&] { return ticket.SetFeatureOption(L"Plain", true, L"Set", false); },
        [&] {
            CComPtr<IXMLDOMElement> feature;
            CComPtr<IXMLDOMElement> option;
            ticket.CreateFeatureOptionPair(L"Feature", false, L"Option", false, &feature, &option);
            ticket.AppendChildStringProperty(feature, PrintSchema::UserKeywordsNs, L"Property", L"x");
            ticket.AppendChildParameterRefScoredProperty(option, L"ok:", L"Scored", own, L"Reference");
            return ticket.AppendChildToRootNode(feature);
        },
    };
    HRESULT first = S_OK;
    for (const auto& road : roads)
        if (const HRESULT hr = ResultOf(road); FAILED(hr) && first == S_OK) first = hr;
    return first;
}

void ExpectReadable(const OpenTicket& ticket) {
    for (const CComBSTR& prefix : {ticket.GetUserKeywordsNsPrefix(), CComBSTR(L"ok:")}) {
        CXString text;
        EXPECT_EQ(ticket.GetStringParameterInitValue(prefix, L"JobOrvelOpifJobTicket", text), S_OK);
        CComBSTR option;
        EXPECT_EQ(ticket.GetFeatureOption(prefix, L"Feature", &option, nullptr), S_OK);
        EXPECT_EQ(TextOf(option), "Option");
    }
    ByteBuffer bytes;
    EXPECT_EQ(ticket.GetOrvelCompleteDocSettingsFromPrintTicket(bytes), S_OK);
    EXPECT_EQ(bytes.size(), 1U);
    EXPECT_EQ(ticket.FeaturePresent(L"Feature", false, nullptr), S_OK);
}

// Names of somebody else, one of them like one of ours.
std::string ForeignNames(const std::string& prefix, const std::string& declaration = {}) {
    return "<psf:Feature" + declaration + " name='" + prefix + ":Feature'><psf:Option name='" + prefix +
           ":Theirs'/></psf:Feature><psf:ParameterInit" + declaration + " name='" + prefix +
           ":JobOrvelCompleteDocSettings'>" + Value("5") + "</psf:ParameterInit>";
}
const Texts foreignNames = {"Feature", "Theirs", "JobOrvelCompleteDocSettings"};

TEST(PrivateKeywordNames, KeepTheirNamespaceOrAreRefused) {
    const std::string plain = Feature("psk:Plain", "psk:A");
    const std::string ns0000 = Declare("ns0000", other);
    const std::string ok = Declare("ok", third);
    // atRoot: the prefixes that the root declares for private names, afterwards
    const Rows<const char*, std::string, std::string, HRESULT, const char*, Texts> cases{
        {"nothing declared", "", "", S_OK, "ns0000 ok", {}},
        {"ns0000 theirs", ns0000, ForeignNames("ns0000"), S_OK, "ok", foreignNames},
        {"ns0000 theirs below", "", ForeignNames("ns0000", ns0000), S_OK, "ns0000 ok", foreignNames},
        {"ok theirs", Declare("ok", other), ForeignNames("ok"), S_OK, "", foreignNames},
        {"ok theirs below", "", ForeignNames("ok", Declare("ok", other)), S_OK, "", foreignNames},
        {"both theirs", ns0000 + ok, ForeignNames("ns0000"), E_FAIL, "", foreignNames},
        {"ns0000 for public keywords", Declare("ns0000", keywordsV11Uri), "", S_OK, "ok", {}},
        {"declared otherwise", Declare("my", PrivateUri()) + ns0000, ForeignNames("ns0000"), S_OK, "ok",
         foreignNames},
    };
    for (const auto& [what, declarations, content, result, wantedAtRoot, foreign] : cases) {
        SCOPED_TRACE(what);
        OpenTicket ticket(Ticket(plain + content, declarations));
        const std::string before = XmlOf(ticket);
        EXPECT_EQ(WriteEveryName(ticket), result);
        const std::string written = XmlOf(ticket);
        EXPECT_EQ(NamesIn(written, other), foreign);
        if (FAILED(result)) {
            EXPECT_EQ(written, before);
            continue;
        }
        EXPECT_EQ(NamesIn(written, PrivateUri()), everyName);
        std::string atRoot;
        for (const char* const prefix : {"ns0000", "ok"})
            if (OutsideView(ticket, std::string("/*/namespace::") + prefix) == PrivateUri())
                atRoot += (atRoot.empty() ? "" : " ") + std::string(prefix);
        EXPECT_EQ(atRoot, wantedAtRoot);
        const OpenTicket fresh(written);
        EXPECT_EQ(NamesIn(XmlOf(fresh), PrivateUri()), everyName);
        EXPECT_EQ(NamesIn(XmlOf(fresh), other), foreign);
        for (const OpenTicket* const each : {const_cast<const OpenTicket*>(&ticket), &fresh})
            ExpectReadable(*each);
        // The names of others stay, also when ours go.
        EXPECT_EQ(ticket.DeleteOcptParameterInitIfExists(), S_OK);
        EXPECT_EQ(ticket.DeleteFeatureNodeIfExists(ticket.GetUserKeywordsNsPrefix(), L"Feature"), S_OK);
        EXPECT_EQ(ticket.DeleteFeatureNodeIfExists(ticket.GetUserKeywordsNsPrefix(), L"Feature"), S_FALSE);
        EXPECT_EQ(NamesIn(XmlOf(ticket), other), foreign);
    }
}

TEST(PrivateKeywordNames, AreRenamedWhereTheyStandOrRefused) {
    const std::string my = Declare("my", PrivateUri());
    const Rows<const char*, std::string, bool, Texts> cases{
        {"ok theirs around a private name",
         Ticket("<psf:Feature name='psk:A'" + Declare("ok", other) +
                    "><psf:Option name='my:B'/></psf:Feature>",
                my),
         false,
         {}},
        {"their name under ok below", Ticket(ForeignNames("ok", Declare("ok", other)), my), false, {}},
        {"ok theirs below without a name",
         Ticket("<psf:Feature name='psk:A'" + Declare("ok", other) + "/>" + Feature("my:A", "my:B"), my),
         true,
         {"A", "B"}},
        {"our prefix theirs below",
         Ticket(Feature("my:A", "my:B") + ForeignNames("my", Declare("my", other)), my),
         true,
         {"A", "B"}},
        {"another prefix below",
         Ticket("<psf:Feature name='p:A'" + Declare("p", PrivateUri()) + "/>", my),
         true,
         {"A"}},
        {"two prefixes, the usual one first",
         Ticket(Feature("ok:A", "p:B"), Declare("ok", PrivateUri()) + Declare("p", PrivateUri())),
         true,
         {"A", "B"}},
        {"names that are none",
         Ticket(Feature(":A", ":") + Feature("A", "my:") + Feature(" ", "my:my:B"), my),
         true,
         {"", "ok:B"}},
    };
    for (const auto& [what, xml, isRead, names] : cases) {
        SCOPED_TRACE(what);
        CComPtr<IXMLDOMDocument2> raw;
        ASSERT_EQ(CreateIXMLDOMDocumentFromIStream(StreamOf(xml), &raw), S_OK);
        CComBSTR before;
        raw->get_xml(&before);
        const auto read = [&, &names = names] {
            const PrintTicketXmlDocument ticket(raw);
            EXPECT_EQ(NamesIn(XmlOf(ticket), PrivateUri()), names);
            for (const std::string& name : NamesIn(XmlOf(ticket), PrivateUri()))
                EXPECT_NE(XmlOf(ticket).find("\"ok:" + name + "\""), std::string::npos) << name;
            return S_OK;
        };
        EXPECT_EQ(ResultOf(read), isRead ? S_OK : E_FAIL);
        if (isRead) continue;
        CComBSTR after;
        raw->get_xml(&after);
        EXPECT_EQ(TextOf(after), TextOf(before));
    }
}

// A place where the prefix is somebody else's takes no private name.
TEST(PrivateKeywordNames, AreNotPutWhereTheyWouldBeTheirs) {
    const std::string inside =
        "<psf:Feature name='psk:Plain'" + Declare("ok", other) + "><psf:Option name='psk:A'/></psf:Feature>";
    OpenTicket ticket(Ticket(inside, Declare("ok", PrivateUri())));
    const std::string before = XmlOf(ticket);
    EXPECT_EQ(ResultOf([&] { return ticket.SetFeatureOption(L"Plain", true, L"Own", false); }), E_FAIL);
    CComPtr<IXMLDOMNode> feature;
    ASSERT_EQ(ticket.FeaturePresent(L"Plain", true, &feature), S_OK);
    EXPECT_EQ(ResultOf([&] {
                  return ticket.AppendChildStringProperty(feature, PrintSchema::UserKeywordsNs, L"Own", L"x");
              }),
              E_FAIL);
    EXPECT_EQ(XmlOf(ticket), before);
    EXPECT_EQ(ticket.AppendChildStringProperty(feature, PrintSchema::KeywordsNs, L"Public", L"x"), S_OK);

    // Nor is the namespace declared where it would claim their names.
    OpenTicket undeclared(Ticket(ForeignNames("ok", Declare("ok", other))));
    EXPECT_EQ(undeclared.AddUserKeywordsNamespaceDefinitionIfMissing(), E_FAIL);
    EXPECT_EQ(OutsideView(undeclared, "count(/*/namespace::ok)"), "0");
}

// Whatever the prefix means at the root, and whoever stands first.
TEST(PrivateKeywordNames, AreFoundByTheirNamespace) {
    const std::string mine = Declare("ns0000", PrivateUri());
    const std::string theirs = Declare("ns0000", other);
    const auto names = [](const std::string& declaration, const std::string& option, const char* number) {
        return "<psf:Feature" + declaration +
               " name='ns0000:A'><psf:Feature name='ns0000:B'><psf:Option name='" + option + "'>" +
               ScoredProperty("psk:Number", "<psf:ParameterRef name='ns0000:P'/>") +
               "</psf:Option></psf:Feature></psf:Feature><psf:ParameterInit" + declaration +
               " name='ns0000:P'>" + Value(number) + "</psf:ParameterInit>";
    };
    const std::string foreign = names(theirs, "psk:Theirs", "1");
    const std::string own = names(mine, "psk:Own", "2");
    const std::string undeclared = names("", "psk:Own", "2");
    for (const std::string& content : {foreign + own, own + foreign, foreign + undeclared}) {
        SCOPED_TRACE(content);
        OpenTicket ticket(Ticket(content, Declare("p", third)));
        CComBSTR option;
        EXPECT_EQ(ticket.GetSubFeatureOption(L"A", false, L"B", false, &option), S_OK);
        EXPECT_EQ(TextOf(option), "Own");
        int number = 0;
        EXPECT_EQ(ticket.GetScoredPropertyValue(L"A", false, L"Number", &number), S_OK);
        EXPECT_EQ(number, 2);
        EXPECT_EQ(ticket.SetScoredPropertyValue(L"A", false, L"Number", 3), S_OK);
        EXPECT_EQ(ticket.SetFeatureOption(L"B", false, L"Set", true), S_OK);
        EXPECT_EQ(OutsideView(ticket, "concat(//*[@name='psk:Set']/../../@name, //*[@name='psk:Theirs'], "
                                      "count(//*[@name='psk:Own']))"),
                  "ns0000:A0");
        EXPECT_EQ(ticket.GetScoredPropertyValue(L"A", false, L"Number", &number), S_OK);
        EXPECT_EQ(number, 3);
    }
}

// Also those below, under another prefix than the root gives; and never those of others.
TEST(PrivateKeywordNames, AreDeletedByTheirNamespace) {
    const std::string foreign = ForeignNames("ok", Declare("ok", other));
    OpenTicket ticket(Ticket(foreign + ForeignNames("ns0000", Declare("ns0000", other))));
    EXPECT_EQ(ticket.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI), S_FALSE);
    CComPtr<IXMLDOMElement> feature;
    CComPtr<IXMLDOMElement> option;
    ticket.CreateFeatureOptionPair(L"A", false, L"A", true, &feature, &option);
    ticket.AppendChildToRootNode(feature);
    EXPECT_EQ(ticket.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI), S_OK);
    EXPECT_EQ(NamesIn(XmlOf(ticket), PrivateUri()), Texts{});
    EXPECT_EQ(NamesIn(XmlOf(ticket), other).size(), 2 * foreignNames.size());

    OpenTicket two(Ticket(Feature("ns0000:A", "psk:A") + Feature("ok:B", "psk:B"), Declare("p", other)));
    ASSERT_EQ(two.AddOrReplaceOcptParameterInit(L"<a/>"), S_OK); // declares both prefixes
    EXPECT_EQ(two.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI), S_OK);
    EXPECT_EQ(OutsideView(two, "count(//psf:Feature)"), "0");
}

TEST(PrivateKeywordNames, AreNoPublicOnesThatHaveTheSamePrefix) {
    const auto keywordsAreOk = [](const std::string& declarations) {
        return "<psf:PrintTicket" + Declare("psf", frameworkUri) + Declare("ok", keywordsUri) + declarations +
               ">" + Feature("ok:PageMediaType", "ok:Plain") + "</psf:PrintTicket>";
    };
    OpenTicket ticket(keywordsAreOk(""));
    EXPECT_EQ(ticket.SetFeatureOption(L"PageMediaType", true, L"Bond", true), S_OK);
    CComBSTR option;
    EXPECT_EQ(ticket.GetFeatureOption(L"ok:", L"PageMediaType", &option, nullptr), S_OK);
    EXPECT_EQ(TextOf(option), "Bond");
    EXPECT_EQ(NamesIn(XmlOf(ticket), keywordsUri), (Texts{"PageMediaType", "Bond"}));

    OpenTicket both(keywordsAreOk(Declare("ns0000", keywordsV11Uri)));
    const std::string before = XmlOf(both);
    EXPECT_EQ(ResultOf([&] { return both.SetFeatureOption(L"PageMediaType", true, L"Own", false); }), E_FAIL);
    EXPECT_EQ(ResultOf([&] { return both.AddOrReplaceOcptParameterInit(L"<a/>"); }), E_FAIL);
    EXPECT_EQ(both.FeaturePresent(L"PageMediaType", false, nullptr), E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(XmlOf(both), before);
}

} // namespace
