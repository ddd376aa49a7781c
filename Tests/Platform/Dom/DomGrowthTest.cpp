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

void Load(const std::string& xml) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const auto document = NewDocument();
    document->loadXML(Wide(xml), &loaded);
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

std::string ManyDeclarations(std::size_t n) {
    return "<a" + Times(n, [](std::size_t i) { return " xmlns:a" + std::to_string(i) + "='u'"; }) + "/>";
}

// So many declarations in force, and so many elements under the first of them.
std::string DeclarationsInForce(std::size_t n) {
    constexpr std::size_t Levels = 200;
    std::string text = "<a xmlns:f='urn:f'>";
    for (std::size_t level = 0; level < Levels; ++level)
        text += "<a" +
                Times(n / Levels,
                      [&](std::size_t i) {
                          return " xmlns:p" + std::to_string(level) + "_" + std::to_string(i) + "='u'";
                      }) +
                ">";
    text += Times(n, [](std::size_t) { return "<f:a/>"; });
    return text + Times(Levels + 1, [](std::size_t) { return "</a>"; });
}

std::string References(std::size_t n) {
    return "<a>" + Times(n, [](std::size_t) { return "x&amp;\r\n<![CDATA[y]]>"; }) + "</a>";
}

std::string Blanks(std::size_t n) { return "<a>" + std::string(100 * n, ' ') + "</a>"; }

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

Node NewNode(IXMLDOMDocument2* document, const wchar_t* name = L"e", const wchar_t* uri = L"urn:e") {
    Node node;
    EXPECT_EQ(S_OK, document->createNode(CComVariant(NODE_ELEMENT), CComBSTR(name), CComBSTR(uri), &node));
    return node;
}

enum class Release { OutsideIn, InsideOut };

// Nested elements, made from the outside or the inside, whose objects end in some order.
GrowthMaker Nesting(bool inDocument, bool fromOutside, Release order) {
    return On(Nothing, [=](Tree& tree, std::size_t n) {
        std::vector<Node> nodes;
        for (std::size_t i = 0; i < n; ++i) {
            Node node = NewNode(tree.document);
            if (i != 0) {
                const auto& [outer, inner] =
                    fromOutside ? std::pair(nodes.back(), node) : std::pair(node, nodes.back());
                EXPECT_EQ(S_OK, outer->appendChild(inner, nullptr));
            }
            nodes.push_back(node);
        }
        if (inDocument) {
            EXPECT_EQ(S_OK, tree.root->appendChild(fromOutside ? nodes.front() : nodes.back(), nullptr));
        }
        if ((order == Release::OutsideIn) != fromOutside) std::reverse(nodes.begin(), nodes.end());
        for (Node& node : nodes)
            node.Release();
    });
}

const GrowthCase Cases[] = {
    {"LoadsChildren", Reading(Load, Children)},
    {"LoadsAttributes", Reading(Load, ManyAttributes)},
    {"LoadsDeclarations", Reading(Load, ManyDeclarations)},
    {"LoadsDeclarationsInForce", Reading(Load, DeclarationsInForce)},
    {"LoadsReferences", Reading(Load, References)},
    {"LoadsBlanks", Reading(Load, Blanks)},
    {"ParsesChildren", Reading(Parse, Children)},
    {"ParsesAttributes", Reading(Parse, ManyAttributes)},
    {"ParsesDeclarations", Reading(Parse, ManyDeclarations)},
    {"ParsesDeclarationsInForce", Reading(Parse, DeclarationsInForce)},
    {"ParsesReferences", Reading(Parse, References)},
    {"GivesItsText", On(Children, [](Tree& tree, std::size_t) { XmlOf(tree.document); })},
    {"GivesTheTextOfAllInIt", On(Children, [](Tree& tree, std::size_t) { TextOf(tree.root); })},
    {"GivesItsTextInPieces", On(Children,
                                [](Tree& tree, std::size_t) {
                                    CComPtr<IStream> stream;
                                    EXPECT_EQ(S_OK, tree.document->QueryInterface(&stream));
                                    Rest(stream);
                                })},
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
    {"WalksChildrenByNumber", On(Children,
                                 [](Tree& tree, std::size_t) {
                                     CComPtr<IXMLDOMNodeList> list;
                                     EXPECT_EQ(S_OK, tree.root->get_childNodes(&list));
                                     LONG length = 1;
                                     for (LONG i = 0; i < length; ++i) {
                                         EXPECT_EQ(S_OK, list->get_length(&length));
                                         Node node;
                                         EXPECT_EQ(S_OK, list->get_item(i, &node));
                                     }
                                 })},
    {"ChangesChildrenByNumber", On(Children,
                                   [](Tree& tree, std::size_t n) {
                                       CComPtr<IXMLDOMNodeList> list;
                                       EXPECT_EQ(S_OK, tree.root->get_childNodes(&list));
                                       for (LONG i = 0; i < static_cast<LONG>(n); ++i) {
                                           Node node;
                                           EXPECT_EQ(S_OK, list->get_item(i, &node));
                                           EXPECT_EQ(S_OK, node->put_text(CComBSTR(L"y")));
                                       }
                                   })},
    {"WalksASelection", On(Children,
                           [](Tree& tree, std::size_t) {
                               CComPtr<IXMLDOMNodeList> list;
                               EXPECT_EQ(S_OK, tree.document->selectNodes(CComBSTR(L"//text()"), &list));
                               Node node;
                               while (list->nextNode(&node) == S_OK)
                                   node.Release();
                           })},
    {"RemovesASelection", On(Children,
                             [](Tree& tree, std::size_t) {
                                 CComPtr<IXMLDOMNodeList> list;
                                 EXPECT_EQ(S_OK, tree.root->selectNodes(CComBSTR(L"*"), &list));
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
            Node last;
            EXPECT_EQ(S_OK, tree.root->get_lastChild(&last));
            tree.root.Release();
            for (std::size_t i = 0; i < n; ++i) {
                CComPtr<IXMLDOMNodeList> list;
                EXPECT_EQ(S_OK, last->selectNodes(CComBSTR(L"text()"), &list));
                Node text;
                EXPECT_EQ(S_OK, list->nextNode(&text));
            }
        })},
    {"InsertsAtTheFrontAndRemovesThere", On(Nothing,
                                            [](Tree& tree, std::size_t n) {
                                                CComVariant first;
                                                for (std::size_t i = 0; i < n; ++i) {
                                                    const Node node = NewNode(tree.document);
                                                    EXPECT_EQ(S_OK,
                                                              tree.root->insertBefore(node, first, nullptr));
                                                    first = CComVariant(static_cast<IUnknown*>(node.p));
                                                }
                                                Node child;
                                                while (tree.root->get_firstChild(&child) == S_OK) {
                                                    EXPECT_EQ(S_OK, tree.root->removeChild(child, nullptr));
                                                    child.Release();
                                                }
                                            })},
    {"JoinsTexts", On(Nothing,
                      [](Tree& tree, std::size_t n) {
                          for (std::size_t i = 0; i < n; ++i) {
                              CComPtr<IXMLDOMText> text;
                              EXPECT_EQ(S_OK, tree.document->createTextNode(CComBSTR(L"some text"), &text));
                              EXPECT_EQ(S_OK, tree.root->appendChild(text, nullptr));
                          }
                          const CComQIPtr<IXMLDOMElement> element(tree.root);
                          EXPECT_EQ(S_OK, element->normalize());
                      })},
    {"MakesNodesOfManyNamespaces",
     On(Nothing,
        [](Tree& tree, std::size_t n) {
            for (std::size_t i = 0; i < n; ++i) {
                const std::wstring uri = L"urn:" + std::to_wstring(i);
                EXPECT_EQ(S_OK, tree.root->appendChild(NewNode(tree.document, L"p:e", uri.c_str()), nullptr));
            }
            XmlOf(tree.document);
        })},
    {"CopiesAndMovesBetweenDocuments", On(Children,
                                          [](Tree& tree, std::size_t) {
                                              Node clone, appended;
                                              EXPECT_EQ(S_OK, tree.root->cloneNode(VARIANT_TRUE, &clone));
                                              const auto other = NewDocument();
                                              EXPECT_EQ(S_OK, other->appendChild(clone, &appended));
                                              EXPECT_EQ(S_OK, tree.document->replaceChild(clone, tree.root,
                                                                                          nullptr));
                                          })},
    {"EmptiesAnElement", On(Children,
                            [](Tree& tree, std::size_t) {
                                CComPtr<IXMLDOMNodeList> list;
                                EXPECT_EQ(S_OK, tree.root->get_childNodes(&list));
                                EXPECT_EQ(S_OK, tree.root->put_text(CComBSTR(L"")));
                            })},
    {"NestsOutsideReleasesOutsideIn", Nesting(false, true, Release::OutsideIn)},
    {"NestsOutsideReleasesInsideOut", Nesting(false, true, Release::InsideOut)},
    {"NestsFromInsideReleasesOutsideIn", Nesting(false, false, Release::OutsideIn)},
    {"NestsFromInsideReleasesInsideOut", Nesting(false, false, Release::InsideOut)},
    {"NestsInTheDocumentReleasesOutsideIn", Nesting(true, true, Release::OutsideIn)},
    {"NestsInTheDocumentReleasesInsideOut", Nesting(true, true, Release::InsideOut)},
};

class DomGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(DomGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, DomGrowth, testing::ValuesIn(Cases), GrowthName);

} // namespace
