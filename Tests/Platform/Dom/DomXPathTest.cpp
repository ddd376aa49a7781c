#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

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
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index) {
        threads.emplace_back([] {
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

} // namespace
