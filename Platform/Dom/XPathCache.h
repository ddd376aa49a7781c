#pragma once

#include "Dom/SelectionNamespaces.h"

#include <libxml/xpath.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// Evaluates XPath 1.0. Compiled queries and the evaluation context are kept for each thread, since the same
/// few queries are asked of many documents.
class XPathCache {
public:
    static XPathCache& OfThisThread();

    ~XPathCache();
    XPathCache(const XPathCache&) = delete;
    XPathCache& operator=(const XPathCache&) = delete;

    /// The nodes that `query` selects from `node`, in document order, elements and attributes alike;
    /// namespace nodes are left out. E_FAIL with Reason() if it is no query, uses an undeclared prefix, or
    /// has a result that is no set of nodes.
    HRESULT Select(xmlNode* node, std::wstring_view query, const SelectionNamespaces& namespaces,
                   std::vector<xmlNode*>& result);
    /// The first of them, null if there is none.
    HRESULT SelectFirst(xmlNode* node, std::wstring_view query, const SelectionNamespaces& namespaces,
                        xmlNode*& result);

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
    xmlXPathObject* Evaluate(xmlNode* node, std::wstring_view query, const SelectionNamespaces& namespaces);
    void Forget() noexcept;
    static void NoteError(void* cache, xmlError* error) noexcept;

    xmlXPathContext* m_context;
    std::unordered_map<std::wstring, xmlXPathCompExpr*, TextHash, std::equal_to<>> m_compiled;
    std::string m_reason;
};

} // namespace OvPlatform
