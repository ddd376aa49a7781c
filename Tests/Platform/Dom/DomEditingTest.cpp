#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <functional>

namespace {

CComPtr<IXMLDOMNode> NewElement(IXMLDOMDocument* document, std::string_view name, std::string_view uri = "") {
    auto node = Got(document, &IXMLDOMDocument::createNode, CComVariant(NODE_ELEMENT), Wide(name), Wide(uri));
    return node;
}

CComVariant Reference(IXMLDOMNode* node) { return CComVariant(static_cast<IUnknown*>(node)); }

TEST(DomEditing, InsertsMovesReplacesAndRemoves) {
    auto document = Parsed("<r><a/><b/><c/></r>");
    auto root = RootOf(document);
    auto d = NewElement(document, "d");
    CComPtr<IXMLDOMNode> inserted;
    EXPECT_EQ(S_OK, root->insertBefore(d, Reference(First(root, "a")), &inserted));
    EXPECT_EQ(d.p, inserted.p);
    EXPECT_EQ("<r><d/><a/><b/><c/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, root->insertBefore(d, CComVariant(), nullptr)) << "without a reference it comes last";
    EXPECT_EQ("<r><a/><b/><c/><d/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, root->insertBefore(d, Reference(d), nullptr));
    EXPECT_EQ("<r><a/><b/><c/><d/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, First(root, "a")->appendChild(First(root, "c"), nullptr));
    EXPECT_EQ("<r><a><c/></a><b/><d/></r>", XmlOf(root));

    CComPtr<IXMLDOMNode> old;
    EXPECT_EQ(S_OK, root->replaceChild(NewElement(document, "e"), First(root, "b"), &old));
    EXPECT_EQ("b", NameOf(old));
    EXPECT_EQ(S_OK, root->replaceChild(d, First(root, "e"), nullptr));
    EXPECT_EQ("<r><a><c/></a><d/></r>", XmlOf(root));
    EXPECT_EQ(S_OK, root->removeChild(d, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->removeChild(d, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->removeChild(nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG, root->insertBefore(d, Reference(old), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->insertBefore(d, CComVariant(1), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->replaceChild(nullptr, First(root, "a"), nullptr));
    EXPECT_EQ(E_INVALIDARG, root->replaceChild(d, First(root, "a/c"), nullptr)) << "a child's child";
    EXPECT_EQ("<r><a><c/></a></r>", XmlOf(root));
}

TEST(DomEditing, KeepsDocumentsSound) {
    auto document = Parsed("<r><a><b/></a></r>");
    auto root = RootOf(document);
    auto text = Got(document, &IXMLDOMDocument::createTextNode, Wide("t"));
    auto attribute =
        Got(document, &IXMLDOMDocument::createNode, CComVariant(NODE_ATTRIBUTE), Wide("x"), Wide(""));
    EXPECT_EQ(E_FAIL, document->appendChild(text, nullptr));
    EXPECT_EQ(E_FAIL, document->appendChild(NewElement(document, "second"), nullptr));
    EXPECT_EQ(E_FAIL, root->appendChild(attribute, nullptr));
    EXPECT_EQ(E_FAIL, First(root, "a/b")->appendChild(First(root, "a"), nullptr)) << "into itself";
    EXPECT_EQ(E_FAIL, root->appendChild(document, nullptr));
    EXPECT_EQ(E_FAIL, text->appendChild(First(root, "a"), nullptr));
    EXPECT_EQ(E_FAIL, document->replaceChild(text, root, nullptr));
    EXPECT_EQ("<r><a><b/></a></r>\r\n", XmlOf(document));

    auto fresh = NewElement(document, "fresh");
    CComQIPtr<IXMLDOMElement> element(fresh.p);
    EXPECT_EQ(S_OK, document->putref_documentElement(element));
    EXPECT_EQ("<fresh/>\r\n", XmlOf(document));
}

TEST(DomEditing, NamesAndContentsMustBeProper) {
    auto document = Parsed("<r/>");
    const Rows<int, const char*, const char*, HRESULT> cases{
        {NODE_ELEMENT, "a", "", S_OK},
        {NODE_ELEMENT, "p:a", "urn:p", S_OK},
        {NODE_ELEMENT, "p:a", "", E_FAIL},
        {NODE_ELEMENT, "a b", "", E_FAIL},
        {NODE_ELEMENT, "", "", E_FAIL},
        {NODE_ELEMENT, "p:", "urn:p", E_FAIL},
        {NODE_ELEMENT, "xmlns:a", "urn:p", E_INVALIDARG},
        {NODE_ATTRIBUTE, "xmlns:a", "urn:p", E_INVALIDARG},
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
        EXPECT_EQ(result == S_OK, node.p != nullptr);
    }
    auto byName = Got(document, &IXMLDOMDocument::createNode, CComVariant(L"element"), Wide("a"), nullptr);
    CComPtr<IXMLDOMElement> element;
    EXPECT_EQ(E_INVALIDARG, document->createElement(nullptr, &element));
    EXPECT_EQ(E_FAIL, document->createElement(CComBSTR(L""), &element));
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
    CComPtr<IXMLDOMNode> a, b, text;
    a = First(source, "//*[local-name()='a']");
    b = First(source, "//*[local-name()='b']");
    EXPECT_EQ(S_OK, b->get_firstChild(&text));
    CComPtr<IXMLDOMNode> declaration;
    auto map = Got(a, &IXMLDOMNode::get_attributes);
    EXPECT_EQ(S_OK, map->getNamedItem(CComBSTR(L"xmlns:own"), &declaration));

    EXPECT_EQ(S_OK, RootOf(target)->appendChild(a, nullptr));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" xmlns:q=\"urn:q\"/>\r\n", XmlOf(source));
    source.Release();
    EXPECT_EQ("<r><p:a q:x=\"1\" xmlns:own=\"urn:own\" y=\"2\" xmlns:p=\"urn:p\" "
              "xmlns:q=\"urn:q\"><p:b>t</p:b></p:a>"
              "</r>",
              XmlOf(RootOf(target)));
    // Whoever held a node holds the one that moved.
    EXPECT_EQ("p:b", NameOf(b));
    EXPECT_TRUE(b.IsEqualObject(First(target, "//*[local-name()='b']")));
    auto owner = Got(text, &IXMLDOMNode::get_ownerDocument);
    EXPECT_TRUE(owner.IsEqualObject(target));
    EXPECT_EQ(S_OK, declaration->put_nodeValue(Value("urn:new")));
    EXPECT_EQ("q:x=1 xmlns:own=urn:new y=2", AttributesOf(a));

    auto third = NewDocument();
    CComPtr<IXMLDOMDocument3> importer;
    EXPECT_EQ(S_OK, third->QueryInterface(&importer));
    CComPtr<IXMLDOMNode> copy;
    EXPECT_EQ(S_OK, importer->importNode(b, VARIANT_TRUE, &copy));
    EXPECT_EQ(S_OK, third->appendChild(copy, nullptr));
    EXPECT_EQ("<p:b xmlns:p=\"urn:p\">t</p:b>\r\n", XmlOf(third));
}

TEST(DomEditing, ClonesAreDeepOrShallowAndOnTheirOwn) {
    auto document = Parsed("<?xml version='1.0'?><!--c--><p:r xmlns:p='urn:p' x='1'><p:a>t</p:a></p:r>");
    CComPtr<IXMLDOMNode> whole, empty, element;
    EXPECT_EQ(S_OK, document->cloneNode(VARIANT_TRUE, &whole));
    EXPECT_EQ(S_OK, document->cloneNode(VARIANT_FALSE, &empty));
    EXPECT_EQ(S_OK, RootOf(document)->cloneNode(VARIANT_FALSE, &element));
    const std::string text = XmlOf(document);
    EXPECT_EQ(S_OK, RootOf(document)->put_text(nullptr));
    document.Release();
    EXPECT_EQ(text, XmlOf(whole));
    EXPECT_EQ("", XmlOf(empty));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" x=\"1\"/>", XmlOf(element)) << "attributes are part of an element";
    CComPtr<IXMLDOMNode> parent;
    EXPECT_EQ(S_FALSE, element->get_parentNode(&parent));
    EXPECT_EQ(S_OK, empty->appendChild(element, nullptr));
    EXPECT_EQ("<p:r xmlns:p=\"urn:p\" x=\"1\"/>\r\n", XmlOf(empty));
}

TEST(DomEditing, FragmentsGiveTheirChildren) {
    auto document = Parsed("<r><z/></r>");
    auto fragment = Got(document, &IXMLDOMDocument::createDocumentFragment);
    EXPECT_EQ(S_OK, fragment->appendChild(NewElement(document, "a"), nullptr));
    EXPECT_EQ(S_OK, fragment->appendChild(NewElement(document, "b"), nullptr));
    EXPECT_EQ(E_FAIL, document->appendChild(fragment, nullptr));
    EXPECT_EQ(S_OK, RootOf(document)->insertBefore(fragment, Reference(First(document, "//z")), nullptr));
    EXPECT_EQ("<r><a/><b/><z/></r>\r\n", XmlOf(document));
    VARIANT_BOOL has = VARIANT_TRUE;
    EXPECT_EQ(S_FALSE, fragment->hasChildNodes(&has));
}

TEST(DomEditing, TextsAreSplitJoinedAndCut) {
    auto document = Parsed("<r>ab\xF0\x9F\x98\x80"
                           "cd</r>");
    auto node = Got(RootOf(document), &IXMLDOMNode::get_firstChild);
    CComQIPtr<IXMLDOMText> text(node.p);
    EXPECT_EQ(6, Got(text, &IXMLDOMText::get_length)) << "in UTF-16 units";
    CComBSTR part, none;
    EXPECT_EQ(S_OK, text->substringData(2, 2, &part));
    EXPECT_EQ("\xF0\x9F\x98\x80", Narrow(part));
    part.Empty();
    EXPECT_EQ(S_OK, text->substringData(5, 2, &part)) << "a count may reach behind the end";
    EXPECT_EQ("d", Narrow(part));
    EXPECT_EQ(S_FALSE, text->substringData(7, 1, &none));
    EXPECT_EQ(S_FALSE, text->substringData(1, 0, &none));
    EXPECT_EQ(E_INVALIDARG, text->substringData(-1, 1, &none));
    EXPECT_EQ(E_INVALIDARG, text->deleteData(7, 1));
    EXPECT_EQ(E_INVALIDARG, text->insertData(7, Wide("x")));
    EXPECT_EQ(S_OK, text->insertData(7, nullptr)) << "nothing fits everywhere";
    EXPECT_EQ(S_OK, text->deleteData(6, 100));
    EXPECT_EQ(E_INVALIDARG, text->deleteData(2, 1)) << "half a character";
    auto right = Got(text, &IXMLDOMText::splitText, 4);
    EXPECT_EQ("cd", TextOf(right));
    EXPECT_EQ(S_OK, text->replaceData(0, 1, Wide("X")));
    EXPECT_EQ(S_OK, right->appendData(Wide("e")));
    EXPECT_EQ(S_OK, RootOf(document)->normalize());
    auto children = Got(RootOf(document), &IXMLDOMNode::get_childNodes);
    EXPECT_EQ(1, Got(children, &IXMLDOMNodeList::get_length));
    EXPECT_EQ("Xb\xF0\x9F\x98\x80"
              "cde",
              TextOf(RootOf(document)));
}

TEST(DomEditing, ChildListsAreLive) {
    auto document = Parsed("<r><a/><b/><c/></r>");
    auto list = Got(RootOf(document), &IXMLDOMNode::get_childNodes);
    EXPECT_EQ("b", NameOf(Got(list, &IXMLDOMNodeList::get_item, 1)));
    EXPECT_EQ(S_OK, RootOf(document)->removeChild(First(document, "//a"), nullptr));
    EXPECT_EQ("c", NameOf(Got(list, &IXMLDOMNodeList::get_item, 1)));
    auto all = Got(document, &IXMLDOMDocument::getElementsByTagName, CComBSTR(L"*"));
    EXPECT_EQ(3, Got(all, &IXMLDOMNodeList::get_length));

    // What was remembered of a walk goes with what it was remembered of.
    EXPECT_EQ(2, Got(list, &IXMLDOMNodeList::get_length));
    EXPECT_EQ(S_OK, RootOf(document)->insertBefore(First(document, "//c"), Reference(First(document, "//b")),
                                                   nullptr));
    EXPECT_EQ("b", NameOf(Got(list, &IXMLDOMNodeList::get_item, 1)));
    auto top = Got(document, &IXMLDOMNode::get_childNodes);
    EXPECT_EQ("r", NameOf(Got(top, &IXMLDOMNodeList::get_item, 0)));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(S_OK, document->loadXML(Wide("<other/>"), &loaded));
    EXPECT_EQ("other", NameOf(Got(top, &IXMLDOMNodeList::get_item, 0)));

    const auto attribute = First(Parsed("<a x=''/>"), "/a/@x");
    auto value = Got(attribute, &IXMLDOMNode::get_childNodes);
    EXPECT_EQ(S_OK, attribute->put_text(CComBSTR(L"")));
    EXPECT_EQ(0, Got(value, &IXMLDOMNodeList::get_length));
    EXPECT_EQ(S_OK, attribute->put_text(CComBSTR(L"1")));
    EXPECT_EQ(1, Got(value, &IXMLDOMNodeList::get_length));
}

// Run under the address sanitizer, these tests also show that nothing is freed twice, late or never.
TEST(DomLifetime, NodesKeepWhatTheyStandIn) {
    CComPtr<IXMLDOMNode> inner;
    inner = First(Parsed("<r xmlns:p='urn:p'><a><p:b x='1'/></a></r>"), "//*[@x]");
    auto parent = Got(inner, &IXMLDOMNode::get_parentNode);
    EXPECT_EQ("a", NameOf(parent));
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
        CComPtr<IXMLDOMAttribute> first, second;
        EXPECT_EQ(S_OK, RootOf(document)->getAttributeNode(CComBSTR(name), &first));
        EXPECT_EQ(S_OK, RootOf(document)->getAttributeNode(CComBSTR(name), &second));
        EXPECT_EQ(first.p, second.p);
    }
    CComQIPtr<IXMLDOMText> noText(b.p);
    EXPECT_FALSE(noText);
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

TEST(DomLifetime, ManyDetachedNodesDoNotAddUp) {
    auto document = Parsed("<r/>");
    auto root = RootOf(document);
    auto pinned = Got(document, &IXMLDOMNode::selectNodes, Wide("//r"));
    for (int round = 0; round < 1000; ++round) {
        if (round == 500) pinned.Release();
        auto node = NewElement(document, "p:a", "urn:p");
        CComQIPtr<IXMLDOMElement> element(node.p);
        EXPECT_EQ(S_OK, element->setAttribute(CComBSTR(L"xmlns:q"), Value("urn:q")));
        EXPECT_EQ(S_OK, element->setAttribute(CComBSTR(L"q:x"), Value("1")));
        EXPECT_EQ(S_OK, root->appendChild(node, nullptr));
        auto copy = Got(node, &IXMLDOMNode::cloneNode, VARIANT_TRUE);
        EXPECT_EQ(S_OK, copy->appendChild(NewElement(document, "c"), nullptr));
        EXPECT_EQ(S_OK, root->removeChild(node, nullptr));
    }
    EXPECT_EQ("<r/>\r\n", XmlOf(document));
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

TEST(DomLifetime, AFailureAtAnyCallIsReportedAndLosesNothing) {
    const CComBSTR property(L"SelectionNamespaces"), xml(L"<p:r xmlns:p='u'><p:a/></p:r>"), name(L"b"),
        uri(L"v"), attribute(L"xmlns:p"), query(L"//p:a"), path(Wide(::testing::TempDir() + "dom-fault.xml"));
    const CComVariant namespaces(L"xmlns:p='u'"), type(NODE_ELEMENT), file(static_cast<const wchar_t*>(path));
    const auto work = [&](IXMLDOMDocument2* document) -> HRESULT {
        VARIANT_BOOL loaded = VARIANT_FALSE;
        CComPtr<IXMLDOMElement> root;
        CComPtr<IXMLDOMNode> node, found;
        CComPtr<IXMLDOMNodeList> list;
        CComPtr<IXMLDOMNamedNodeMap> map;
        CComPtr<IStream> stream;
        CComBSTR text;
        CComVariant value;
        const std::function<HRESULT()> steps[] = {
            [&] { return document->setProperty(property, namespaces); },
            [&] { return document->loadXML(xml, &loaded); },
            [&] { return document->get_documentElement(&root); },
            [&] { return document->createNode(type, name, uri, &node); },
            [&] { return root->appendChild(node, nullptr); },
            [&] { return root->get_attributes(&map); },
            [&] { return map->getNamedItem(attribute, &found); },
            [&] { return found->get_nodeValue(&value); },
            [&] { return document->selectNodes(query, &list); },
            [&] { return document->get_xml(&text); },
            [&] { return document->save(file); },
            [&] { return document->load(file, &loaded); },
            [&] { return document->QueryInterface(&stream); },
            [&] { return stream->Seek({}, STREAM_SEEK_SET, nullptr); },
        };
        for (const auto& step : steps)
            if (const HRESULT result = step(); result != S_OK) return result;
        return S_OK;
    };
    auto counted = NewDocument();
    OvPlatform::FaultInjection::CountCalls();
    EXPECT_EQ(S_OK, work(counted));
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    OvPlatform::FaultInjection::Reset();
    EXPECT_GE(calls, 14);
    for (LONG number = 1; number <= calls; ++number) {
        auto document = NewDocument();
        OvPlatform::FaultInjectionScope fault(number);
        EXPECT_EQ(E_OUTOFMEMORY, work(document)) << number;
    }
}

} // namespace
