#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

namespace {

CComVariant Reference(IXMLDOMNode* node) { return CComVariant(static_cast<IUnknown*>(node)); }

TEST(DomEditing, InsertsMovesReplacesAndRemoves) {
    auto root = RootOf(Parsed("<r><a/><b/><c/></r>"));
    auto document = Got(root, &IXMLDOMNode::get_ownerDocument);
    auto d = NewElement(document, "d");
    EXPECT_EQ(d.p, Got(root, &IXMLDOMNode::insertBefore, d, Reference(First(root, "a"))).p);
    EXPECT_EQ("<r><d/><a/><b/><c/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, root->insertBefore(d, CComVariant(), nullptr)) << "without a reference it comes last";
    EXPECT_EQ(S_OK, root->insertBefore(d, Reference(d), nullptr));
    EXPECT_EQ("<r><a/><b/><c/><d/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, First(root, "a")->appendChild(First(root, "c"), nullptr));
    const auto old = Got(root, &IXMLDOMNode::replaceChild, NewElement(document, "e"), First(root, "b"));
    EXPECT_EQ("b", NameOf(old));
    EXPECT_EQ("<r><a><c/></a><e/><d/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, root->replaceChild(d, First(root, "e"), nullptr));
    EXPECT_EQ(S_OK, root->removeChild(d, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->removeChild(d, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->removeChild(nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->insertBefore(d, Reference(old), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->insertBefore(d, CComVariant(1), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->replaceChild(nullptr, First(root, "a"), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->replaceChild(d, First(root, "a/c"), nullptr)) << "a child's child";

    // The document stays sound.
    auto text = Got(document, &IXMLDOMDocument::createTextNode, Wide("t"));
    EXPECT_EQ(E_FAIL, document->appendChild(text, nullptr));
    EXPECT_EQ(E_FAIL, document->appendChild(NewElement(document, "second"), nullptr));
    EXPECT_EQ(E_FAIL, document->replaceChild(text, root, nullptr));
    EXPECT_EQ(E_FAIL, root->appendChild(NewAttribute(document, "x", ""), nullptr));
    EXPECT_EQ(E_FAIL, First(root, "a/c")->appendChild(First(root, "a"), nullptr)) << "into itself";
    EXPECT_EQ(E_FAIL, root->appendChild(document, nullptr));
    EXPECT_EQ(E_FAIL, text->appendChild(First(root, "a"), nullptr));
    EXPECT_EQ("<r><a><c/></a></r>\r\n", XmlOf(document));
    EXPECT_EQ(S_OK, document->putref_documentElement(CComQIPtr<IXMLDOMElement>(NewElement(document, "f"))));
    EXPECT_EQ("<f/>\r\n", XmlOf(document));
}

TEST(DomEditing, NamesAndContentsMustBeProper) {
    auto document = Parsed("<r/>");
    const Rows<int, const char*, const char*, HRESULT> cases{
        {NODE_ELEMENT, "p:a", "", E_FAIL},
        {NODE_ELEMENT, "a b", "", E_FAIL},
        {NODE_ELEMENT, "", "", E_FAIL},
        {NODE_ELEMENT, "p:", "urn:p", E_FAIL},
        {NODE_ELEMENT, "xmlns:a", "urn:p", E_INVALIDARG},
        {NODE_ATTRIBUTE, "xmlns:a", "http://www.w3.org/2000/xmlns/", S_OK},
        {NODE_ATTRIBUTE, "xmlns", "urn:p", E_INVALIDARG},
        {NODE_ATTRIBUTE, "xml:lang", "", S_OK},
        {NODE_ATTRIBUTE, "xml:lang", "urn:p", E_INVALIDARG},
        {NODE_PROCESSING_INSTRUCTION, "a:b", "", E_FAIL},
        {NODE_PROCESSING_INSTRUCTION, "Xml", "", E_FAIL},
        {NODE_TEXT, "", "", S_OK},
        {NODE_DOCUMENT, "", "", E_INVALIDARG},
        {99, "a", "", E_INVALIDARG},
    };
    for (const auto& [type, name, uri, result] : cases) {
        CComPtr<IXMLDOMNode> node;
        EXPECT_EQ(result, document->createNode(CComVariant(type), Wide(name), Wide(uri), &node)) << name;
    }
    auto byName = Got(document, &IXMLDOMDocument::createNode, CComVariant(L"element"), Wide("a"), nullptr);
    CComPtr<IXMLDOMElement> element;
    EXPECT_EQ(E_INVALIDARG, document->createElement(nullptr, &element));
    CComPtr<IXMLDOMComment> comment;
    EXPECT_EQ(E_INVALIDARG, document->createComment(Wide("a--b"), &comment));
    auto section = Got(document, &IXMLDOMDocument::createCDATASection, Wide("a]]>b"));
    EXPECT_EQ("<![CDATA[a]]]]><![CDATA[>b]]>", XmlOf(section));
}

TEST(DomEditing, MovesNodesBetweenDocuments) {
    auto source =
        Parsed("<p:r xmlns:p='urn:p' xmlns:q='urn:q'><p:a q:x='1' xmlns:own='urn:own' y='2'><p:b>t</p:b>"
               "</p:a></p:r>");
    auto target = Parsed("<r/>");
    const auto a = First(source, "//*[local-name()='a']"), b = First(source, "//*[local-name()='b']");
    const auto text = Got(b, &IXMLDOMNode::get_firstChild);
    const auto declaration =
        Got(Got(a, &IXMLDOMNode::get_attributes), &IXMLDOMNamedNodeMap::getNamedItem, CComBSTR(L"xmlns:own"));

    EXPECT_EQ(S_OK, RootOf(target)->appendChild(a, nullptr));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" xmlns:q=\"urn:q\"/>\r\n", XmlOf(source));
    source.Release();
    EXPECT_EQ("<r><p:a q:x=\"1\" xmlns:own=\"urn:own\" y=\"2\" xmlns:p=\"urn:p\" "
              "xmlns:q=\"urn:q\"><p:b>t</p:b></p:a>"
              "</r>",
              XmlOf(RootOf(target)));
    // Whoever held a node holds the one that moved.
    EXPECT_TRUE(b.IsEqualObject(First(target, "//*[local-name()='b']")));
    EXPECT_TRUE(Got(text, &IXMLDOMNode::get_ownerDocument).IsEqualObject(target));
    EXPECT_EQ(S_OK, declaration->put_nodeValue(Value("urn:new")));
    EXPECT_EQ("q:x=1 xmlns:own=urn:new y=2", AttributesOf(a));

    const CComQIPtr<IXMLDOMDocument3> third(NewDocument());
    EXPECT_EQ(S_OK, third->appendChild(Got(third, &IXMLDOMDocument3::importNode, b, VARIANT_TRUE), nullptr));
    EXPECT_EQ("<p:b xmlns:p=\"urn:p\">t</p:b>\r\n", XmlOf(third));
}

TEST(DomEditing, ClonesAreOnTheirOwnAndFragmentsGiveTheirChildren) {
    auto document = Parsed("<?xml version='1.0'?><p:r xmlns:p='urn:p' x='1'><p:a>t</p:a></p:r>");
    const auto whole = Got(document, &IXMLDOMNode::cloneNode, VARIANT_TRUE);
    const auto empty = Got(document, &IXMLDOMNode::cloneNode, VARIANT_FALSE);
    const auto element = Got(RootOf(document), &IXMLDOMNode::cloneNode, VARIANT_FALSE);
    const std::string text = XmlOf(document);
    EXPECT_EQ(S_OK, RootOf(document)->put_text(nullptr));
    EXPECT_EQ(text, XmlOf(whole));
    EXPECT_EQ("", XmlOf(empty));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" x=\"1\"/>", XmlOf(element)) << "attributes are part of an element";

    auto fragment = Got(document, &IXMLDOMDocument::createDocumentFragment);
    for (const char* name : {"a", "b"})
        EXPECT_EQ(S_OK, fragment->appendChild(NewElement(document, name), nullptr));
    EXPECT_EQ(E_FAIL, empty->appendChild(fragment, nullptr));
    EXPECT_EQ(S_OK, element->appendChild(NewElement(document, "z"), nullptr));
    EXPECT_EQ(S_OK, element->insertBefore(fragment, Reference(First(element, "z")), nullptr));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" x=\"1\"><a/><b/><z/></p:r>", XmlOf(element));
    EXPECT_EQ("", XmlOf(fragment));
}

TEST(DomEditing, TextsAreSplitJoinedAndCut) {
    auto root = RootOf(Parsed("<r>ab\xF0\x9F\x98\x80.cd</r>"));
    const CComQIPtr<IXMLDOMText> text(Got(root, &IXMLDOMNode::get_firstChild));
    EXPECT_EQ("\xF0\x9F\x98\x80", Narrow(Got(text, &IXMLDOMText::substringData, 2, 2))) << "in UTF-16 units";
    EXPECT_EQ("d", Narrow(Got(text, &IXMLDOMText::substringData, 6, 2)))
        << "a count may reach behind the end";
    EXPECT_EQ(E_INVALIDARG, text->deleteData(8, 1));
    EXPECT_EQ(E_INVALIDARG, text->deleteData(-1, 1));
    EXPECT_EQ(E_INVALIDARG, text->deleteData(2, 1)) << "half a character";
    EXPECT_EQ(S_OK, text->deleteData(6, 100));
    EXPECT_EQ(S_OK, Got(text, &IXMLDOMText::splitText, 4)->appendData(Wide("e")));
    EXPECT_EQ(S_OK, text->replaceData(0, 1, Wide("X")));
    EXPECT_EQ(S_OK, root->normalize());
    EXPECT_EQ("Xb\xF0\x9F\x98\x80.ce", TextOf(Got(root, &IXMLDOMNode::get_firstChild)));
}

TEST(DomEditing, ChildListsAreLive) {
    auto document = Parsed("<r><a/><b/><c/></r>");
    auto root = RootOf(document);
    auto list = Got(root, &IXMLDOMNode::get_childNodes), top = Got(document, &IXMLDOMNode::get_childNodes);
    const auto at = [](const auto& nodes, LONG index) {
        return NameOf(Got(nodes, &IXMLDOMNodeList::get_item, index));
    };
    EXPECT_EQ("b r", at(list, 1) + " " + at(top, 0));
    EXPECT_EQ(3, Got(list, &IXMLDOMNodeList::get_length));

    // What was remembered of a walk goes with what it was remembered of.
    EXPECT_EQ(S_OK, root->removeChild(First(document, "//a"), nullptr));
    EXPECT_EQ("c", at(list, 1));
    EXPECT_EQ(2, Got(list, &IXMLDOMNodeList::get_length));
    EXPECT_EQ(S_OK, root->insertBefore(First(root, "c"), Reference(First(root, "b")), nullptr));
    EXPECT_EQ("b", at(list, 1));
    EXPECT_EQ(VARIANT_TRUE, Got(document, &IXMLDOMDocument::loadXML, Wide("<other/>")));
    EXPECT_EQ("other", at(top, 0));
    const auto attribute = First(Parsed("<a x=''/>"), "/a/@x");
    auto value = Got(attribute, &IXMLDOMNode::get_childNodes);
    for (const wchar_t* text : {L"", L"1"}) {
        EXPECT_EQ(S_OK, attribute->put_text(CComBSTR(text)));
        EXPECT_EQ(*text ? 1 : 0, Got(value, &IXMLDOMNodeList::get_length));
    }
}

// Run under the address sanitizer, these tests also show that nothing is freed twice, late or never.
TEST(DomLifetime, NodesKeepWhatTheyStandIn) {
    const auto inner = First(Parsed("<r xmlns:p='urn:p'><a><p:b x='1'/></a></r>"), "//*[@x]");
    auto parent = Got(inner, &IXMLDOMNode::get_parentNode);
    auto owner = Got(inner, &IXMLDOMNode::get_ownerDocument);
    EXPECT_EQ("<r xmlns:p=\"urn:p\"><a><p:b x=\"1\"/></a></r>\r\n", XmlOf(owner));

    // A node outside its document goes on, and so does one inside it.
    auto root = Got(parent, &IXMLDOMNode::get_parentNode);
    EXPECT_EQ(S_OK, root->removeChild(parent, nullptr));
    parent.Release();
    root.Release();
    owner.Release();
    EXPECT_EQ(S_OK, inner->get_parentNode(&parent));
    EXPECT_EQ("<a><p:b x=\"1\" xmlns:p=\"urn:p\"/></a>", XmlOf(parent));
}

TEST(DomLifetime, OneNodeIsOneObject) {
    auto document = Parsed("<r a='1' xmlns:p='u'><b/></r>");
    auto b = First(document, "//b");
    auto again = Got(RootOf(document), &IXMLDOMNode::get_firstChild);
    EXPECT_EQ(b.p, again.p);
    EXPECT_TRUE(document.IsEqualObject(First(document, "/")));
    for (const wchar_t* name : {L"a", L"xmlns:p"}) {
        const auto attribute = [&] {
            return Got(RootOf(document), &IXMLDOMElement::getAttributeNode, CComBSTR(name));
        };
        const auto first = attribute();
        EXPECT_EQ(first.p, attribute().p);
    }
    EXPECT_FALSE(CComQIPtr<IXMLDOMText>(b.p));
    CComQIPtr<ISupportErrorInfo> errors(b.p);
    EXPECT_TRUE(errors && b.IsEqualObject(errors));
}

TEST(DomLifetime, WhatAMovedNodeStoodInEnds) {
    // The address sanitizer sees whether it does.
    auto document = Parsed("<r><a><b/></a></r>");
    auto inner = First(document, "//b");
    EXPECT_EQ(S_OK, RootOf(document)->removeChild(First(document, "//a"), nullptr));
    EXPECT_EQ(S_OK, RootOf(document)->appendChild(inner, nullptr));
    auto fragment = Got(document, &IXMLDOMDocument::createDocumentFragment);
    EXPECT_EQ(S_OK, fragment->appendChild(inner, nullptr));
    fragment.Release();
    auto other = Parsed("<o/>");
    EXPECT_EQ(S_OK, RootOf(other)->appendChild(inner, nullptr));
    EXPECT_EQ("<r/>", XmlOf(RootOf(document)));
    EXPECT_EQ("<o><b/></o>", XmlOf(RootOf(other)));
}

TEST(DomLifetime, NodesThatAListKeepsMayBePutIntoOneAnother) {
    auto document = Parsed("<r><a/><b/><c/></r>");
    auto root = RootOf(document);
    auto list = Got(document, &IXMLDOMNode::selectNodes, Wide("/r/*"));
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(S_OK, root->removeChild(First(root, name), nullptr));
    const auto at = [&](LONG index) { return Got(list, &IXMLDOMNodeList::get_item, index); };
    EXPECT_EQ(S_OK, at(0)->appendChild(at(1), nullptr));
    EXPECT_EQ(S_OK, root->appendChild(at(2), nullptr));
    EXPECT_EQ("<a><b/></a>", XmlOf(at(0)));
    list.Release();
    EXPECT_EQ("<r><c/></r>", XmlOf(root));
}

} // namespace
