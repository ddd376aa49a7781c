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
    std::optional<std::string_view> Find(const xmlNode* node, std::string_view prefix) const;

    /// The name behind "prefix:local"; nothing where the prefix is not declared or the text is no such name.
    std::optional<KeywordName> Resolve(const xmlNode* node, std::string_view qualified) const;

private:
    const xmlNode* m_root;
    std::unordered_map<std::string_view, std::string_view> m_rootPrefixes;
};

} // namespace OvPlatform
