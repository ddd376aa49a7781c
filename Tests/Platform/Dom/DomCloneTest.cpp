#include "Platform/Dom/DomTestSupport.h"
#include "Support/Growth.h"

#include <Com/FaultInjection.h>

#include <functional>
#include <thread>
#include <vector>

namespace {

using Document = CComPtr<IXMLDOMDocument2>;

CComVariant Of(IUnknown* source) { return CComVariant(source); }

/// What a document makes of another one.
Document Clone(const Document& source) {
    auto clone = NewDocument();
    EXPECT_EQ(S_OK, Load(clone, Of(source)));
    return clone;
}

void Set(const Document& document, const char* value) {
    EXPECT_EQ(S_OK, RootOf(document)->setAttribute(CComBSTR(L"x"), Value(value)));
}

const std::string before = "<a x=\"1\" xmlns:p=\"urn:p\"><p:b/>t</a>\r\n";
const std::string after = "<a x=\"2\" xmlns:p=\"urn:p\"><p:b/>t</a>\r\n";

TEST(DomClone, IsIndependentInWhateverOrderBothAreUsed) {
    const struct {
        const char* name;
        std::function<void(Document& source, Document& clone)> use;
        std::string source, clone;
    } cases[] = {
        {"source edited", [](Document& source, Document&) { Set(source, "2"); }, after, before},
        {"clone edited", [](Document&, Document& clone) { Set(clone, "2"); }, before, after},
        {"clone read, source edited",
         [](Document& source, Document& clone) {
             XmlOf(clone);
             Set(source, "2");
         },
         after, before},
        {"source ends", [](Document& source, Document&) { source.Release(); }, "", before},
        {"source edited, then ends",
         [](Document& source, Document&) {
             Set(source, "2");
             source.Release();
         },
         "", before},
        {"source ends, of which a second clone is edited",
         [](Document& source, Document&) {
             const Document second = Clone(source);
             source.Release();
             Set(second, "2");
         },
         "", before},
        {"clone of the clone edited", [](Document&, Document& clone) { Set(Clone(clone), "2"); }, before,
         before},
        {"clone of the edited clone",
         [](Document& source, Document& clone) {
             Set(clone, "2");
             source = Clone(clone);
             clone.Release();
         },
         after, ""},
        {"source loaded anew",
         [](Document& source, Document&) { EXPECT_EQ(S_OK, Load(source, Of(Clone(Parsed(after))))); }, after,
         before},
        {"clone loaded anew",
         [](Document&, Document& clone) { EXPECT_EQ(S_OK, Load(clone, Of(Parsed(after)))); }, before, after},
        {"clone written", [](Document&, Document& clone) { EXPECT_EQ(S_OK, Parsed(after)->save(Of(clone))); },
         before, after},
    };
    for (const auto& each : cases) {
        auto source = Parsed(before);
        auto clone = Clone(source);
        each.use(source, clone);
        EXPECT_EQ(each.source, source ? XmlOf(source) : "") << each.name;
        EXPECT_EQ(each.clone, clone ? XmlOf(clone) : "") << each.name;
    }
}

TEST(DomClone, IsLeftAloneByEveryEditOfItsSource) {
    const struct {
        const char* query;
        void (*edit)(const Document& source, IXMLDOMNode* node);
    } cases[] = {
        {"/*/*",
         [](const Document& source, IXMLDOMNode* node) { RootOf(source)->removeChild(node, nullptr); }},
        {"/*/*",
         [](const Document& source, IXMLDOMNode* node) { RootOf(source)->appendChild(node, nullptr); }},
        {"/*/*",
         [](const Document& source, IXMLDOMNode* node) {
             RootOf(source)->replaceChild(NewElement(source, "n"), node, nullptr);
         }},
        {"/*/*",
         [](const Document&, IXMLDOMNode* node) { RootOf(Parsed("<o/>"))->appendChild(node, nullptr); }},
        {"/*/*", [](const Document&, IXMLDOMNode* node) { node->put_dataType(CComBSTR(L"int")); }},
        {"/*/text()", [](const Document&, IXMLDOMNode* node) { node->put_text(CComBSTR(L"u")); }},
        {"/*/@x", [](const Document&, IXMLDOMNode* node) { node->put_nodeValue(Value("2")); }},
        {"/*", [](const Document&, IXMLDOMNode* node) { node->put_text(CComBSTR(L"")); }},
        {"/*", [](const Document& source, IXMLDOMNode*) { RootOf(source)->removeAttribute(CComBSTR(L"x")); }},
        {"/*", [](const Document& source,
                  IXMLDOMNode*) { RootOf(source)->setAttribute(CComBSTR(L"xmlns:q"), Value("urn:q")); }},
        {"/*",
         [](const Document& source, IXMLDOMNode*) {
             RootOf(source)->setAttributeNode(NewAttribute(source, "p:y", "urn:p", "1"), nullptr);
         }},
    };
    for (const auto& each : cases) {
        const auto source = Parsed(before);
        const auto node = First(source, each.query);
        const auto clone = Clone(source);
        each.edit(source, node);
        EXPECT_NE(before, XmlOf(source)) << &each - cases;
        EXPECT_EQ(before, XmlOf(clone)) << &each - cases;
    }
}

TEST(DomClone, LeavesNodesOfBothWhatTheyWere) {
    auto source = Parsed(before);
    const auto node = First(source, "//*");
    auto clone = NewDocument();
    EXPECT_EQ(S_OK, clone->loadXML(CComBSTR(L"<old/>"), nullptr));
    const auto old = RootOf(clone);
    EXPECT_EQ(S_OK, Load(clone, Of(source)));
    EXPECT_EQ("old", NameOf(old));
    EXPECT_EQ(before, XmlOf(clone));
    source.Release();
    EXPECT_EQ("a", NameOf(node));
    EXPECT_EQ(before, XmlOf(Got(node, &IXMLDOMNode::get_ownerDocument)));
}

// Edits make trees that no text gives; a clone is what reading the text gives.
TEST(DomClone, IsAsItsTextIsReadBack) {
    using Edit = std::function<void(const Document& document, IXMLDOMNode* node)>;
    const auto text = [](const char* value) -> Edit {
        return [=](const Document&, IXMLDOMNode* node) { EXPECT_EQ(S_OK, node->put_text(Wide(value))); };
    };
    const auto append = [](const char* value) -> Edit {
        return [=](const Document& document, IXMLDOMNode* node) {
            EXPECT_EQ(S_OK, node->appendChild(Got(document, &IXMLDOMDocument::createTextNode, Wide(value)),
                                              nullptr));
        };
    };
    const auto set = [](const char* name, const char* value) -> Edit {
        return [=](const Document&, IXMLDOMNode* node) {
            EXPECT_EQ(S_OK, CComQIPtr<IXMLDOMElement>(node)->setAttribute(Wide(name), Value(value)));
        };
    };
    const auto remove = [](const char* query) -> Edit {
        return [=](const Document&, IXMLDOMNode* node) {
            const auto gone = First(node, query);
            EXPECT_EQ(S_OK, Got(gone, &IXMLDOMNode::get_parentNode)->removeChild(gone, nullptr));
        };
    };
    const auto nothing = [](const Document&, IXMLDOMNode*) {};
    const struct {
        const char* source;
        Edit edit;      ///< of the source's root
        Edit editClone; ///< of the clone's root, which shows what its text does not
        const char* clone;
        const char* count; ///< a query for what the clone's root then has so many of
        LONG counted;
    } cases[] = {
        {"<a>x</a>", append("y"), nothing, "<a>xy</a>", "text()", 1},
        {"<a><b/></a>", append(""), nothing, "<a><b/></a>", "node()", 1},
        {"<a><b/></a>", append(" "), append("z"), "<a><b/>z</a>", "node()", 2},
        {"<a x='1'/>", set("x", ""), nothing, "<a x=\"\"/>", "@x", 1},
        {"<a xml:space='preserve'>\n<b> </b></a>", set("xml:space", "default"), nothing,
         "<a xml:space=\"default\">\r\n\t<b>\r\n\t</b></a>", "descendant::text()", 0},
        {"<a>\n<b/></a>", set("xml:space", "preserve"), set("xml:space", "default"),
         "<a xml:space=\"default\"><b/></a>", "node()", 1},
        {"<a><![CDATA[x]]> <b/><![CDATA[y]]> </a>", nothing, remove("text()[1]"), "<a><b/><![CDATA[y]]></a>",
         "node()", 2},
        {"<a xmlns:p='urn:p'><b p:x='1'/></a>",
         [](const Document&, IXMLDOMNode* node) {
             CComQIPtr<IXMLDOMElement>(node)->removeAttribute(CComBSTR(L"xmlns:p"));
         },
         nothing, "<a><b p:x=\"1\" xmlns:p=\"urn:p\"/></a>", "b/@*", 1},
        {"<a><b/></a>",
         [](const Document& document, IXMLDOMNode* node) {
             node->appendChild(NewElement(document, "q:c", "urn:q"), nullptr);
         },
         nothing, "<a><b/><q:c xmlns:q=\"urn:q\"/></a>", "*", 2},
        {"<a>\n<b>\n</b></a>", text("t"), nothing, "<a>t</a>", "node()", 1},
        {"<a>\n<b>\n<c/>\n</b><d/></a>", set("x", "1"), nothing,
         "<a x=\"1\">\r\n\t<b>\r\n\t\t<c/>\r\n\t</b><d/></a>", "node()", 2},
        {"<a><![CDATA[x]]></a>",
         [](const Document& document, IXMLDOMNode* node) {
             node->appendChild(Got(document, &IXMLDOMDocument::createCDATASection, Wide("y")), nullptr);
         },
         nothing, "<a><![CDATA[xy]]></a>", "text()", 1},
        {"<a x='12'/>",
         [](const Document&, IXMLDOMNode* node) {
             CComPtr<IXMLDOMText> half;
             const auto value = Got(First(node, "@x"), &IXMLDOMNode::get_firstChild);
             EXPECT_EQ(S_OK, CComQIPtr<IXMLDOMText>(value)->splitText(1, &half));
         },
         nothing, "<a x=\"12\"/>", "@x[. = '12']", 1},
    };
    for (std::size_t at = 0; at < 2 * std::size(cases); ++at) {
        const auto& each = cases[at / 2];
        auto source = Parsed(each.source);
        each.edit(source, RootOf(source));
        const auto clone = Clone(source);
        if (at % 2 != 0) source.Release(); // what it leaves is the clone's
        const auto root = RootOf(clone);
        each.editClone(clone, root);
        EXPECT_EQ(each.clone, XmlOf(root)) << each.source;
        const auto list = Got(root, &IXMLDOMNode::selectNodes, Wide(each.count));
        EXPECT_EQ(each.counted, Got(list, &IXMLDOMNodeList::get_length)) << each.source;
    }
    // The value that is not there has a text, too, when it is read back.
    const auto source = Parsed("<a x='1'/>");
    Set(source, "");
    EXPECT_FALSE(First(source, "a/@x/text()"));
    EXPECT_TRUE(First(Clone(source), "a/@x"));
    auto clone = Clone(source);
    for (int again = 0; again < 2; ++again) {
        CComPtr<IXMLDOMNode> value;
        EXPECT_EQ(S_OK, First(clone, "a/@x")->get_firstChild(&value));
        clone = [] {
            const auto gone = Parsed("<a x='1'/>");
            Set(gone, "");
            return Clone(gone);
        }();
    }
    // So is a namespace that only the writer declares.
    const auto foreign = Parsed("<a/>");
    EXPECT_EQ(S_OK, RootOf(foreign)->appendChild(NewElement(foreign, "q:c", "urn:q"), nullptr));
    EXPECT_EQ("xmlns:q=urn:q", AttributesOf(First(Clone(foreign), "a/*")));
    // A declaration that a program made is then one that was read.
    const auto made = Parsed("<a/>");
    const auto declaration = Got(made, &IXMLDOMDocument::createProcessingInstruction, Wide("xml"),
                                 Wide("version='1.0' encoding='UTF-8'"));
    EXPECT_EQ(S_OK, made->insertBefore(declaration, Of(RootOf(made)), nullptr));
    EXPECT_EQ("<?xml version=\"1.0\"?>\r\n<a/>\r\n", XmlOf(Clone(made)));
}

TEST(DomClone, IsRefusedWhereItsTextIs) {
    using Settings = std::function<void(const Document& clone)>;
    const auto property = [](const char* name, LONG value) -> Settings {
        return [=](const Document& clone) {
            EXPECT_EQ(S_OK, clone->setProperty(Wide(name), CComVariant(value)));
        };
    };
    const Settings none = [](const Document&) {};
    const std::string large = "<a>" + std::string(3000, 'x') + "</a>";
    const std::string escaped = "<a>" + Times(500, [](std::size_t) { return "&amp;"; }) + "</a>";
    const struct {
        std::string text;
        Settings set;
        HRESULT result;
        HRESULT code;
    } cases[] = {
        {"<a><b><c/></b></a>", property("MaxElementDepth", 2), S_FALSE, static_cast<HRESULT>(0xC00CE586)},
        {"<a><b><c/></b></a>", property("MaxElementDepth", 3), S_OK, S_OK},
        {large, property("MaxXMLSize", 2), S_FALSE, static_cast<HRESULT>(0xC00CE587)},
        {large, property("MaxXMLSize", 3), S_OK, S_OK},
        {escaped, property("MaxXMLSize", 2), S_FALSE, static_cast<HRESULT>(0xC00CE587)},
        {"<?xml version='1.0' encoding='unknown'?><a/>", none, E_FAIL, S_OK},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE2\x82\xAC</a>", none, S_OK, S_OK},
    };
    for (const auto& each : cases) {
        const auto source = Parsed(each.text);
        for (const bool isOpened : {false, true}) {
            if (isOpened) Set(source, "1"); // and what it would read is not known ahead
            const auto clone = NewDocument();
            each.set(clone);
            EXPECT_EQ(each.result, Load(clone, Of(source))) << each.text.substr(0, 40);
            EXPECT_EQ(each.code, FailureOf(clone).code) << each.text.substr(0, 40);
            if (each.result == S_OK) {
                EXPECT_EQ(XmlOf(source), XmlOf(clone));
            }
        }
    }
    EXPECT_EQ(S_FALSE, Load(NewDocument(), Of(NewDocument()))) << "an empty document";
    auto clone = NewDocument();
    EXPECT_EQ(S_OK, clone->put_preserveWhiteSpace(VARIANT_TRUE));
    EXPECT_EQ(S_OK, Load(clone, Of(Parsed("<a> <b/></a>"))));
    EXPECT_EQ("\n\t", TextOf(RootOf(clone)));
    // What is set behind it is for the next text.
    const auto source = Parsed("<a> <b/> </a>");
    clone = Clone(source);
    EXPECT_EQ(S_OK, clone->put_preserveWhiteSpace(VARIANT_TRUE));
    EXPECT_EQ("<a>\r\n\t<b/>\r\n</a>\r\n", XmlOf(clone));
    EXPECT_EQ(VARIANT_TRUE, Got(clone, &IXMLDOMDocument::get_preserveWhiteSpace));
}

TEST(DomClone, LeavesTheStreamBehindTheText) {
    const auto source = Parsed("<a x='1'/>");
    CComPtr<IStream> stream;
    ASSERT_EQ(S_OK, source->QueryInterface(&stream));
    const auto place = [&] {
        ULARGE_INTEGER at{};
        EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_CUR, &at));
        return at.QuadPart;
    };
    const std::string text = "<a x=\"1\"/>\r\n";
    EXPECT_EQ(before.size(), XmlOf(Clone(Parsed(before))).size());
    auto clone = Clone(source);
    EXPECT_EQ("", Rest(stream));
    EXPECT_EQ(S_FALSE, Load(NewDocument(), Of(stream))) << "nothing is left";
    EXPECT_EQ(text.size(), place());
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    EXPECT_EQ(S_OK, Load(clone, Of(stream)));
    Set(source, "22");
    EXPECT_EQ(text.size(), place()) << "of the text that was taken";
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    EXPECT_EQ("<a x=\"22\"/>\r\n", Rest(stream));
    EXPECT_EQ("<a x=\"1\"/>\r\n", XmlOf(clone));
    ASSERT_EQ(S_OK, (stream.Release(), Clone(clone)->QueryInterface(&stream)));
    EXPECT_EQ(text, Rest(stream)) << "of one that nobody opened";
}

TEST(DomClone, AFailureAtAnyCallLeavesBothAsTheyWereOrAsAsked) {
    const auto run = [](LONG call) {
        const auto source = Parsed(before);
        const auto root = RootOf(source);
        const auto clone = NewDocument();
        const CComBSTR name(L"x");
        const CComVariant value = Value("2");
        const CComVariant from = Of(source);
        HRESULT loaded = E_FAIL;
        HRESULT edited = E_FAIL;
        {
            const OvPlatform::FaultInjectionScope fault(call);
            VARIANT_BOOL isLoaded = VARIANT_FALSE;
            loaded = clone->load(from, &isLoaded);
            edited = root->setAttribute(name, value);
            if (loaded == S_OK) {
                CComPtr<IXMLDOMElement> element;
                EXPECT_TRUE(clone->get_documentElement(&element) == S_OK ||
                            OvPlatform::FaultInjection::HasFailed());
            }
            EXPECT_EQ(call <= OvPlatform::FaultInjection::CallCount(),
                      OvPlatform::FaultInjection::HasFailed());
        }
        EXPECT_EQ(edited == S_OK ? after : before, XmlOf(source)) << call;
        EXPECT_EQ(loaded == S_OK ? before : "", XmlOf(clone)) << call;
        return OvPlatform::FaultInjection::CallCount();
    };
    const LONG calls = run(1000);
    EXPECT_GE(calls, 4);
    for (LONG call = 1; call <= calls; ++call)
        run(call);
}

TEST(DomClone, MayGoItsWayOnAnotherThread) {
    constexpr int rounds = 60;
    for (int round = 0; round < rounds; ++round) {
        auto source = Parsed(before);
        if (round % 2 != 0) RootOf(source);
        constexpr int count = 3;
        std::vector<std::thread> threads;
        threads.reserve(count);
        for (int number = 0; number < count; ++number)
            threads.emplace_back([clone = Clone(source), number]() mutable {
                const auto second = Clone(clone);
                if (number == 1) Set(clone, "2");
                EXPECT_EQ(number == 1 ? after : before, XmlOf(clone));
                clone.Release();
                EXPECT_EQ(before, XmlOf(second));
            });
        // Reading gives nodes objects, makes lists and attributes, and finds what queries ask for.
        const auto root = RootOf(source);
        EXPECT_EQ("x=1 xmlns:p=urn:p", AttributesOf(root));
        EXPECT_EQ(2, Got(Got(root, &IXMLDOMNode::get_childNodes), &IXMLDOMNodeList::get_length));
        SelectWith(source, "xmlns:p='urn:p'");
        EXPECT_TRUE(First(source, "//p:b"));
        NewElement(source, "p:new", "urn:p");
        if (round % 3 == 0) Set(source, "2");
        source.Release();
        for (std::thread& thread : threads)
            thread.join();
    }
}

} // namespace
