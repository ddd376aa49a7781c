#pragma once

#include "Dom/ElementPath.h"
#include "Dom/SelectionNamespaces.h"
#include "Xml/XmlPointer.h"

#include <libxml/xpath.h>

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

    using Wanted = ElementPath::Wanted;
    /// The nodes that `query` selects from `node` of that tree, in document order, elements and attributes
    /// alike; namespace nodes are left out. At least the first of them, where no more are wanted. E_FAIL with
    /// Reason() if it is no query, uses an undeclared prefix, or has a result that is no set of nodes.
    HRESULT Select(DomTree& tree, xmlNode* node, std::wstring_view query, Wanted wanted,
                   std::vector<xmlNode*>& result);

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

    xmlXPathCompExpr* Compiled(std::wstring_view query);
    /// Null with a reason where the query has no result, or one that is no set of nodes.
    XmlPointer<xmlXPathObject> Evaluate(xmlNode* node, xmlXPathCompExpr* query,
                                        const SelectionNamespaces& namespaces);
    static void NoteError(void* cache, xmlError* error) noexcept;

    XmlPointer<xmlXPathContext> m_context;
    std::unordered_map<std::wstring, XmlPointer<xmlXPathCompExpr>, TextHash, std::equal_to<>> m_compiled;
    std::string m_reason;
};

} // namespace OvPlatform
