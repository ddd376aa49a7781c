#include "Platform/Dom/DomTestSupport.h"
#include "Support/Rows.h"

namespace {

TEST(DomText, IsWrittenInOneForm) {
    const Rows<const char*, const char*> cases{
        {"<a/>", "<a/>\r\n"},
        {"<a></a>", "<a/>\r\n"},
        {"<?xml version='1.0' encoding='UTF-8'?><a/>", "<?xml version=\"1.0\"?>\r\n<a/>\r\n"},
        {"<?xml version = \"1.0\"  standalone='no'?>\n<!--c--><a/><?p d?>",
         "<?xml version=\"1.0\" standalone=\"no\"?>\r\n<!--c-->\r\n<a/>\r\n<?p d?>\r\n"},
        {"<a b='&lt;&amp;&quot;&apos;&#9;&#10;&#13;>'>&lt;&amp;\"'&gt;&#13;</a>",
         "<a b=\"&lt;&amp;&quot;'&#9;&#10;&#13;&gt;\">&lt;&amp;\"'&gt;&#13;</a>\r\n"},
        {"<a>x\ny\r\nz\rw</a>", "<a>x\r\ny\r\nz\r\nw</a>\r\n"},
        {"<a><![CDATA[<&]]><!--a\nb--><?t  d?></a>", "<a><![CDATA[<&]]><!--a\r\nb--><?t d?></a>\r\n"},
        // Blanks between elements are no content, but the breaks stay.
        {"<a>\n\n  <b> </b> <c/>\n <!--x-->\n</a>",
         "<a>\r\n\t<b>\r\n\t</b>\r\n\t<c/>\r\n\t<!--x-->\r\n</a>\r\n"},
        {"<a>t <b/> u<c/></a>", "<a>t <b/> u<c/></a>\r\n"},
        {"<a><b xml:space='preserve'> <c/> </b> </a>", "<a><b xml:space=\"preserve\"> <c/> </b>\r\n</a>\r\n"},
    };
    for (const auto& [xml, written] : cases) {
        auto document = Parsed(xml);
        EXPECT_EQ(written, XmlOf(document)) << xml;
        EXPECT_EQ(written, XmlOf(Parsed(XmlOf(document)))) << "again: " << xml;
    }
}

/// What a reader that keeps all blanks finds in the first element, CDATA sections and texts as one.
std::string ReadBack(IXMLDOMNode* written) {
    auto again = NewDocument();
    EXPECT_EQ(S_OK, again->put_preserveWhiteSpace(VARIANT_TRUE));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(S_OK, again->loadXML(Wide(XmlOf(written)), &loaded)) << XmlOf(written);
    return TextOf(RootOf(again));
}

TEST(DomText, OfSectionsCommentsAndInstructionsIsWhatAReaderFinds) {
    auto document = Parsed("<a>\n</a>");
    auto root = RootOf(document);
    auto section = Got(document, &IXMLDOMDocument::createCDATASection, Wide("x\r\ny\rz"));
    EXPECT_EQ(S_OK, root->appendChild(section, nullptr));
    EXPECT_EQ("<a><![CDATA[x\r\ny\r\nz]]></a>", XmlOf(root)) << "no break that would be content";
    EXPECT_EQ("x\ny\nz", TextOf(root));
    EXPECT_EQ("x\ny\nz", ReadBack(root));
    EXPECT_EQ(S_OK, section->appendData(Wide("]]>\r\n")));
    EXPECT_EQ("x\ny\nz]]>\n", ReadBack(root));

    auto comment = Got(document, &IXMLDOMDocument::createComment, Wide("a\r\nb"));
    EXPECT_EQ("<!--a\r\nb-->", XmlOf(comment));
    EXPECT_EQ(E_INVALIDARG, comment->put_data(Wide("a-")));
    auto instruction =
        Got(document, &IXMLDOMDocument::createProcessingInstruction, CComBSTR(L"p"), Wide(" \r\n d?\r\n"));
    EXPECT_EQ("<?p d?\r\n?>", XmlOf(instruction));

    for (const char* data :
         {"version='2.0'", "version='1.0' encoding='1:a'", "version='1.0' standalone='maybe'"}) {
        CComPtr<IXMLDOMProcessingInstruction> bad;
        EXPECT_EQ(E_INVALIDARG, document->createProcessingInstruction(CComBSTR(L"xml"), Wide(data), &bad))
            << data;
    }
}

TEST(DomText, BreaksNoLineWhereItWouldBeContent) {
    // xml: the element m moves to the end of the element t
    const Rows<const char*, const char*> cases{
        {"<a><t xml:space='preserve'>x<b/></t>\n<m>\n</m></a>",
         "<a><t xml:space=\"preserve\">x<b/><m/></t></a>"},
        {"<a><t><![CDATA[x]]></t>\n<m/></a>", "<a><t><![CDATA[x]]><m/></t></a>"},
        {"<a><t>x</t>\n<m/></a>", "<a><t>x<m/></t></a>"},
        {"<a><t><b/></t>\n<m/></a>", "<a><t><b/>\r\n\t\t<m/></t></a>"},
    };
    for (const auto& [xml, written] : cases) {
        auto document = Parsed(xml);
        EXPECT_EQ(S_OK, First(document, "//t")->appendChild(First(document, "//m"), nullptr));
        EXPECT_EQ(written, XmlOf(RootOf(document))) << xml;
    }
}

TEST(DomText, KeepsBlanksWhereTheyCount) {
    auto document = NewDocument();
    EXPECT_EQ(S_OK, document->put_preserveWhiteSpace(VARIANT_TRUE));
    EXPECT_EQ(S_OK, Load(document, Bytes("<?xml version='1.0'?>\r\n<a>\r\n  <b> x </b>\n</a>\n")));
    EXPECT_EQ("<?xml version=\"1.0\"?><a>\r\n  <b> x </b>\r\n</a>", XmlOf(document));
    EXPECT_EQ("\n   x \n", TextOf(document));
    auto blank = Got(RootOf(document), &IXMLDOMNode::get_firstChild);
    EXPECT_EQ("#text", NameOf(blank));
}

TEST(DomText, IsTrimmedWhenAskedForButNotInTheTree) {
    const Rows<const char*, const char*, const char*> cases{
        {"<a> x  y\n</a>", "x  y", "<a> x  y\r\n</a>"},
        {"<a> <b> x</b> <c>y </c> </a>", "xy", "<a>\r\n\t<b> x</b>\r\n\t<c>y </c>\r\n</a>"},
        {"<a><![CDATA[ x ]]></a>", " x ", "<a><![CDATA[ x ]]></a>"},
        {"<a xml:space='preserve'> x </a>", " x ", "<a xml:space=\"preserve\"> x </a>"},
        {"<a>x<!-- c --><?p q?></a>", "x", "<a>x<!-- c --><?p q?></a>"},
        {"<a/>", "", "<a/>"},
    };
    for (const auto& [xml, text, written] : cases) {
        auto root = RootOf(Parsed(xml));
        EXPECT_EQ(text, TextOf(root)) << xml;
        EXPECT_EQ(written, XmlOf(root)) << xml;
        auto typed = Got(root, &IXMLDOMNode::get_nodeTypedValue);
        EXPECT_EQ(text, Narrow(typed.bstrVal));
    }
}

TEST(DomText, OfATextNodeIsTrimmedButNotItsValue) {
    auto document = Parsed("<a b=' y '> x <c/><![CDATA[ z ]]></a>");
    const Rows<const char*, const char*, const char*, const char*> cases = {
        {"/a/text()[1]", "x", " x ", " x "},
        {"/a/text()[2]", " z ", " z ", "<![CDATA[ z ]]>"},
        {"/a/@b", " y ", " y ", "b=\" y \""},
    };
    for (const auto& [query, text, value, xml] : cases) {
        auto node = First(document, query);
        EXPECT_EQ(text, TextOf(node)) << query;
        EXPECT_EQ(value, Narrow(Got(node, &IXMLDOMNode::get_nodeValue).bstrVal)) << query;
        EXPECT_EQ(value, Narrow(Got(node, &IXMLDOMNode::get_nodeTypedValue).bstrVal)) << query;
        EXPECT_EQ(xml, XmlOf(node));
    }
    auto ofAttribute = Got(First(document, "/a/@b"), &IXMLDOMNode::get_firstChild);
    EXPECT_EQ(" y ", TextOf(ofAttribute));
}

TEST(DomText, OfAnElementIsReplacedAndEscaped) {
    auto document = Parsed("<a> <b/>x<c/>\n</a>");
    auto root = RootOf(document);
    EXPECT_EQ(S_OK, root->put_text(Wide("<![CDATA[\n\xF0\x9F\x98\x80&]]>")));
    EXPECT_EQ("<a>&lt;![CDATA[\r\n\xF0\x9F\x98\x80&amp;]]&gt;</a>", XmlOf(root));
    EXPECT_EQ("<![CDATA[\n\xF0\x9F\x98\x80&]]>", TextOf(RootOf(Parsed(XmlOf(document)))));

    EXPECT_EQ(E_INVALIDARG, root->put_text(CComBSTR(L"\x01")));
    EXPECT_EQ(E_INVALIDARG, root->put_text(CComBSTR(L"\xD800")));
    EXPECT_EQ(E_INVALIDARG, root->put_text(CComBSTR(3, L"a\0b")));
    EXPECT_EQ("<![CDATA[\n\xF0\x9F\x98\x80&]]>", TextOf(root));
    EXPECT_EQ(S_OK, root->put_text(nullptr));
    EXPECT_EQ("<a/>", XmlOf(root));
    EXPECT_EQ(E_FAIL, document->put_text(Wide("x")));

    // A carriage return that is content comes back as one.
    EXPECT_EQ(S_OK, root->put_text(Wide("a\r\nb")));
    EXPECT_EQ("a\r\nb", TextOf(RootOf(Parsed(XmlOf(document)))));
}

TEST(DomText, DeclaresTheNamespacesOfNewNodes) {
    auto document = Parsed("<p:a xmlns:p='urn:p' xmlns='urn:d'/>");
    auto root = RootOf(document);
    const auto append = [&](std::string_view name, std::string_view uri) {
        CComPtr<IXMLDOMNode> node;
        EXPECT_EQ(S_OK, document->createNode(CComVariant(NODE_ELEMENT), Wide(name), Wide(uri), &node))
            << name;
        EXPECT_EQ(S_OK, root->appendChild(node, nullptr));
        return node;
    };
    append("p:b", "urn:p");
    append("p:c", "urn:other");
    append("q:d", "urn:q");
    auto plain = append("e", "");
    append("f", "urn:d");
    auto named = append("g", "urn:g");
    auto attribute =
        Got(document, &IXMLDOMDocument::createNode, CComVariant(NODE_ATTRIBUTE), Wide("x"), Wide("urn:q"));
    CComQIPtr<IXMLDOMElement> plainElement(plain.p);
    CComQIPtr<IXMLDOMAttribute> x(attribute.p);
    EXPECT_EQ(S_OK, plainElement->setAttributeNode(x, nullptr));
    EXPECT_EQ(
        "<p:a xmlns:p=\"urn:p\" xmlns=\"urn:d\"><p:b/><p:c xmlns:p=\"urn:other\"/><q:d xmlns:q=\"urn:q\"/>"
        "<e ns0:x=\"\" xmlns=\"\" xmlns:ns0=\"urn:q\"/><f/><g xmlns=\"urn:g\"/></p:a>",
        XmlOf(root));
    EXPECT_EQ("", AttributesOf(named)) << "only the text shows them";
    CComBSTR prefix;
    EXPECT_EQ(S_FALSE, named->get_prefix(&prefix));

    auto again = Parsed(XmlOf(document));
    EXPECT_EQ(S_OK, again->setProperty(CComBSTR(L"SelectionNamespaces"),
                                       Value("xmlns:o='urn:other' xmlns:q='urn:q' xmlns:d='urn:d'")));
    for (const char* query : {"//o:c", "//q:d", "//e[@q:x='']", "//d:f"})
        EXPECT_TRUE(First(again, query)) << query;
}

TEST(DomText, KeepsItsEncodingWhenSaved) {
    using namespace std::string_literals;
    for (const char* encoding : {"UTF-8", "utf-16", "ISO-8859-1"}) {
        const std::string path = ::testing::TempDir() + "dom-text.xml";
        auto document =
            Parsed("<?xml version='1.0' encoding='"s + encoding + "'?><a>\xC3\xBC \xE2\x82\xAC</a>");
        EXPECT_EQ(S_OK, document->save(Value(path)));
        auto again = NewDocument();
        EXPECT_EQ(S_OK, Load(again, Value(path))) << encoding << ": " << FailureOf(again).reason;
        EXPECT_EQ("\xC3\xBC \xE2\x82\xAC", TextOf(again)) << encoding;
        auto declaration = Got(again, &IXMLDOMNode::get_firstChild);
        auto value = Got(declaration, &IXMLDOMNode::get_nodeValue);
        EXPECT_EQ("version=\"1.0\" encoding=\""s + encoding + "\"", Narrow(value.bstrVal));
    }
    const auto save = [](const std::string& encoding, const std::string& content) {
        auto document = Parsed("<?xml version='1.0' encoding='" + encoding + "'?><a>" + content + "</a>");
        auto stream = StreamOf("");
        const HRESULT result = document->save(CComVariant(static_cast<IUnknown*>(stream.p)));
        if (FAILED(result)) return std::to_string(result);
        EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
        const std::string bytes = Rest(stream);
        return bytes.substr(bytes.find("?>") + 4);
    };
    const std::string fails = std::to_string(E_FAIL);
    EXPECT_EQ("<a>\xFC<![CDATA[\xFC]]>&#8364;<![CDATA[.]]></a>\r\n",
              save("ISO-8859-1", "\xC3\xBC<![CDATA[\xC3\xBC\xE2\x82\xAC.]]>"));
    EXPECT_EQ("<a>\x80</a>\r\n", save("windows-1252", "\xE2\x82\xAC"));
    for (const char* content : {"<\xC4\x8D/>", "<b \xC4\x8D='1'/>", "<!--\xC4\x8D-->", "<?p \xC4\x8D?>"})
        EXPECT_EQ(fails, save("ISO-8859-1", content)) << content;
    EXPECT_EQ(fails, save("nonesuch", ""));
    EXPECT_EQ(fails, save("HTML", "\xC3\xBC")) << "spells characters as XML does not know them";
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), Parsed("<a/>")->save(Value("/nonesuch/a.xml")));
}

TEST(DomText, OfADeclarationThatWasMadeKeepsItsEncoding) {
    auto document = Parsed("<?xml version=\"1.0\" encoding=\"utf-16\"?><a/>");
    auto first = Got(document, &IXMLDOMNode::get_firstChild);
    EXPECT_EQ("<?xml version=\"1.0\"?>", XmlOf(first));
    EXPECT_EQ("xml", NameOf(first));
    EXPECT_EQ(E_FAIL, first->put_text(Wide("version=\"1.0\""))) << "a declaration is replaced, not changed";
    EXPECT_EQ(E_FAIL, first->put_nodeValue(Value("version=\"1.0\"")));

    auto made = Got(document, &IXMLDOMDocument::createProcessingInstruction, CComBSTR(L"xml"),
                    Wide(" version='1.0' encoding='UTF-8'"));
    EXPECT_EQ(S_OK, document->replaceChild(made, first, nullptr));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a/>\r\n", XmlOf(document));
    EXPECT_EQ(E_FAIL, RootOf(document)->appendChild(first, nullptr)) << "only a document has one";
    EXPECT_EQ(E_FAIL, document->appendChild(first, nullptr)) << "and only in front";
    CComPtr<IXMLDOMProcessingInstruction> bad;
    EXPECT_EQ(E_INVALIDARG, document->createProcessingInstruction(CComBSTR(L"xml"), Wide("encoding"), &bad));
    EXPECT_EQ(E_INVALIDARG, document->createProcessingInstruction(CComBSTR(L"p"), Wide("a?>b"), &bad));
}

TEST(DomText, HasTypedValuesWhereAnElementNamesItsType) {
    auto document = Parsed("<r xmlns:dt='urn:schemas-microsoft-com:datatypes'><i dt:dt='int'> 42 </i>"
                           "<b dt:dt='bin.base64'>AAEC/w==</b><h dt:dt='bin.hex'>00ff7F</h>"
                           "<f dt:dt='boolean'>1</f><w dt:dt='int'>x</w></r>");
    auto value = Got(First(document, "//i"), &IXMLDOMNode::get_nodeTypedValue);
    EXPECT_EQ(VT_I4, value.vt);
    EXPECT_EQ(42, value.lVal);
    EXPECT_EQ(S_OK, First(document, "//f")->get_nodeTypedValue(&value));
    EXPECT_EQ(VT_BOOL, value.vt);
    EXPECT_EQ(VARIANT_TRUE, value.boolVal);
    EXPECT_EQ(E_FAIL, First(document, "//w")->get_nodeTypedValue(&value));

    const auto bytesOf = [](const VARIANT& array) {
        EXPECT_EQ(VT_ARRAY | VT_UI1, array.vt);
        return std::string(static_cast<char*>(array.parray->pvData), array.parray->rgsabound[0].cElements);
    };
    CComVariant base64, hex;
    EXPECT_EQ(S_OK, First(document, "//b")->get_nodeTypedValue(&base64));
    EXPECT_EQ(std::string("\0\1\2\xFF", 4), bytesOf(base64));
    EXPECT_EQ(S_OK, First(document, "//h")->get_nodeTypedValue(&hex));
    EXPECT_EQ(std::string("\0\xFF\x7F", 3), bytesOf(hex));

    for (std::size_t length = 0; length < 7; ++length) {
        const std::string bytes = std::string("\xFF\0\x80\x7F\x01\xFE", 6).substr(0, length);
        for (const char* query : {"//b", "//h"}) {
            CComVariant again;
            EXPECT_EQ(S_OK, First(document, query)->put_nodeTypedValue(Bytes(bytes)));
            EXPECT_EQ(S_OK, First(document, query)->get_nodeTypedValue(&again));
            EXPECT_EQ(bytes, bytesOf(again)) << query << length;
        }
    }
    CComVariant none;
    EXPECT_EQ(S_FALSE, document->get_nodeTypedValue(&none));
    EXPECT_EQ(VT_NULL, none.vt);

    auto root = RootOf(document);
    EXPECT_EQ(S_OK, root->put_dataType(CComBSTR(L"Bin.Hex"))) << "whatever its case";
    EXPECT_EQ(E_FAIL, root->put_dataType(CComBSTR(L"nonesuch")));
    EXPECT_EQ(E_INVALIDARG, root->put_dataType(nullptr));
    EXPECT_EQ(E_FAIL, document->put_dataType(CComBSTR(L"int")));
    auto type = Got(root, &IXMLDOMNode::get_dataType);
    EXPECT_EQ("Bin.Hex", Narrow(type.bstrVal));
}

} // namespace
