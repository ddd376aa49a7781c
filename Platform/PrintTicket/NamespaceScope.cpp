#include "PrintTicket/NamespaceScope.h"

#include "PrintTicket/SchemaXml.h"

#include <libxml/tree.h>

#include <algorithm>
#include <utility>

namespace OvPlatform {
namespace {

bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

// Names of settings are plain letters and digits nearly always, which is seen without a copy.
bool IsNcName(std::string_view text) {
    if (!text.empty() && IsAsciiLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
            return IsAsciiLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
        }))
        return true;
    return xmlValidateNCName(AsXml(std::string(text).c_str()), 0) == 0;
}

struct QualifiedName {
    std::string_view prefix;
    std::string_view local;

    // Nothing for a text that is no such name.
    static std::optional<QualifiedName> Of(std::string_view text) {
        text = Trimmed(text);
        const std::size_t colon = text.find(':');
        if (colon == 0) return std::nullopt;
        const bool hasPrefix = colon != std::string_view::npos;
        const QualifiedName name{hasPrefix ? text.substr(0, colon) : std::string_view(),
                                 hasPrefix ? text.substr(colon + 1) : text};
        return IsNcName(name.local) ? std::optional(name) : std::nullopt;
    }
};

} // namespace

NamespaceScope::NamespaceScope(const xmlNode* root) : m_root(root) {
    for (const xmlNs* declaration = root->nsDef; declaration; declaration = declaration->next)
        m_rootPrefixes.emplace(View(declaration->prefix), View(declaration->href));
}

const xmlNs* NamespaceScope::FindBelowRoot(const xmlNode* node, std::string_view prefix) const {
    for (; node && node != m_root; node = node->parent) {
        if (node->type != XML_ELEMENT_NODE) continue;
        for (const xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next)
            if (View(declaration->prefix) == prefix) return declaration;
    }
    return nullptr;
}

std::optional<NamespaceUri> NamespaceScope::Find(const xmlNode* node, std::string_view prefix) const {
    if (const xmlNs* declaration = FindBelowRoot(node, prefix)) return NamespaceUri(View(declaration->href));
    if (const auto found = m_rootPrefixes.find(prefix); found != m_rootPrefixes.end()) return found->second;
    if (prefix.empty()) return NamespaceUri();
    if (prefix == "xml") return NamespaceUri(View(XML_XML_NAMESPACE));
    return std::nullopt;
}

std::optional<KeywordName> NamespaceScope::Resolve(const xmlNode* node, std::string_view qualified) const {
    const auto name = QualifiedName::Of(qualified);
    if (!name) return std::nullopt;
    auto space = Find(node, name->prefix);
    if (!space) return std::nullopt;
    return KeywordName{std::move(*space), std::string(name->local)};
}

bool NamespaceScope::IsName(const xmlNode* node, std::string_view qualified) const {
    const auto name = QualifiedName::Of(qualified);
    return name && (name->prefix.empty() || name->prefix == "xml" || m_rootPrefixes.contains(name->prefix) ||
                    FindBelowRoot(node, name->prefix) != nullptr);
}

} // namespace OvPlatform
