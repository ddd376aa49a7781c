#pragma once

#include "PrintTicket/KeywordName.h"
#include "Xml/XmlString.h"

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace OvPlatform {

/// Resolves prefixes in attribute values and text of one document. The root's declarations, which may be
/// many, are looked up by hash.
class NamespaceScope {
public:
    explicit NamespaceScope(const xmlNode* root);

    /// Nothing where the prefix is not declared at the node. The empty prefix gives the default namespace, or
    /// "".
    std::optional<NamespaceUri> Find(const xmlNode* node, std::string_view prefix) const;

    /// The name behind "prefix:local"; nothing where the prefix is not declared or the text is no such name.
    std::optional<KeywordName> Resolve(const xmlNode* node, std::string_view qualified) const;
    /// Whether there is one.
    bool IsName(const xmlNode* node, std::string_view qualified) const;

private:
    /// The declaration of a prefix at a node or between it and the root; null where it has to be the root's.
    const xmlNs* FindBelowRoot(const xmlNode* node, std::string_view prefix) const;

    const xmlNode* m_root;
    std::unordered_map<std::string_view, NamespaceUri> m_rootPrefixes;
};

} // namespace OvPlatform
