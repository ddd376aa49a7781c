#include "PrintTicket/NamespaceScope.h"

#include "PrintTicket/SchemaXml.h"

#include <libxml/tree.h>

namespace OvPlatform {

NamespaceScope::NamespaceScope(const xmlNode* root) : m_root(root) {
    for (const xmlNs* declaration = root->nsDef; declaration; declaration = declaration->next)
        m_rootPrefixes.emplace(View(declaration->prefix), View(declaration->href));
}

std::optional<std::string_view> NamespaceScope::Find(const xmlNode* node, std::string_view prefix) const {
    for (; node && node != m_root; node = node->parent) {
        if (node->type != XML_ELEMENT_NODE) continue;
        for (const xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next)
            if (View(declaration->prefix) == prefix) return View(declaration->href);
    }
    if (const auto found = m_rootPrefixes.find(prefix); found != m_rootPrefixes.end()) return found->second;
    if (prefix.empty()) return std::string_view();
    if (prefix == "xml") return View(XML_XML_NAMESPACE);
    return std::nullopt;
}

std::optional<KeywordName> NamespaceScope::Resolve(const xmlNode* node, std::string_view qualified) const {
    qualified = Trimmed(qualified);
    const std::size_t colon = qualified.find(':');
    const std::string_view prefix =
        colon == std::string_view::npos ? std::string_view() : qualified.substr(0, colon);
    const std::string local(colon == std::string_view::npos ? qualified : qualified.substr(colon + 1));
    if (colon == 0 || xmlValidateNCName(AsXml(local.c_str()), 0) != 0) return std::nullopt;
    const auto space = Find(node, prefix);
    if (!space) return std::nullopt;
    return KeywordName{std::string(*space), local};
}

} // namespace OvPlatform
