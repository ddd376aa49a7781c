#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

namespace {

CComPtr<IXMLDOMNamedNodeMap> MapOf(IXMLDOMNode* element) {
    return Got(element, &IXMLDOMNode::get_attributes);
}

TEST(DomAttributes, StandWithDeclarationsInSourceOrder) {
    const Rows<const char*, const char*> cases{
        {"<a xmlns='urn:d' xmlns:p='urn:p' x='1'/>", "xmlns=urn:d xmlns:p=urn:p x=1"},
        {"<a x='1' xmlns:p='urn:p' y='2' xmlns='urn:d' p:z='3'/>", "x=1 xmlns:p=urn:p y=2 xmlns=urn:d p:z=3"},
        {"<a\n x = \"xmlns:q='1'\"\n\txmlns:p\n=\n'urn:&lt;p'\ny='>'/>", "x=xmlns:q='1' xmlns:p=urn:<p y=>"},
        {"<a xmlns:xml='http://www.w3.org/XML/1998/namespace' x='1' xmlns:p='u'/>", "x=1 xmlns:p=u"},
    };
    for (const auto& [xml, attributes] : cases) {
        auto document = Parsed(xml);
        EXPECT_EQ(attributes, AttributesOf(RootOf(document))) << xml;
        EXPECT_EQ(attributes, AttributesOf(RootOf(Parsed(XmlOf(document))))) << xml;
        auto clone = NewDocument();
        EXPECT_EQ(S_OK, Load(clone, CComVariant(static_cast<IUnknown*>(document.p))));
        EXPECT_EQ(attributes, AttributesOf(RootOf(clone))) << xml;
        auto copy = Got(RootOf(document), &IXMLDOMNode::cloneNode, VARIANT_TRUE);
        EXPECT_EQ(attributes, AttributesOf(copy)) << xml;
    }
    // Of an inner element, in text that is converted from another encoding.
    auto document = NewDocument();
    EXPECT_EQ(S_OK, Load(document, Bytes("<?xml version='1.0' encoding='ISO-8859-1'?>"
                                         "<r><a x='\xFC' xmlns:p='u' y='2'/></r>")));
    EXPECT_EQ("x=\xC3\xBC xmlns:p=u y=2", AttributesOf(First(document, "/r/a")));
}

TEST(DomAttributes, RenameAPrefixAsTicketsNeedIt) {
    auto document = Parsed("<p:a xmlns:p='urn:p' v='1' xmlns:n0='urn:own' w='2'><p:b name='n0:x'/></p:a>");
    auto root = RootOf(document);
    auto added = NewAttribute(document, "xmlns:ok", "", "urn:own");
    EXPECT_EQ(S_OK, root->setAttributeNode(added, nullptr));
    EXPECT_EQ("xmlns:p=urn:p v=1 xmlns:n0=urn:own w=2 xmlns:ok=urn:own", AttributesOf(root));

    const auto removed = Got(MapOf(root), &IXMLDOMNamedNodeMap::removeNamedItem, CComBSTR(L"xmlns:n0"));
    EXPECT_EQ("xmlns:n0", NameOf(removed));
    EXPECT_EQ("urn:own", TextOf(removed));
    EXPECT_EQ(S_FALSE, MapOf(root)->removeNamedItem(CComBSTR(L"xmlns:n0"), nullptr));
    EXPECT_EQ(E_INVALIDARG, MapOf(root)->removeNamedItem(nullptr, nullptr));
    EXPECT_EQ("<p:a xmlns:p=\"urn:p\" v=\"1\" w=\"2\" xmlns:ok=\"urn:own\"><p:b name=\"n0:x\"/></p:a>",
              XmlOf(root));

    // The attribute that was set is the one that stands there now.
    EXPECT_EQ(S_OK, added->put_value(Value("urn:other")));
    EXPECT_EQ("xmlns:p=urn:p v=1 w=2 xmlns:ok=urn:other", AttributesOf(root));
}

TEST(DomAttributes, ADeclarationThatGoesLeavesNodesInTheirNamespace) {
    auto document = Parsed("<p:a xmlns:p='urn:p'><p:b p:x='1'/></p:a>");
    const auto removed =
        Got(MapOf(RootOf(document)), &IXMLDOMNamedNodeMap::removeNamedItem, CComBSTR(L"xmlns:p"));
    EXPECT_EQ("", AttributesOf(RootOf(document)));
    EXPECT_EQ("<p:a xmlns:p=\"urn:p\"><p:b p:x=\"1\"/></p:a>", XmlOf(RootOf(document)));
    SelectWith(document, "xmlns:q='urn:p'");
    EXPECT_TRUE(First(document, "/q:a/q:b[@q:x='1']"));

    // It may come back, on another element too.
    auto other = NewElement(document, "c");
    EXPECT_EQ(S_OK, MapOf(other)->setNamedItem(removed, nullptr));
    EXPECT_EQ("<c xmlns:p=\"urn:p\"/>", XmlOf(other));
    EXPECT_EQ(E_FAIL, MapOf(RootOf(document))->setNamedItem(removed, nullptr)) << "another element has it";
}

TEST(DomAttributes, MustNotContradictTheNamesInUse) {
    auto document = Parsed("<p:a xmlns:p='urn:p' xmlns:q='urn:q' q:x='1'><b/></p:a>");
    auto root = RootOf(document);
    const Rows<const wchar_t*, const char*, HRESULT> cases{
        {L"xmlns:p", "urn:z", E_INVALIDARG},
        {L"xmlns:q", "urn:z", E_INVALIDARG},
        {L"xmlns:xml", "urn:z", E_INVALIDARG},
        {L"xmlns:r", "", E_INVALIDARG},
        {L"z:y", "1", E_FAIL}, // no such prefix
        {L"a b", "1", E_FAIL},
        {nullptr, "1", E_INVALIDARG},
    };
    for (const auto& [name, value, result] : cases)
        EXPECT_EQ(result, root->setAttribute(CComBSTR(name), Value(value))) << value;
    EXPECT_EQ(E_INVALIDARG, root->setAttributeNode(NewAttribute(document, "xmlns:p", "", "urn:z"), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->setAttributeNode(NewAttribute(document, "q:y", "urn:z", "1"), nullptr));
    EXPECT_EQ("xmlns:p=urn:p xmlns:q=urn:q q:x=1", AttributesOf(root));

    EXPECT_EQ(S_OK, root->setAttribute(CComBSTR(L"q:y"), Value("2"))) << "a prefix in scope";
    EXPECT_EQ(S_OK, root->setAttribute(CComBSTR(L"xml:space"), Value("preserve")));
    const CComQIPtr<IXMLDOMElement> inner(First(document, "//b"));
    EXPECT_EQ(S_OK, inner->setAttribute(CComBSTR(L"xmlns:p"), Value("urn:other")));
    EXPECT_EQ("<p:a xmlns:p=\"urn:p\" xmlns:q=\"urn:q\" q:x=\"1\" q:y=\"2\" xml:space=\"preserve\">"
              "<b xmlns:p=\"urn:other\"/></p:a>",
              XmlOf(root));
    auto same = RootOf(Parsed("<a xmlns:p='urn:p' xmlns:q='urn:p' p:x='1' y='2'/>"));
    EXPECT_EQ(S_OK, same->setAttribute(CComBSTR(L"q:x"), Value("3")));
    EXPECT_EQ("xmlns:p=urn:p xmlns:q=urn:p q:x=3 y=2", AttributesOf(same)) << "one attribute of a name";
}

TEST(DomAttributes, AnswerForTheirNames) {
    auto document = Parsed("<p:a xmlns='urn:d' xmlns:p='urn:p' p:x='1' y='2'/>");
    const auto map = MapOf(RootOf(document));
    const Rows<const char*, const char*, const char*, const char*> cases{
        {"xmlns", "xmlns", "", "http://www.w3.org/2000/xmlns/"},
        {"xmlns:p", "p", "xmlns", "http://www.w3.org/2000/xmlns/"},
        {"p:x", "x", "p", "urn:p"},
        {"y", "y", "", ""},
    };
    for (const auto& [name, wantedBase, wantedPrefix, wantedUri] : cases) {
        const auto node = Got(map, &IXMLDOMNamedNodeMap::getNamedItem, Wide(name));
        const auto base = Got(node, &IXMLDOMNode::get_baseName);
        CComBSTR prefix, uri;
        EXPECT_EQ(*wantedPrefix ? S_OK : S_FALSE, node->get_prefix(&prefix)) << name;
        EXPECT_EQ(*wantedUri ? S_OK : S_FALSE, node->get_namespaceURI(&uri)) << name;
        EXPECT_EQ(wantedBase, Narrow(base));
        EXPECT_EQ(wantedPrefix, Narrow(prefix));
        EXPECT_EQ(wantedUri, Narrow(uri));
        EXPECT_TRUE(node.IsEqualObject(Got(map, &IXMLDOMNamedNodeMap::getQualifiedItem, base, uri))) << name;
        CComPtr<IXMLDOMNode> parent;
        EXPECT_EQ(S_FALSE, node->get_parentNode(&parent));
    }
    CComVariant value;
    EXPECT_EQ(S_FALSE, RootOf(document)->getAttribute(CComBSTR(L"x"), &value));
    EXPECT_EQ(VT_NULL, value.vt);
    EXPECT_EQ(E_FAIL, RootOf(document)->getAttribute(CComBSTR(L"x y"), &value)) << "no name at all";
    EXPECT_EQ(E_INVALIDARG, RootOf(document)->getAttribute(nullptr, &value));
    EXPECT_EQ(E_INVALIDARG, RootOf(document)->getAttribute(CComBSTR(L"x"), nullptr));
}

TEST(DomAttributes, AReplacedAttributeIsGivenBackAndItsPlaceKept) {
    auto document = Parsed("<a x='1' xmlns:p='urn:p' y='2' z='3'/>");
    auto root = RootOf(document);
    const auto replaced = [&](const char* name, const char* value) {
        return TextOf(Got(root, &IXMLDOMElement::setAttributeNode, NewAttribute(document, name, "", value)));
    };
    EXPECT_EQ("2", replaced("y", "9"));
    EXPECT_EQ("urn:p", replaced("xmlns:p", "urn:q"));
    EXPECT_EQ("x=1 xmlns:p=urn:q y=9 z=3", AttributesOf(root));
    EXPECT_EQ(S_OK, root->removeAttribute(CComBSTR(L"x")));
    EXPECT_EQ(S_FALSE, root->removeAttribute(CComBSTR(L"x")));
    auto z = Got(root, &IXMLDOMElement::getAttributeNode, CComBSTR(L"z"));
    EXPECT_EQ(S_OK, root->removeAttributeNode(z, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->removeAttributeNode(z, nullptr));
    EXPECT_EQ("xmlns:p=urn:q y=9", AttributesOf(root));
}

TEST(DomAttributes, AMapSeesChangesWhileItIsWalked) {
    auto document = Parsed("<a v='0' w='1' x='2' y='3'/>");
    auto map = MapOf(RootOf(document));
    const auto next = [&] { return NameOf(Got(map, &IXMLDOMNamedNodeMap::nextNode)); };
    EXPECT_EQ("v", next());
    EXPECT_EQ("w", next());
    EXPECT_EQ(S_OK, map->removeNamedItem(CComBSTR(L"x"), nullptr));
    EXPECT_EQ("y", next());
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(S_FALSE, map->nextNode(&node));
    EXPECT_EQ(S_OK, map->reset());
    EXPECT_EQ("v", next());
    EXPECT_EQ(3, Got(map, &IXMLDOMNamedNodeMap::get_length));
    EXPECT_EQ(S_FALSE, map->get_item(3, &node));
    EXPECT_EQ(S_FALSE, map->get_item(-1, &node));
}

} // namespace
