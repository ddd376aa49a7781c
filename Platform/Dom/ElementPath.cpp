#include "Dom/ElementPath.h"

#include "Dom/DomTree.h"

#include <algorithm>
#include <utility>

namespace OvPlatform {

// Reads what is left of a query, step by step; each function is false, or empty, for what it does not know.
class ElementPathParser {
public:
    explicit ElementPathParser(std::string_view query) noexcept : m_rest(query) {}

    std::optional<ElementPath> Path() noexcept {
        ElementPath path;
        const bool isFromNode = m_rest.starts_with("./");
        if (isFromNode) m_rest.remove_prefix(1);
        path.m_isAbsolute = !isFromNode && m_rest.starts_with('/');
        bool hasAxis = isFromNode || path.m_isAbsolute;
        while (!m_rest.empty()) {
            if (path.m_count == ElementPath::mostSteps) return {};
            ElementPath::Step& step = path.m_steps[path.m_count++];
            if (hasAxis && !Take("/")) return {};
            step.isDescendant = hasAxis && Take("/");
            if (!ReadStep(step)) return {};
            hasAxis = true;
        }
        if (path.m_count == 0) return {};
        return path;
    }

private:
    bool ReadStep(ElementPath::Step& step) noexcept {
        step.local = ReadName();
        if (Take(":")) step.prefix = std::exchange(step.local, ReadName());
        // A prefix is never empty: that would be no query.
        const bool hasEmptyPrefix = step.prefix.data() != nullptr && step.prefix.empty();
        if (step.local.empty() || hasEmptyPrefix) return false;
        if (!Take("[")) return true;
        SkipBlanks();
        if (!Take("@name")) return false;
        SkipBlanks();
        if (!Take("=")) return false;
        SkipBlanks();
        step.name = ReadLiteral();
        SkipBlanks();
        return step.name && Take("]");
    }

    // ASCII names do; what goes on with anything else is no end of a step either.
    std::string_view ReadName() noexcept {
        std::size_t length = 0;
        while (length < m_rest.size() && IsOfName(m_rest[length], length == 0))
            ++length;
        return Cut(length);
    }

    std::optional<std::string_view> ReadLiteral() noexcept {
        if (m_rest.empty() || (m_rest[0] != '"' && m_rest[0] != '\'')) return {};
        const std::size_t end = m_rest.find(m_rest[0], 1);
        if (end == std::string_view::npos) return {};
        const std::string_view literal = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        return literal;
    }

    static bool IsOfName(char unit, bool isFirst) noexcept {
        const char kind = kinds[static_cast<unsigned char>(unit)];
        return kind == begins || (kind == goesOn && !isFirst);
    }

    static constexpr char begins = 1;
    static constexpr char goesOn = 2;
    static constexpr auto kinds = [] {
        std::array<char, 256> table{};
        for (const char unit : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_"))
            table[static_cast<unsigned char>(unit)] = begins;
        for (const char unit : std::string_view("0123456789-."))
            table[static_cast<unsigned char>(unit)] = goesOn;
        return table;
    }();

    bool Take(std::string_view text) noexcept {
        if (!m_rest.starts_with(text)) return false;
        m_rest.remove_prefix(text.size());
        return true;
    }
    std::string_view Cut(std::size_t length) noexcept {
        const std::string_view text = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return text;
    }
    void SkipBlanks() noexcept {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
    }

    std::string_view m_rest;
};

namespace {

bool MayHaveElements(const xmlNode* node) noexcept {
    return node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE ||
           node->type == XML_DOCUMENT_FRAG_NODE;
}

/// Whether `node`, which comes later in the document, stands outside of `earlier`. False also where that
/// takes long to see.
bool StandsBehind(const xmlNode* node, const xmlNode* earlier) noexcept {
    constexpr int farUp = 64;
    if (node->parent == earlier->parent) return true;
    for (int steps = 0; steps < farUp; ++steps, node = node->parent) {
        if (node == nullptr) return true;
        if (node == earlier) return false;
    }
    return false;
}

/// Of nodes in document order, which are all apart if neighbours are.
bool AreApart(const std::vector<xmlNode*>& nodes) noexcept {
    return std::adjacent_find(nodes.begin(), nodes.end(), [](const xmlNode* earlier, const xmlNode* node) {
               return !StandsBehind(node, earlier);
           }) == nodes.end();
}

} // namespace

std::optional<ElementPath> ElementPath::Parse(std::string_view query) noexcept {
    return ElementPathParser(query).Path();
}

std::optional<ElementTest> ElementPath::TestOf(const Step& step,
                                               const SelectionNamespaces& namespaces) const noexcept {
    if (step.prefix.empty()) return ElementTest(step.local);
    for (int i = 0; i < namespaces.Count(); ++i) {
        const xmlNs* const declaration = namespaces.Declarations()[i];
        if (View(declaration->prefix) == step.prefix) return ElementTest(step.local, View(declaration->href));
    }
    return {};
}

bool ElementPath::Select(DomTree& tree, xmlNode* node, const SelectionNamespaces& namespaces, Wanted wanted,
                         std::vector<xmlNode*>& found) const {
    if (tree.Document()->intSubset != nullptr || !MayHaveElements(node)) return false;
    std::array<std::optional<ElementTest>, mostSteps> tests;
    for (std::size_t at = 0; at < m_count; ++at) {
        tests[at] = TestOf(m_steps[at], namespaces);
        if (!tests[at]) return false;
    }
    const auto wantedOf = [&](std::size_t at) { return at + 1 == m_count ? wanted : Wanted::All; };
    const Step& first = m_steps[0];
    if (m_isAbsolute && first.isDescendant && first.name)
        tree.FindNamed(*tests[0], *first.name, found);
    else
        AddStep(first, *tests[0], m_isAbsolute ? tree.DocumentNode() : node, wantedOf(0), found);
    for (std::size_t at = 1; at < m_count && !found.empty(); ++at) {
        const std::vector<xmlNode*> from = std::exchange(found, {});
        if (!AreApart(from)) return false;
        for (xmlNode* const each : from) {
            AddStep(m_steps[at], *tests[at], each, wantedOf(at), found);
            if (wantedOf(at) == Wanted::First && !found.empty()) break;
        }
    }
    return true;
}

void ElementPath::AddStep(const Step& step, const ElementTest& test, xmlNode* from, Wanted wanted,
                          std::vector<xmlNode*>& found) {
    const auto isMeant = [&](const xmlNode* node) {
        if (!test(node)) return false;
        if (!step.name) return true;
        const xmlAttr* const name = NamedElements::NameOf(node);
        return name != nullptr && NamedElements::HasValue(name, *step.name);
    };
    const auto next = [&](xmlNode* node) { return step.isDescendant ? NextInTree(node, from) : node->next; };
    for (xmlNode* node = from->children; node != nullptr; node = next(node)) {
        if (!isMeant(node)) continue;
        found.push_back(node);
        if (wanted == Wanted::First) return;
    }
}

} // namespace OvPlatform
