#include "Platform/Dom/DomTestSupport.h"
#include "Support/Growth.h"

#include <functional>
#include <vector>

namespace {

using Node = CComPtr<IXMLDOMNode>;
using Document = CComPtr<IXMLDOMDocument2>;

std::string Children(std::size_t n) {
    return "<r xmlns:p='urn:p'>" + Times(n, [](std::size_t) { return "<p:c a='1'>x</p:c>\n"; }) + "</r>";
}

std::string Named(std::size_t n) {
    return "<r>" + Times(n, [](std::size_t i) { return "<c name='" + std::to_string(i) + "'/>"; }) + "</r>";
}

void Load(const std::string& xml) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    NewDocument()->loadXML(Wide(xml), &loaded);
}

void Parse(const std::string& xml) {
    CComPtr<ISAXXMLReader> reader;
    ASSERT_EQ(S_OK, reader.CoCreateInstance(__uuidof(SAXXMLReader60)));
    reader->putFeature(CComBSTR(L"http://xml.org/sax/features/namespace-prefixes"), VARIANT_TRUE);
    reader->parse(Value(xml));
}

// Both readers on a text of n items.
GrowthMaker Reading(void (*read)(const std::string&), std::function<std::string(std::size_t)> makeText) {
    return [=](std::size_t n) { return [read, text = makeText(n)] { read(text); }; };
}

std::string ManyAttributes(std::size_t n) {
    return "<a" + Times(n, [](std::size_t i) { return " a" + std::to_string(i) + "=''"; }) + "/>";
}

// So many declarations in force, and so many elements under the first of them.
std::string DeclarationsInForce(std::size_t n) {
    constexpr std::size_t levels = 200;
    std::string text = "<a xmlns:f='urn:f'>";
    for (std::size_t level = 0; level < levels; ++level)
        text += "<a" +
                Times(n / levels,
                      [&](std::size_t i) {
                          return " xmlns:p" + std::to_string(level) + "_" + std::to_string(i) + "='u'";
                      }) +
                ">";
    text += Times(n, [](std::size_t) { return "<f:a/>"; });
    return text + Times(levels + 1, [](std::size_t) { return "</a>"; });
}

std::string References(std::size_t n) {
    return "<a>" + Times(n, [](std::size_t) { return "x&amp;\r\n<![CDATA[y]]>"; }) + "</a>";
}

struct Tree {
    Document document;
    Node root;
};

Tree Made(const std::string& xml) {
    Tree tree{Parsed(xml), {}};
    tree.root = RootOf(tree.document);
    return tree;
}

// An operation on a document that is there.
GrowthMaker On(std::function<std::string(std::size_t)> makeText,
               std::function<void(Tree&, std::size_t)> operate) {
    return [=](std::size_t n) {
        return [operate, n, tree = std::make_shared<Tree>(Made(makeText(n)))] { operate(*tree, n); };
    };
}
std::string Nothing(std::size_t) { return "<r/>"; }

enum class Release { OutsideIn, InsideOut };

// Nested elements, made from the outside or the inside, whose objects end in some order.
GrowthMaker Nesting(bool fromOutside, Release order) {
    return On(Nothing, [=](Tree& tree, std::size_t n) {
        std::vector<Node> nodes;
        for (std::size_t i = 0; i < n; ++i) {
            Node node = NewElement(tree.document, "e", "urn:e");
            if (i != 0) {
                const auto& [outer, inner] =
                    fromOutside ? std::pair(nodes.back(), node) : std::pair(node, nodes.back());
                EXPECT_EQ(S_OK, outer->appendChild(inner, nullptr));
            }
            nodes.push_back(node);
        }
        if ((order == Release::OutsideIn) != fromOutside) std::reverse(nodes.begin(), nodes.end());
        for (Node& node : nodes)
            node.Release();
    });
}

const GrowthCase cases[] = {
    {"LoadsChildren", Reading(Load, Children)},
    {"LoadsAttributes", Reading(Load, ManyAttributes)},
    {"LoadsDeclarationsInForce", Reading(Load, DeclarationsInForce)},
    {"LoadsReferences", Reading(Load, References)},
    {"ParsesChildren", Reading(Parse, Children)},
    {"ParsesDeclarationsInForce", Reading(Parse, DeclarationsInForce)},
    {"ClonesAndReads",
     On(Children,
        [](Tree& tree, std::size_t) {
            const auto clone = NewDocument();
            EXPECT_EQ(S_OK, Load(clone, CComVariant(static_cast<IUnknown*>(tree.document.p))));
            RootOf(clone);
        }),
     32768}, // what is larger may be written and read
    {"ClonesWhatWasEdited",
     On(DeclarationsInForce,
        [](Tree& tree, std::size_t) {
            EXPECT_EQ(S_OK, tree.root->appendChild(NewElement(tree.document, "f:e", "urn:f"), nullptr));
            const auto clone = NewDocument();
            EXPECT_EQ(S_OK, Load(clone, CComVariant(static_cast<IUnknown*>(tree.document.p))));
            RootOf(clone);
        }),
     1000},
    {"GivesItsText", On(Children, [](Tree& tree, std::size_t) { XmlOf(tree.document); })},
    {"GivesTheTextOfAllInIt", On(Children, [](Tree& tree, std::size_t) { TextOf(tree.root); })},
    {"TakesItsTextInPieces",
     [](std::size_t n) {
         return [text = Children(n)] {
             const auto document = NewDocument();
             CComPtr<IStream> stream;
             EXPECT_EQ(S_OK, document->QueryInterface(&stream));
             for (std::size_t at = 0; at < text.size(); at += 7)
                 stream->Write(text.data() + at,
                               static_cast<ULONG>(std::min<std::size_t>(7, text.size() - at)), nullptr);
             EXPECT_EQ(S_OK, stream->Commit(0));
         };
     }},
    {"ChangesChildrenByNumber", On(Children,
                                   [](Tree& tree, std::size_t n) {
                                       const auto list = Got(tree.root, &IXMLDOMNode::get_childNodes);
                                       for (LONG i = 0; i < static_cast<LONG>(n); ++i) {
                                           Got(list, &IXMLDOMNodeList::get_length);
                                           const Node node = Got(list, &IXMLDOMNodeList::get_item, i);
                                           EXPECT_EQ(S_OK, node->put_text(CComBSTR(L"y")));
                                       }
                                   })},
    {"RemovesASelection", On(Children,
                             [](Tree& tree, std::size_t) {
                                 const auto list = Got(tree.root, &IXMLDOMNode::selectNodes, CComBSTR(L"*"));
                                 Node node;
                                 while (list->nextNode(&node) == S_OK) {
                                     EXPECT_EQ(S_OK, tree.root->removeChild(node, nullptr));
                                     node.Release();
                                 }
                             })},
    {"SelectsAgainWhileALargePieceIsOutside",
     On(Children,
        [](Tree& tree, std::size_t n) {
            EXPECT_EQ(S_OK, tree.document->removeChild(tree.root, nullptr));
            const Node last = Got(tree.root, &IXMLDOMNode::get_lastChild);
            tree.root.Release();
            for (std::size_t i = 0; i < n; ++i)
                EXPECT_TRUE(First(last, "text()"));
        })},
    {"AsksBetweenChanges", On(Named,
                              [](Tree& tree, std::size_t n) {
                                  for (std::size_t i = 0; i < n; ++i) {
                                      const std::string own = "//c[@name=\"" + std::to_string(i) + "\"]";
                                      const CComQIPtr<IXMLDOMElement> element(First(tree.root, own).p);
                                      element->setAttribute(CComBSTR(L"name"), Value("new"));
                                      element->setAttribute(CComBSTR(L"other"), Value("new"));
                                      EXPECT_FALSE(First(tree.root, own));
                                      EXPECT_EQ(S_OK, tree.root->removeChild(element, nullptr));
                                      element->setAttribute(CComBSTR(L"name"), Value(std::to_string(n + i)));
                                      EXPECT_EQ(S_OK, tree.root->appendChild(element, nullptr));
                                      EXPECT_EQ(S_OK, element->put_text(CComBSTR(L"t")));
                                  }
                              })},
    {"MakesNodesOfManyNamespaces", On(Nothing,
                                      [](Tree& tree, std::size_t n) {
                                          for (std::size_t i = 0; i < n; ++i) {
                                              const Node node = NewElement(tree.document, "p:e",
                                                                           "urn:" + std::to_string(i));
                                              EXPECT_EQ(S_OK, tree.root->appendChild(node, nullptr));
                                          }
                                          XmlOf(tree.document);
                                      })},
    {"CopiesAndMovesBetweenDocuments",
     On(Children,
        [](Tree& tree, std::size_t) {
            const Node clone = Got(tree.root, &IXMLDOMNode::cloneNode, VARIANT_TRUE);
            EXPECT_EQ(S_OK, NewDocument()->appendChild(clone, nullptr));
            EXPECT_EQ(S_OK, tree.document->replaceChild(clone, tree.root, nullptr));
        })},
    {"NestsOutsideReleasesOutsideIn", Nesting(true, Release::OutsideIn)},
    {"NestsOutsideReleasesInsideOut", Nesting(true, Release::InsideOut)},
    {"NestsFromInsideReleasesInsideOut", Nesting(false, Release::InsideOut)},
};

class DomGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(DomGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, DomGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
