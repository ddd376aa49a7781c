#include "Dom/ReadBack.h"

#include "Dom/DomTree.h"
#include "Dom/WhiteSpace.h"
#include "Dom/WrittenNamespaces.h"
#include "Xml/AttributeBound.h"
#include "Xml/DocumentBound.h"
#include "Xml/XmlDeclaration.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace OvPlatform {

namespace {

constexpr std::size_t longestEscape = 6; // &quot;
constexpr std::size_t bytesOfTag = 5;    // </a> and one more
constexpr std::size_t bytesOfLine = 2;

/// Characters by number would change where nodes end.
bool IsInUnicode(const xmlDoc* document) {
    const xmlNode* first = document->children;
    if (first == nullptr || !XmlDeclaration::Is(first)) return true;
    const auto declaration = XmlDeclaration::FromData(View(first->content));
    return declaration && ClassifyEncoding(declaration->encoding) != TextEncoding::Other;
}

bool IsBlank(std::string_view text) noexcept {
    return text.find_first_not_of(xmlBlanks) == std::string_view::npos;
}

bool IsSpaceAttribute(const xmlAttr* attribute) noexcept {
    return attribute->ns != nullptr && View(attribute->name) == "space" &&
           View(attribute->ns->prefix) == "xml";
}

/// Walks through a document until something is found that would be read back differently.
class Inspection {
public:
    explicit Inspection(const DomTree& tree) : m_tree(tree) {
        m_result.isCopy = m_result.isSame = true;
        m_result.preservesWhiteSpace = tree.PreservesWhiteSpace();
    }

    ReadBack Run() {
        const xmlNode* top = m_tree.DocumentNode();
        Require(IsInUnicode(m_tree.Document()) && HasOneElement(top));
        for (const xmlNode* node = top->children; m_result.isCopy && node != nullptr;)
            node = Next(node, top);
        return m_result;
    }

private:
    struct OpenElement {
        bool blanksCount;
        std::size_t attributes;
    };

    static bool HasOneElement(const xmlNode* document) noexcept {
        std::size_t elements = 0;
        for (const xmlNode* node = document->children; node != nullptr; node = node->next)
            elements += node->type == XML_ELEMENT_NODE ? 1 : 0;
        return elements == 1;
    }

    const xmlNode* Next(const xmlNode* node, const xmlNode* top) {
        if (node->type == XML_ELEMENT_NODE)
            Enter(node);
        else
            LookAt(node);
        if (node->children != nullptr) return node->children;
        if (node->type == XML_ELEMENT_NODE) Leave();
        while (node->next == nullptr) {
            node = node->parent;
            if (node == top) return nullptr;
            Leave();
        }
        return node->next;
    }

    void Require(bool holds) noexcept {
        if (!holds) m_result.isCopy = m_result.isSame = false;
    }
    void Expect(bool holds) noexcept {
        if (!holds) m_result.isSame = false;
    }
    void Count(std::size_t bytes) noexcept { m_result.mostBytes += bytes; }
    bool BlanksCount() const noexcept {
        return m_open.empty() ? m_tree.PreservesWhiteSpace() : m_open.back().blanksCount;
    }
    void ExpectMarks(const xmlNode* node, bool blanksCountInside) noexcept {
        Expect((MarksOf(node) & ~Watched) == MarksReadBack(node, BlanksCount(), blanksCountInside));
    }

    void Enter(const xmlNode* element) {
        m_scope.Open();
        for (const xmlNs* declaration = element->nsDef; declaration; declaration = declaration->next) {
            m_scope.Bind(View(declaration->prefix), View(declaration->href));
            CountAttribute(View(declaration->prefix), View(declaration->href));
        }
        std::size_t attributes = m_scope.OwnCount();
        RequireInScope(element->ns, m_elementNs);
        for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
            ++attributes;
            LookAt(attribute);
        }
        const SpaceRule rule = SpaceRuleOf(element);
        const bool blanksCount = m_tree.PreservesWhiteSpace() ||
                                 (rule == SpaceRule::AsAround ? BlanksCount() : rule == SpaceRule::Preserve);
        ExpectMarks(element, blanksCount);
        m_open.push_back({blanksCount, attributes});
        m_attributesInForce += attributes;
        Require(attributes <= AttributeBound::mostOfOneElement &&
                m_attributesInForce <= AttributeBound::mostInForce);
        m_result.depth = std::max(m_result.depth, m_open.size());
        const std::size_t name =
            View(element->name).size() + (element->ns ? View(element->ns->prefix).size() : 0);
        Count(2 * (name + bytesOfTag + bytesOfLine + m_open.size()));
    }

    void Leave() {
        m_scope.Close();
        m_attributesInForce -= m_open.back().attributes;
        m_open.pop_back();
    }

    void LookAt(const xmlAttr* attribute) {
        if (attribute->ns != nullptr) {
            Require(attribute->ns->prefix != nullptr);
            RequireInScope(attribute->ns, m_attributeNs);
        }
        const xmlNode* text = attribute->children;
        const bool isOneText = text != nullptr && text->next == nullptr && text->type == XML_TEXT_NODE;
        Expect(isOneText);
        // Of several texts, the writer goes by the first.
        Require(isOneText || !IsSpaceAttribute(attribute));
        CountAttribute(View(attribute->name), {});
        if (attribute->ns != nullptr) Count(View(attribute->ns->prefix).size());
        for (; text != nullptr; text = text->next)
            Count(longestEscape * View(text->content).size());
    }

    void CountAttribute(std::string_view name, std::string_view value) noexcept {
        constexpr std::size_t besides = sizeof R"( xmlns:="")";
        Count(besides + name.size() + longestEscape * value.size());
    }

    void RequireInScope(const xmlNs* ns, std::pair<const xmlNs*, std::size_t>& last) {
        const std::pair here(ns, m_scope.Version());
        if (last == here) return;
        last = here;
        const std::string_view prefix = ns != nullptr ? View(ns->prefix) : std::string_view();
        const std::string_view uri = ns != nullptr ? View(ns->href) : std::string_view();
        Require(prefix == "xml" || m_scope.Means(prefix, uri));
    }

    void LookAt(const xmlNode* node) {
        const std::string_view content = View(node->content);
        const auto stands = [&](xmlElementType type) { return node->prev && node->prev->type == type; };
        switch (node->type) {
        case XML_TEXT_NODE:
            Require(!stands(XML_TEXT_NODE) && !content.empty() && (BlanksCount() || !IsBlank(content)));
            break;
        case XML_CDATA_SECTION_NODE: // a reader joins two of them
            Require(!stands(XML_CDATA_SECTION_NODE));
            break;
        case XML_COMMENT_NODE:
            break;
        case XML_PI_NODE:
            Count(View(node->name).size());
            break;
        default:
            Require(false);
            break;
        }
        ExpectMarks(node, false);
        constexpr std::size_t besides = sizeof "<![CDATA[]]>";
        Count(besides + longestEscape * content.size() + bytesOfLine + m_open.size());
    }

    const DomTree& m_tree;
    ReadBack m_result;
    WrittenNamespaces m_scope;
    std::vector<OpenElement> m_open;
    std::size_t m_attributesInForce = 0;
    /// What was found in scope last, and when.
    std::pair<const xmlNs*, std::size_t> m_elementNs{nullptr, static_cast<std::size_t>(-1)};
    std::pair<const xmlNs*, std::size_t> m_attributeNs = m_elementNs;
};

} // namespace

ReadBack ReadBack::Of(const DomTree& tree) { return Inspection(tree).Run(); }

ReadBack ReadBack::OfLoaded(const xmlDoc* document, std::size_t bytes, std::size_t depth, bool hasIdleMarks) {
    ReadBack result;
    result.isCopy = IsInUnicode(document);
    result.isSame = result.isCopy && !hasIdleMarks;
    result.depth = depth;
    // A line is broken in place of a blank, and at a tag.
    result.mostBytes = longestEscape * bytes + bytes / 4 * (bytesOfLine + bytesOfLine + depth);
    return result;
}

bool ReadBack::IsCopyFor(const DomSettings& settings) const noexcept {
    const auto mostDepth = static_cast<std::size_t>(std::max<LONG>(settings.maxElementDepth, 0));
    const auto mostText = static_cast<std::size_t>(std::max<LONG>(settings.maxXmlSize, 0)) * 1024;
    constexpr std::size_t widest = 2; // bytes of UTF-16 for one of UTF-8
    return isCopy && preservesWhiteSpace == settings.preserveWhiteSpace &&
           (mostDepth == 0 || depth <= mostDepth) && (mostText == 0 || mostBytes <= mostText) &&
           mostBytes <= mostDocumentBytes / widest;
}

unsigned short MarksReadBack(const xmlNode* node, bool blanksCountAround, bool blanksCountInside) noexcept {
    if (node->type == XML_PI_NODE && node->prev == nullptr && XmlDeclaration::Is(node))
        return ReadDeclaration;
    const unsigned short marks = MarksOf(node);
    if ((marks & (BreakBefore | BreakBeforeEnd)) == 0) return 0;
    unsigned short written = 0;
    if (!blanksCountAround && node->parent->type == XML_ELEMENT_NODE && !IsText(node) &&
        !(node->prev != nullptr && IsText(node->prev)))
        written = static_cast<unsigned short>(marks & BreakBefore);
    if (!blanksCountInside && !(node->last != nullptr && IsText(node->last)))
        written = static_cast<unsigned short>(written | (marks & BreakBeforeEnd));
    return written;
}

} // namespace OvPlatform
