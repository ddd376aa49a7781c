#include "Platform/Dom/DomTestSupport.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"

namespace {

TEST(DomText, IsWrittenInOneForm) {
    const Rows<const char*, const char*> cases{
        {"<a/>", "<a/>\r\n"},
        {"<?xml version = \"1.0\"  standalone='no'?>\n<!--c--><a/><?p d?>",
         "<?xml version=\"1.0\" standalone=\"no\"?>\r\n<!--c-->\r\n<a/>\r\n<?p d?>\r\n"},
        {"<a b='&lt;&amp;&quot;&apos;&#9;&#10;&#13;>'>&lt;&amp;\"'&gt;&#13;</a>",
         "<a b=\"&lt;&amp;&quot;'&#9;&#10;&#13;&gt;\">&lt;&amp;\"'&gt;&#13;</a>\r\n"},
        {"<a>x\ny\r\nz\rw</a>", "<a>x\r\ny\r\nz\r\nw</a>\r\n"},
        {"<a><![CDATA[<&]]><!--a\nb--><?t  d?></a>", "<a><![CDATA[<&]]><!--a\r\nb--><?t d?></a>\r\n"},
        // Blanks between elements are no content, but the breaks stay.
        {"<a>\n\n  <b> </b> <c/>\n <!--x-->\n</a>",
         "<a>\r\n\t<b>\r\n\t</b>\r\n\t<c/>\r\n\t<!--x-->\r\n</a>\r\n"},
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
    EXPECT_EQ(VARIANT_TRUE, Got(again, &IXMLDOMDocument::loadXML, Wide(XmlOf(written)))) << XmlOf(written);
    return TextOf(RootOf(again));
}

TEST(DomText, OfSectionsCommentsAndInstructionsIsWhatAReaderFinds) {
    auto document = Parsed("<a>\n</a>");
    auto root = RootOf(document);
    auto section = Got(document, &IXMLDOMDocument::createCDATASection, Wide("x\r\ny\rz"));
    EXPECT_EQ(S_OK, root->appendChild(section, nullptr));
    EXPECT_EQ("<a><![CDATA[x\r\ny\r\nz]]></a>", XmlOf(root)) << "no break that would be content";
    EXPECT_EQ("x\ny\nz", ReadBack(root));
    EXPECT_EQ(S_OK, section->appendData(Wide("]]>\r\n")));
    EXPECT_EQ("x\ny\nz]]>\n", ReadBack(root));

    auto instruction =
        Got(document, &IXMLDOMDocument::createProcessingInstruction, CComBSTR(L"p"), Wide(" \r\n d?\r\n"));
    EXPECT_EQ("<?p d?\r\n?>", XmlOf(instruction));

    const Rows<const wchar_t*, const char*> bad{{L"xml", "version='2.0'"},
                                                {L"xml", "version='1.0' encoding='1:a'"},
                                                {L"xml", "version='1.0' standalone='maybe'"},
                                                {L"xml", "encoding"},
                                                {L"p", "a?>b"}};
    for (const auto& [target, data] : bad) {
        CComPtr<IXMLDOMProcessingInstruction> none;
        EXPECT_EQ(E_INVALIDARG, document->createProcessingInstruction(CComBSTR(target), Wide(data), &none));
    }
}

TEST(DomText, BreaksNoLineWhereItWouldBeContent) {
    // xml: the element m moves to the end of the element t
    const Rows<const char*, const char*> cases{
        {"<a><t xml:space='preserve'>x<b/></t>\n<m>\n</m></a>",
         "<a><t xml:space=\"preserve\">x<b/><m/></t></a>"},
        {"<a><t><![CDATA[x]]></t>\n<m/></a>", "<a><t><![CDATA[x]]><m/></t></a>"},
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
}

TEST(DomText, IsTrimmedWhenAskedForButNotInTheTree) {
    const Rows<const char*, const char*, const char*, const char*, const char*> cases{
        {"<a> x  y\n</a>", "/a", "x  y", "", "<a> x  y\r\n</a>"},
        {"<a> <b> x</b> <c>y </c> </a>", "/a", "xy", "", "<a>\r\n\t<b> x</b>\r\n\t<c>y </c>\r\n</a>"},
        {"<a xml:space='preserve'> x </a>", "/a", " x ", "", "<a xml:space=\"preserve\"> x </a>"},
        {"<a>x<!-- c --><?p q?></a>", "/a", "x", "", "<a>x<!-- c --><?p q?></a>"},
        {"<a> x <c/></a>", "/a/text()", "x", " x ", " x "},
        {"<a><c/><![CDATA[ z ]]></a>", "/a/text()", " z ", " z ", "<![CDATA[ z ]]>"},
        {"<a b=' y '/>", "/a/@b", " y ", " y ", "b=\" y \""},
    };
    for (const auto& [document, query, text, value, written] : cases) {
        auto node = First(Parsed(document), query);
        EXPECT_EQ(text, TextOf(node)) << document;
        EXPECT_EQ(written, XmlOf(node)) << document;
        const bool hasValue = *value != 0;
        EXPECT_EQ(hasValue ? value : text, Narrow(Got(node, &IXMLDOMNode::get_nodeTypedValue).bstrVal));
        if (hasValue) {
            EXPECT_EQ(value, Narrow(Got(node, &IXMLDOMNode::get_nodeValue).bstrVal)) << document;
        }
    }
    EXPECT_EQ(" y ", TextOf(Got(First(Parsed("<a b=' y '/>"), "/a/@b"), &IXMLDOMNode::get_firstChild)));
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
        return Got(root, &IXMLDOMNode::appendChild, NewElement(document, name, uri));
    };
    append("p:c", "urn:other");
    const CComQIPtr<IXMLDOMElement> plain(append("e", ""));
    EXPECT_EQ(S_OK, plain->setAttributeNode(NewAttribute(document, "x", "urn:q"), nullptr));
    append("f", "urn:d");
    auto named = append("g", "urn:g");
    EXPECT_EQ("<p:a xmlns:p=\"urn:p\" xmlns=\"urn:d\"><p:c xmlns:p=\"urn:other\"/>"
              "<e ns0:x=\"\" xmlns=\"\" xmlns:ns0=\"urn:q\"/><f/><g xmlns=\"urn:g\"/></p:a>",
              XmlOf(root));
    EXPECT_EQ("", AttributesOf(named)) << "only the text shows them";
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
        auto value = Got(Got(again, &IXMLDOMNode::get_firstChild), &IXMLDOMNode::get_nodeValue);
        EXPECT_EQ("version=\"1.0\" encoding=\""s + encoding + "\"", Narrow(value.bstrVal));
    }
    const auto save = [](const std::string& encoding, const std::string& content) {
        auto document = Parsed("<?xml version='1.0' encoding='" + encoding + "'?><a>" + content + "</a>");
        auto stream = StreamOf("");
        const HRESULT result = document->save(CComVariant(static_cast<IUnknown*>(stream.p)));
        if (FAILED(result)) return std::to_string(result);
        const std::string bytes = ReadAll(stream);
        return bytes.substr(bytes.find("?>") + 4);
    };
    const std::string fails = std::to_string(E_FAIL);
    EXPECT_EQ("<a>\xFC<![CDATA[\xFC]]>&#8364;<![CDATA[.]]></a>\r\n",
              save("ISO-8859-1", "\xC3\xBC<![CDATA[\xC3\xBC\xE2\x82\xAC.]]>"));
    for (const char* content : {"<\xC4\x8D/>", "<b \xC4\x8D='1'/>", "<!--\xC4\x8D-->", "<?p \xC4\x8D?>"})
        EXPECT_EQ(fails, save("ISO-8859-1", content)) << content;
    EXPECT_EQ(fails, save("nonesuch", ""));
    EXPECT_EQ(fails, save("HTML", "\xC3\xBC")) << "spells characters as XML does not know them";
}

TEST(DomText, OfADeclarationThatWasMadeKeepsItsEncoding) {
    auto document = Parsed("<?xml version=\"1.0\" encoding=\"utf-16\"?><a/>");
    auto first = Got(document, &IXMLDOMNode::get_firstChild);
    EXPECT_EQ("<?xml version=\"1.0\"?>", XmlOf(first));
    EXPECT_EQ(E_FAIL, first->put_text(Wide("version=\"1.0\""))) << "a declaration is replaced, not changed";
    EXPECT_EQ(E_FAIL, first->put_nodeValue(Value("version=\"1.0\"")));

    auto made = Got(document, &IXMLDOMDocument::createProcessingInstruction, CComBSTR(L"xml"),
                    Wide(" version='1.0' encoding='UTF-8'"));
    EXPECT_EQ(S_OK, document->replaceChild(made, first, nullptr));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a/>\r\n", XmlOf(document));
    EXPECT_EQ(E_FAIL, RootOf(document)->appendChild(first, nullptr)) << "only a document has one";
    EXPECT_EQ(E_FAIL, document->appendChild(first, nullptr)) << "and only in front";
    const auto comment = Got(document, &IXMLDOMDocument::createComment, Wide("c"));
    EXPECT_EQ(E_FAIL, document->insertBefore(comment, CComVariant(static_cast<IUnknown*>(made.p)), nullptr));
}

TEST(DomText, HasTypedValuesWhereAnElementNamesItsType) {
    auto document = Parsed("<r xmlns:dt='urn:schemas-microsoft-com:datatypes'><i dt:dt='int'> 42 </i>"
                           "<b dt:dt='bin.base64'/><h dt:dt='Bin.Hex'>fF 0A</h><f dt:dt='boolean'>1</f></r>");
    const auto typed = [&](std::string_view query) {
        return Got(First(document, query), &IXMLDOMNode::get_nodeTypedValue);
    };
    EXPECT_EQ(VT_I4, typed("//i").vt);
    EXPECT_EQ(42, typed("//i").lVal);
    EXPECT_EQ(VT_BOOL, typed("//f").vt);
    EXPECT_EQ(VARIANT_TRUE, typed("//f").boolVal);
    const auto bytesAt = [&](std::string_view query) {
        const CComVariant array = typed(query);
        EXPECT_EQ(VT_ARRAY | VT_UI1, array.vt);
        return std::string(static_cast<char*>(array.parray->pvData), array.parray->rgsabound[0].cElements);
    };
    EXPECT_EQ("\xFF\n", bytesAt("//h")) << "whatever the case of its letters";
    const Rows<std::string, const char*, const char*> cases{
        {"", "", ""},
        {"\xFF", "/w==", "ff"},
        {{"\xFF\0", 2}, "/wA=", "ff00"},
        {{"\xFF\0\x7F", 3}, "/wB/", "ff007f"},
    };
    for (const auto& [bytes, base64, hex] : cases) {
        for (const auto& [query, text] : {std::pair("//b", base64), std::pair("//h", hex)}) {
            EXPECT_EQ(S_OK, First(document, query)->put_nodeTypedValue(Bytes(bytes)));
            EXPECT_EQ(text, TextOf(First(document, query)));
            EXPECT_EQ(bytes, bytesAt(query));
        }
    }
    CComVariant none;
    EXPECT_EQ(S_OK, First(document, "//i")->put_text(Wide("x")));
    EXPECT_EQ(E_FAIL, First(document, "//i")->get_nodeTypedValue(&none));
    EXPECT_EQ(S_FALSE, document->get_nodeTypedValue(&none));
}

} // namespace
