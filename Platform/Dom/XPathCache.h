#pragma once

#include "Dom/NamedPath.h"
#include "Dom/SelectionNamespaces.h"
#include "Xml/XmlPointer.h"

#include <libxml/xpath.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

class DomTree;

/// Evaluates XPath 1.0. Compiled queries and the evaluation context are kept for each thread, since the same
/// few queries are asked of many documents.
class XPathCache {
public:
    static XPathCache& OfThisThread();

    ~XPathCache() = default;
    XPathCache(const XPathCache&) = delete;
    XPathCache& operator=(const XPathCache&) = delete;

    /// The nodes that `query` selects from `node` of that tree, in document order, elements and attributes
    /// alike; namespace nodes are left out. E_FAIL with Reason() if it is no query, uses an undeclared
    /// prefix, or has a result that is no set of nodes.
    HRESULT Select(DomTree& tree, xmlNode* node, std::wstring_view query,
                   const SelectionNamespaces& namespaces, std::vector<xmlNode*>& result);
    /// The first of them, null if there is none.
    HRESULT SelectFirst(DomTree& tree, xmlNode* node, std::wstring_view query,
                        const SelectionNamespaces& namespaces, xmlNode*& result);

    /// Why the last call failed.
    const std::string& Reason() const noexcept { return m_reason; }

private:
    XPathCache();

    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view text) const noexcept {
            return std::hash<std::wstring_view>()(text);
        }
    };

    struct Query {
        XmlPointer<xmlXPathCompExpr> expression;
        std::optional<NamedPath> path; // the same, where it has that form
    };

    const Query* Compiled(std::wstring_view query);
    /// Null with a reason where the query has no result, or one that is no set of nodes.
    XmlPointer<xmlXPathObject> Evaluate(xmlNode* node, const Query& query,
                                        const SelectionNamespaces& namespaces);
    static void NoteError(void* cache, xmlError* error) noexcept;

    XmlPointer<xmlXPathContext> m_context;
    std::unordered_map<std::wstring, Query, TextHash, std::equal_to<>> m_compiled;
    std::string m_reason;
};

} // namespace OvPlatform
