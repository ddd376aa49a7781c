#include "Dom/NamedPath.h"

#include "Dom/DomTree.h"

#include <algorithm>
#include <array>
#include <utility>

namespace OvPlatform {

// Reads what is left of a query, step by step; each function is false, or nothing, for what it does not know.
class NamedPathParser {
public:
    explicit NamedPathParser(std::string_view query) : m_rest(query) {}

    std::optional<NamedPath> Path() {
        NamedPath path;
        while (!m_rest.empty()) {
            auto step = ReadStep();
            if (!step) return {};
            if (path.m_steps.size() == NamedPath::mostSteps) return {};
            path.m_steps.push_back(std::move(*step));
        }
        if (path.m_steps.empty() || !path.m_steps[0].isDescendant || !path.m_steps[0].name) return {};
        return path;
    }

private:
    std::optional<NamedPath::Step> ReadStep() {
        NamedPath::Step step;
        if (!Take("/")) return {};
        step.isDescendant = Take("/");
        step.local = ReadName();
        if (step.local.empty()) return {};
        if (Take(":")) step.prefix = std::exchange(step.local, ReadName());
        if (step.local.empty()) return {};
        if (!Take("[")) return step;
        SkipBlanks();
        if (!Take("@name")) return {};
        SkipBlanks();
        if (!Take("=")) return {};
        SkipBlanks();
        step.name = ReadLiteral();
        SkipBlanks();
        if (!step.name || !Take("]")) return {};
        return step;
    }

    // ASCII names do; what goes on with anything else is no end of a step either.
    std::string ReadName() {
        std::size_t length = 0;
        while (length < m_rest.size() && IsOfName(m_rest[length], length == 0))
            ++length;
        return Cut(length);
    }

    std::optional<std::string> ReadLiteral() {
        if (m_rest.empty() || (m_rest[0] != '"' && m_rest[0] != '\'')) return {};
        const std::size_t end = m_rest.find(m_rest[0], 1);
        if (end == std::string_view::npos) return {};
        std::string literal(m_rest.substr(1, end - 1));
        m_rest.remove_prefix(end + 1);
        return literal;
    }

    static bool IsOfName(char unit, bool isFirst) {
        const bool isLetter = (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || unit == '_';
        return isLetter || (!isFirst && ((unit >= '0' && unit <= '9') || unit == '-' || unit == '.'));
    }

    bool Take(std::string_view text) {
        if (!m_rest.starts_with(text)) return false;
        m_rest.remove_prefix(text.size());
        return true;
    }
    std::string Cut(std::size_t length) {
        std::string text(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        return text;
    }
    void SkipBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size())); }

    std::string_view m_rest;
};

namespace {

// Empty for no prefix; nothing for one that is not declared.
std::optional<std::string_view> UriOf(const std::string& prefix, const SelectionNamespaces& namespaces) {
    if (prefix.empty()) return std::string_view();
    for (int i = 0; i < namespaces.Count(); ++i) {
        const xmlNs* const declaration = namespaces.Declarations()[i];
        if (View(declaration->prefix) == prefix) return View(declaration->href);
    }
    return {};
}

} // namespace

std::optional<NamedPath> NamedPath::Parse(std::string_view query) { return NamedPathParser(query).Path(); }

std::optional<std::vector<xmlNode*>> NamedPath::Select(const NamedElements& elements,
                                                       const SelectionNamespaces& namespaces) const {
    std::array<std::string_view, mostSteps> uris;
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        const auto uri = UriOf(m_steps[i].prefix, namespaces);
        if (!uri) return {};
        uris[i] = *uri;
    }
    std::vector<xmlNode*> found = elements.Find(m_steps[0].local, uris[0], *m_steps[0].name);
    for (std::size_t i = 1; i < m_steps.size() && !found.empty(); ++i) {
        if (found.size() > 1) return {};
        xmlNode* const from = std::exchange(found, {})[0];
        AddStep(m_steps[i], uris[i], from, found);
    }
    return found;
}

void NamedPath::AddStep(const Step& step, std::string_view uri, xmlNode* from, std::vector<xmlNode*>& found) {
    const auto addIfMeant = [&](xmlNode* node) {
        if (!NamedElements::IsElement(node, step.local, uri)) return;
        const xmlAttr* const name = step.name ? NamedElements::NameOf(node) : nullptr;
        if (!step.name || (name != nullptr && DomTree::AttributeValue(name) == *step.name))
            found.push_back(node);
    };
    if (step.isDescendant) {
        for (xmlNode* node = NextInTree(from, from); node != nullptr; node = NextInTree(node, from))
            addIfMeant(node);
    } else {
        for (xmlNode* node = from->children; node != nullptr; node = node->next)
            addIfMeant(node);
    }
}

} // namespace OvPlatform
