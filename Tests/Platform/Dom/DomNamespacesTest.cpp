#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

#include <functional>

// Trees in which one start tag would need a prefix twice, or names and declarations that disagree: the text
// says of every name what the tree says.

namespace {

void AddAttribute(IXMLDOMNode* node, std::string_view name, std::string_view uri) {
    const auto attribute = NewAttribute(Got(node, &IXMLDOMNode::get_ownerDocument), name, uri);
    EXPECT_EQ(S_OK, CComQIPtr<IXMLDOMElement>(node)->setAttributeNode(attribute, nullptr));
}

HRESULT Set(IXMLDOMNode* node, std::string_view name, std::string_view value) {
    return CComQIPtr<IXMLDOMElement>(node)->setAttribute(Wide(name), Value(value));
}

CComPtr<IXMLDOMNode> Declaration(IXMLDOMNode* element, std::string_view name) {
    return Got(Got(element, &IXMLDOMNode::get_attributes), &IXMLDOMNamedNodeMap::getNamedItem, Wide(name));
}

TEST(DomNamespaces, NamesKeepTheirsWhereATagWouldNeedAPrefixTwice) {
    // edit: of the element c
    const Rows<const char*, std::function<void(IXMLDOMNode*)>, const char*> cases{
        // The prefix of the element itself, of an attribute beside, of one around.
        {"<r xmlns:v='urn:1'><v:c/></r>", [](IXMLDOMNode* c) { AddAttribute(c, "v:x", "urn:2"); },
         "<r xmlns:v=\"urn:1\"><v:c ns0:x=\"\" xmlns:ns0=\"urn:2\"/></r>"},
        {"<r xmlns:v='urn:1'><c v:x='1'/></r>", [](IXMLDOMNode* c) { AddAttribute(c, "v:y", "urn:2"); },
         "<r xmlns:v=\"urn:1\"><c v:x=\"1\" ns0:y=\"\" xmlns:ns0=\"urn:2\"/></r>"},
        // Two that nothing declares.
        {"<r><c/></r>",
         [](IXMLDOMNode* c) {
             AddAttribute(c, "v:x", "urn:1");
             AddAttribute(c, "v:x", "urn:2");
         },
         "<r><c v:x=\"\" ns0:x=\"\" xmlns:v=\"urn:1\" xmlns:ns0=\"urn:2\"/></r>"},
        // Another prefix of the namespace, unless it is hidden; and one that looks made up.
        {"<r xmlns:w='urn:2' xmlns:v='urn:1'><v:c/></r>",
         [](IXMLDOMNode* c) { AddAttribute(c, "v:x", "urn:2"); },
         "<r xmlns:w=\"urn:2\" xmlns:v=\"urn:1\"><v:c w:x=\"\"/></r>"},
        {"<r xmlns:w='urn:2' xmlns:v='urn:1'><v:c xmlns:w='urn:3' xmlns:ns0='urn:4'/></r>",
         [](IXMLDOMNode* c) { AddAttribute(c, "v:x", "urn:2"); },
         "<r xmlns:w=\"urn:2\" xmlns:v=\"urn:1\"><v:c xmlns:w=\"urn:3\" xmlns:ns0=\"urn:4\" ns1:x=\"\" "
         "xmlns:ns1=\"urn:2\"/></r>"},
        // A declaration that went leaves names behind.
        {"<r xmlns:v='urn:1'><c v:x='1' xmlns:v='urn:2' v:y='2'/></r>",
         [](IXMLDOMNode* c) {
             EXPECT_EQ(E_INVALIDARG, Set(c, "xmlns:v", "urn:3"));
             EXPECT_EQ(S_OK, CComQIPtr<IXMLDOMElement>(c)->removeAttribute(CComBSTR(L"xmlns:v")));
         },
         "<r xmlns:v=\"urn:1\"><c ns0:x=\"1\" ns0:y=\"2\" xmlns:ns0=\"urn:2\"/></r>"},
        // What is bound around counts only there.
        {"<r xmlns:v='urn:1'><c/><d v:x='1'/></r>",
         [](IXMLDOMNode* c) {
             EXPECT_EQ(S_OK, Set(c, "xmlns:v", "urn:2"));
             const auto d = Got(c, &IXMLDOMNode::get_nextSibling);
             EXPECT_EQ(S_OK, c->appendChild(Got(d, &IXMLDOMNode::cloneNode, VARIANT_TRUE), nullptr));
         },
         "<r xmlns:v=\"urn:1\"><c xmlns:v=\"urn:2\"><d ns0:x=\"1\" xmlns:ns0=\"urn:1\"/></c>"
         "<d v:x=\"1\"/></r>"},
    };
    for (const auto& [xml, edit, written] : cases) {
        auto document = Parsed(xml);
        auto c = First(document, "//*[local-name()='c']");
        const std::string name = NameOf(c);
        edit(c);
        EXPECT_EQ(written, XmlOf(RootOf(document))) << xml;
        EXPECT_EQ(name, NameOf(c)) << "the tree is as it was";
        EXPECT_EQ(written, XmlOf(RootOf(Parsed(XmlOf(document))))) << "again: " << xml;
    }
}

TEST(DomNamespaces, ADefaultDeclarationTakesItsElementAlong) {
    auto document = Parsed("<r><c/></r>");
    EXPECT_EQ(S_OK, Set(RootOf(document), "xmlns", "urn:d"));
    EXPECT_EQ("urn:d", Narrow(Got(RootOf(document), &IXMLDOMNode::get_namespaceURI)));
    EXPECT_EQ("<r xmlns=\"urn:d\"><c xmlns=\"\"/></r>", XmlOf(RootOf(document))) << "but none inside";
    EXPECT_EQ(E_INVALIDARG, Set(RootOf(document), "xmlns", "urn:e"));
    EXPECT_EQ(E_INVALIDARG, Set(RootOf(document), "xmlns", ""));

    auto inner = First(document, "//c");
    EXPECT_EQ(S_OK, Set(inner, "xmlns", ""));
    EXPECT_EQ(S_OK, Declaration(inner, "xmlns")->put_text(Wide("urn:c")));
    EXPECT_EQ("<r xmlns=\"urn:d\"><c xmlns=\"urn:c\"/></r>", XmlOf(RootOf(document)));
}

TEST(DomNamespaces, ADeclarationChangesOnlyAsAWhole) {
    auto document = Parsed("<p:r xmlns:p='urn:p'/>");
    const auto declaration = Declaration(RootOf(document), "xmlns:p");
    const auto text = Got(declaration, &IXMLDOMNode::get_firstChild);
    EXPECT_EQ(E_FAIL, text->put_text(Wide("urn:q")));
    EXPECT_EQ(E_FAIL, declaration->removeChild(text, nullptr));
    EXPECT_EQ(E_FAIL, RootOf(document)->appendChild(text, nullptr));
    CComPtr<IXMLDOMText> right;
    EXPECT_EQ(E_FAIL, CComQIPtr<IXMLDOMText>(text.p)->splitText(1, &right));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\"/>", XmlOf(RootOf(document)));

    // Outside an element it is an attribute like others.
    const auto map = Got(RootOf(document), &IXMLDOMNode::get_attributes);
    EXPECT_EQ(S_OK, map->removeNamedItem(CComBSTR(L"xmlns:p"), nullptr));
    EXPECT_EQ(S_OK, CComQIPtr<IXMLDOMText>(text.p)->splitText(2, &right));
    EXPECT_EQ(S_OK, map->setNamedItem(declaration, nullptr));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\"/>", XmlOf(RootOf(document)));
}

} // namespace
