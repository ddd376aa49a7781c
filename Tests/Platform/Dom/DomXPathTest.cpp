#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

#include <random>
#include <thread>

namespace {

const char* const ticket = "<psf:PrintTicket xmlns:psf='urn:f' version='1'>"
                           "<psf:Feature name='psk:A'><psf:Option name='psk:A1'/>"
                           "<psf:Feature name='psk:B'><psf:Option name='psk:B1'/></psf:Feature></psf:Feature>"
                           "<psf:Feature name='psk:A'><psf:Option name='psk:A2'/></psf:Feature>"
                           "<psf:ParameterInit name='psk:P'><psf:Value>7</psf:Value></psf:ParameterInit>"
                           "<other>x</other></psf:PrintTicket>";

CComPtr<IXMLDOMDocument2> TicketDocument() {
    auto document = Parsed(ticket);
    SelectWith(document, "xmlns:psf='urn:f'");
    return document;
}

std::string NamesSelected(IXMLDOMNode* node, std::string_view query) {
    CComPtr<IXMLDOMNodeList> list;
    const HRESULT result = node->selectNodes(Wide(query), &list);
    if (result != S_OK) return "failed";
    std::string names;
    CComPtr<IXMLDOMNode> item;
    while (list->nextNode(&item) == S_OK) {
        CComQIPtr<IXMLDOMElement> element(item.p);
        CComVariant name;
        if (element) element->getAttribute(CComBSTR(L"name"), &name);
        names += (names.empty() ? "" : " ") + (name.vt == VT_BSTR ? Narrow(name.bstrVal) : NameOf(item));
        item.Release();
    }
    return names;
}

TEST(DomXPath, SelectsInDocumentOrder) {
    auto document = TicketDocument();
    const Rows<const char*, const char*> cases{
        {"//psf:Feature", "psk:A psk:B psk:A"},
        {"//psf:Feature[@name = \"psk:A\"]/psf:Option", "psk:A1 psk:A2"},
        {"//psf:Feature[@name = \"psk:A\"]//psf:Option", "psk:A1 psk:B1 psk:A2"},
        {"//psf:ParameterInit | //psf:Feature", "psk:A psk:B psk:A psk:P"},
        {"//*[@name='psk:P']/psf:Value/text()", "#text"},
        {"//other", "other"},
        {"//Feature", ""},
        {"/psf:PrintTicket/@*", "version"},
        {"//namespace::*", ""},
        {"//psf:Feature[2]", "psk:A"},
        {"(//psf:Feature)[2]", "psk:B"},
        {"1 + 1", "failed"},
        {"//psf:Feature[", "failed"},
        {"//nope:Feature", "failed"},
    };
    for (int round = 0; round < 2; ++round) // compiled, then remembered
        for (const auto& [query, names] : cases)
            EXPECT_EQ(names, NamesSelected(document, query)) << query;
    EXPECT_EQ("psk:B1", NamesSelected(First(document, "//psf:Feature"), "psf:Feature/psf:Option"));
}

TEST(DomXPath, SaysWhatItFound) {
    auto document = TicketDocument();
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(S_FALSE, document->selectSingleNode(Wide("//psf:Nothing"), &node));
    EXPECT_EQ(nullptr, node.p);
    EXPECT_EQ(E_FAIL, document->selectSingleNode(Wide("//nope:Feature"), &node));
    CComPtr<IErrorInfo> info;
    EXPECT_EQ(S_OK, ::GetErrorInfo(0, &info));
    const std::string reason = Narrow(Got(info, &IErrorInfo::GetDescription));
    EXPECT_NE(std::string::npos, reason.find("prefix")) << reason;
    EXPECT_EQ(E_INVALIDARG, document->selectSingleNode(nullptr, &node));
    EXPECT_EQ(E_INVALIDARG, document->selectSingleNode(Wide("/"), nullptr));
    EXPECT_EQ(E_INVALIDARG, document->selectNodes(nullptr, nullptr));
}

TEST(DomXPath, ResolvesPrefixesByTheDocumentsOwnSetting) {
    auto first = Parsed("<a xmlns='urn:1'/>");
    auto second = Parsed("<a xmlns='urn:2'/>");
    SelectWith(first, "xmlns:p='urn:1'");
    SelectWith(second, "xmlns:q='urn:1' xmlns:p=\"urn:2\"");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(First(first, "/p:a"));
        EXPECT_TRUE(First(second, "/p:a"));
    }
    SelectWith(first, "xmlns='urn:1'");
    EXPECT_FALSE(First(first, "/a")) << "a default namespace is for no step";
    EXPECT_EQ("failed", NamesSelected(first, "/p:a"));
}

TEST(DomXPath, AListIsAsItWasWhenSelected) {
    auto document = TicketDocument();
    auto list = Got(document, &IXMLDOMNode::selectNodes, Wide("//psf:Feature"));
    EXPECT_EQ(S_OK, RootOf(document)->removeChild(Got(list, &IXMLDOMNodeList::get_item, 0), nullptr));
    document.Release();

    // The removed node, its inner feature and the other are still there.
    EXPECT_EQ(3, Got(list, &IXMLDOMNodeList::get_length));
    for (LONG index = 0; index < 3; ++index)
        EXPECT_EQ("psf:Feature", NameOf(Got(list, &IXMLDOMNodeList::get_item, index)));
    const auto next = Got(list, &IXMLDOMNodeList::nextNode);
    EXPECT_EQ(S_OK, list->reset());
    EXPECT_EQ(next.p, Got(list, &IXMLDOMNodeList::nextNode).p);
    CComPtr<IXMLDOMNode> behind;
    EXPECT_EQ(S_FALSE, list->get_item(3, &behind));
}

// More queries than are remembered, and each thread its own.
TEST(DomXPath, ForgetsOldQueriesAndRunsOnSeveralThreads) {
    std::vector<std::thread> threads(4);
    for (std::thread& thread : threads) {
        thread = std::thread([] {
            ASSERT_EQ(S_OK, ::CoInitializeEx(nullptr, COINIT_MULTITHREADED));
            auto document = TicketDocument();
            for (int number = 0; number < 600; ++number) {
                EXPECT_FALSE(First(document, "//psf:Feature[@name = '" + std::to_string(number) + "']"));
                EXPECT_TRUE(First(document, "//psf:Feature[@name = 'psk:B']"));
            }
            document.Release();
            ::CoUninitialize();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

// Paths of elements are answered without the evaluator, and those that begin with a named one out of a table
// that is kept through changes. In brackets they are not: both must say the same, whatever was changed in
// between.
class NamedQueries : public testing::Test {
protected:
    // The same nodes: a list shows them by their text.
    std::string Selected(const std::string& query) { return SelectedFrom(m_document, query); }
    static std::string SelectedFrom(IXMLDOMNode* node, const std::string& query) {
        CComPtr<IXMLDOMNodeList> list;
        if (node->selectNodes(Wide(query), &list) != S_OK) return "failed";
        const CComPtr<IXMLDOMNode> first = First(node, query);
        std::string nodes;
        CComPtr<IXMLDOMNode> item;
        while (list->nextNode(&item) == S_OK) {
            EXPECT_TRUE(!nodes.empty() || first.p == item.p) << query;
            CComBSTR text;
            item->get_xml(&text);
            nodes += Narrow(text) + "\n";
            item.Release();
        }
        EXPECT_EQ(nodes.empty(), !first) << query;
        return nodes;
    }
    void Compare(const char* when) {
        static const char* const queries[] = {
            "//p:F[@name = \"a:1\"]",
            "//p:F[@name='a:1']/p:O",
            "//p:F[@name = \"a:2\"]//p:S[ @name = \"w\" ]",
            "//F[@name = \"a:1\"]",
            "//p:F[@name = \"\"]",
            "//q:F[@name = \"a:1\"]/F",
            "//p:F[@name = \"none\"]",
            "//p:F[@name = \"a:2\"]",
            "//p:F[@name = \"a:2\"]/p:O/p:S",
            "//p:F",
            "/p:T/p:F//p:O",
            "//p:F//p:S[@name='w']",
            "//F/q:F",
            "//p:F[@name = 'none']/p:O | //p:O",
            "//p:F[@name = '\xC3\xA4']",
            "//p:F[@names = 'a:1']",
        };
        for (const std::string query : queries)
            ASSERT_EQ(Selected(query), Selected("(" + query + ")")) << query << " " << when;
        const CComPtr<IXMLDOMElement> element = AnyElement();
        for (const std::string query : {"p:F", "p:O/p:S", "./p:F/p:O", ".//p:F[@name=\"a:1\"]", "F"})
            ASSERT_EQ(SelectedFrom(element, query), SelectedFrom(element, "(" + query + ")"))
                << query << " " << when;
    }
    CComPtr<IXMLDOMElement> AnyElement() {
        CComPtr<IXMLDOMNodeList> all;
        m_document->selectNodes(Wide("//*"), &all);
        LONG count = 0;
        all->get_length(&count);
        CComPtr<IXMLDOMNode> node;
        all->get_item(static_cast<LONG>(m_random() % static_cast<unsigned>(count)), &node);
        return CComQIPtr<IXMLDOMElement>(node).p;
    }
    static std::string Crowd(std::size_t count) {
        std::string crowd = "<p:F xmlns:p='urn:p' name='a:1'>";
        for (std::size_t i = 0; i < count; ++i)
            crowd += "<p:O name='w'/>";
        return crowd + "<p:F name='a:2'/></p:F>";
    }
    CComPtr<IXMLDOMElement> NewElement() {
        static const char* const names[] = {"p:F", "p:F", "p:O", "p:S", "F", "q:F"};
        const std::string name = names[m_random() % std::size(names)];
        CComPtr<IXMLDOMNode> node;
        m_document->createNode(CComVariant(NODE_ELEMENT), Wide(name),
                               Wide(name[0] == 'p'   ? "urn:p"
                                    : name[0] == 'q' ? "urn:q"
                                                     : ""),
                               &node);
        return CComQIPtr<IXMLDOMElement>(node).p;
    }
    void Edit() {
        static const char* const values[] = {"a:1", "a:2", "w", "", "none", "\xC3\xA4"};
        const CComPtr<IXMLDOMElement> element = AnyElement();
        const CComVariant value(Wide(values[m_random() % std::size(values)]));
        CComPtr<IXMLDOMAttribute> attribute;
        CComPtr<IXMLDOMNode> other;
        CComPtr<IXMLDOMNode> out;
        CComPtr<IXMLDOMText> half;
        switch (m_random() % 15) {
        case 0:
            element->setAttribute(Wide("name"), value);
            break;
        case 1:
            element->removeAttribute(Wide("name"));
            break;
        case 2: // by the attribute, and by its text
            element->getAttributeNode(Wide("name"), &attribute);
            if (attribute) attribute->put_nodeValue(value);
            break;
        case 3:
            element->getAttributeNode(Wide("name"), &attribute);
            if (attribute) attribute->get_firstChild(&other);
            if (other) other->put_nodeValue(value);
            break;
        case 4:
        case 5:
            element->appendChild(NewElement(), &out);
            break;
        case 6: // in several texts, of which one may go
            element->getAttributeNode(Wide("name"), &attribute);
            if (attribute) attribute->get_firstChild(&other);
            if (const CComQIPtr<IXMLDOMText> text(other.p); text) text->splitText(1, &half);
            if (half && m_random() % 2 == 0) attribute->removeChild(half, &out);
            break;
        case 7:
            element->setAttributeNode(NewAttribute(m_document, "name", "", Narrow(value.bstrVal)), nullptr);
            break;
        case 8:
            element->setAttribute(Wide(m_random() % 2 == 0 ? "xmlns:p" : "xmlns"), Value("urn:q"));
            break;
        case 9:
            element->get_parentNode(&other);
            other->insertBefore(AnyElement(), CComVariant(element.p), &out);
            break;
        case 10:
            element->get_parentNode(&other);
            if (!(other == m_document)) other->replaceChild(NewElement(), element, &out);
            break;
        case 11: // of somebody else, and with more in it than is looked through
            element->appendChild(First(Parsed(Crowd(m_random() % 100)), "/*"), &out);
            break;
        case 12:
            element->get_firstChild(&other);
            if (other) element->removeChild(other, &out);
            break;
        case 13: // through a fragment, and with a name that is none
            m_document->createDocumentFragment(reinterpret_cast<IXMLDOMDocumentFragment**>(&other));
            other->appendChild(NewElement(), &out);
            element->setAttributeNode(NewAttribute(m_document, "p:name", "urn:p", "a:1"), nullptr);
            element->appendChild(other, nullptr);
            break;
        default: // to another place
            element->appendChild(AnyElement(), &out);
            break;
        }
    }

    CComPtr<IXMLDOMDocument2> m_document;
    std::mt19937 m_random{7};
};

TEST_F(NamedQueries, SelectWhatTheEvaluatorSelects) {
    for (int document = 0; document < 12; ++document) {
        m_document = Parsed(
            "<p:T xmlns:p='urn:p' xmlns:q='urn:q'><p:F name='a:1'><p:O/><p:F name='a:2'><p:O><p:S name='w'/>"
            "</p:O></p:F></p:F><F name='a:1'/><q:F name='a:1'><F/></q:F><p:F name=''/></p:T>");
        SelectWith(m_document, "xmlns:p='urn:p' xmlns:q='urn:q'");
        Compare("at the start");
        for (int edit = 0; edit < 40 && !HasFatalFailure(); ++edit) {
            Edit();
            Compare("after an edit");
        }
    }
}

// Changes that are not followed one by one, and what stands far from what it is in.
TEST_F(NamedQueries, SelectSoInDeepAndLargePiecesAndAfterManyChanges) {
    constexpr int deep = 80;
    std::string begin = "<p:T xmlns:p='urn:p' xmlns:q='urn:q'><p:F name='a:1'>", end = "</p:F></p:T>";
    for (int level = 0; level < deep; ++level) {
        begin += "<p:O>";
        end.insert(0, "</p:O>");
    }
    m_document = Parsed(begin + "<p:F name='a:2'><p:O><p:S name='w'/></p:O></p:F>" + end);
    SelectWith(m_document, "xmlns:p='urn:p' xmlns:q='urn:q'");
    Compare("at the start");
    const auto inner = CComQIPtr<IXMLDOMElement>(First(m_document, "//p:F//p:F").p);
    EXPECT_EQ(S_OK, inner->setAttribute(Wide("name"), Value("a:1")));
    Compare("after a deep change");
    EXPECT_EQ(S_OK, RootOf(m_document)->appendChild(First(Parsed(Crowd(deep)), "/*"), nullptr));
    EXPECT_NE("", Selected("//p:F[@name = 'a:2']")) << "the last one in it";
    Compare("after a large piece came");

    m_document =
        Parsed("<p:T xmlns:p='urn:p' xmlns:q='urn:q'><p:F id='1' name='a:1'/><p:F id='2' name='a:1'/>"
               "<p:F id='3' name='a:1'/></p:T>");
    SelectWith(m_document, "xmlns:p='urn:p' xmlns:q='urn:q'");
    for (int round = 0; round < 8; ++round) {
        for (const char* each : {"//p:F[@id='3']", "//p:F[@id='2']", "//p:F[@id='1']"})
            for (const char* name : {"a:2", "a:1"})
                CComQIPtr<IXMLDOMElement>(First(m_document, each).p)->setAttribute(Wide("name"), Value(name));
        if (round % 3 == 0) Compare("after names changed");
    }
}

TEST_F(NamedQueries, FailAsTheEvaluatorDoes) {
    m_document = Parsed("<p:T xmlns:p='urn:p'><p:F name='a:1'><p:O/></p:F></p:T>");
    SelectWith(m_document, "xmlns:p='urn:p'");
    for (int time = 0; time < 4; ++time) {
        EXPECT_EQ(Selected("//x:F[@name = \"a:1\"]"), "failed");
        EXPECT_EQ(Selected("//p:F[@name = \"none\"]/x:O"), "failed");
        EXPECT_EQ(Selected("//p:F[@name = \"a:1\"]/"), "failed");
        EXPECT_EQ(Selected("//:F[@name = \"a:1\"]"), "failed");
        EXPECT_EQ(Selected("//p:F[@name = \"a:1]"), "failed");
        EXPECT_NE(Selected("//p:F[@name = \"a:1\"]"), "");
    }
}

} // namespace
