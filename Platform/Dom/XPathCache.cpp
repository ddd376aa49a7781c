#include "Dom/XPathCache.h"

#include "Dom/AttributeOrder.h"
#include "Dom/DomTree.h"
#include "Xml/TextConversion.h"

#include <libxml/xpathInternals.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

/// Queries that hold values of a document would fill the memory else.
constexpr std::size_t mostQueries = 512;

void Swallow(void*, const char*, ...) {}

/// The library reports some errors to the thread's handler too, which would print them.
class QuietErrors {
public:
    QuietErrors() noexcept : m_handler(xmlGenericError), m_context(xmlGenericErrorContext) {
        xmlSetGenericErrorFunc(nullptr, &Swallow);
    }
    ~QuietErrors() { xmlSetGenericErrorFunc(m_context, m_handler); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    xmlGenericErrorFunc m_handler;
    void* m_context;
};

struct Complaint {
    int error;
    const char* text;
};
constexpr Complaint complaints[] = {
    {XPATH_UNDEF_PREFIX_ERROR, "The query uses a prefix that SelectionNamespaces does not declare"},
    {XPATH_UNKNOWN_FUNC_ERROR, "The query calls a function that does not exist"},
    {XPATH_UNDEF_VARIABLE_ERROR, "The query uses a variable"},
    {XPATH_INVALID_TYPE, "The query treats a value as a set of nodes"},
    {XPATH_INVALID_ARITY, "The query calls a function with the wrong number of arguments"},
    {XPATH_UNCLOSED_ERROR, "A bracket of the query is not closed"},
    {XPATH_UNFINISHED_LITERAL_ERROR, "A literal of the query is not closed"},
    {XPATH_INVALID_PREDICATE_ERROR, "A predicate of the query is not well formed"},
};

const char* ComplaintOf(int error) noexcept {
    for (const Complaint& complaint : complaints)
        if (complaint.error == error) return complaint.text;
    return "The query is not well formed";
}

bool IsNode(const xmlNode* node) noexcept { return node->type != XML_NAMESPACE_DECL; }

/// A query as UTF-8; empty for one that XML could not hold. Most are short and ASCII.
class QueryText {
public:
    explicit QueryText(std::wstring_view query) {
        const std::size_t size = std::min(query.size(), m_short.size());
        std::size_t visible = 0;
        for (; visible < size && query[visible] >= L' ' && query[visible] <= L'~'; ++visible)
            m_short[visible] = static_cast<char>(query[visible]);
        if (visible != query.size() && !AppendXmlUtf8(m_other, query)) m_other.clear();
        m_view = visible == query.size() ? std::string_view(m_short.data(), visible) : m_other;
    }
    QueryText(const QueryText&) = delete;
    QueryText& operator=(const QueryText&) = delete;

    std::string_view View() const noexcept { return m_view; }

private:
    std::array<char, 256> m_short;
    std::string m_other;
    std::string_view m_view;
};

} // namespace

XPathCache& XPathCache::OfThisThread() {
    thread_local XPathCache cache;
    return cache;
}

XPathCache::XPathCache() : m_context(xmlXPathNewContext(nullptr)) {
    if (!m_context) throw std::bad_alloc();
    m_context->userData = this;
    m_context->error = [](void* cache, xmlError* error) { NoteError(cache, error); };
    xmlXPathContextSetCache(m_context.get(), 1, -1, 0);
}

void XPathCache::NoteError(void* cache, xmlError* error) noexcept {
    std::string& reason = static_cast<XPathCache*>(cache)->m_reason;
    if (!reason.empty()) return;
    try {
        reason = ComplaintOf(error->code - XML_XPATH_EXPRESSION_OK);
    } catch (const std::bad_alloc&) {
        reason.clear();
    }
}

xmlXPathCompExpr* XPathCache::Compiled(std::wstring_view query) {
    if (const auto known = m_compiled.find(query); known != m_compiled.end()) return known->second.get();
    std::string text;
    if (!AppendXmlUtf8(text, query)) {
        m_reason = "The query holds a character that XML does not allow";
        return nullptr;
    }
    const QuietErrors quiet;
    XmlPointer<xmlXPathCompExpr> compiled(xmlXPathCtxtCompile(m_context.get(), AsXml(text.c_str())));
    if (!compiled) return nullptr;
    if (m_compiled.size() >= mostQueries) m_compiled.clear();
    return m_compiled.emplace(query, std::move(compiled)).first->second.get();
}

XmlPointer<xmlXPathObject> XPathCache::Evaluate(xmlNode* node, xmlXPathCompExpr* query,
                                                const SelectionNamespaces& namespaces) {
    const QuietErrors quiet;
    m_context->doc = node->doc;
    m_context->node = node;
    m_context->namespaces = namespaces.Declarations();
    m_context->nsNr = namespaces.Count();
    // A compiled query sorts its result into document order.
    XmlPointer<xmlXPathObject> object(xmlXPathCompiledEval(query, m_context.get()));
    m_context->doc = nullptr;
    m_context->node = nullptr;
    m_context->namespaces = nullptr;
    m_context->nsNr = 0;
    if (object && object->type != XPATH_NODESET) {
        m_reason = "The query does not select nodes";
        return nullptr;
    }
    return object;
}

HRESULT XPathCache::Select(DomTree& tree, xmlNode* node, std::wstring_view query, Wanted wanted,
                           std::vector<xmlNode*>& result) {
    m_reason.clear();
    const SelectionNamespaces& namespaces = *tree.Settings().namespaces;
    const QueryText text(query);
    const auto path = ElementPath::Parse(text.View());
    if (path && path->Select(tree, node, namespaces, wanted, result)) return S_OK;
    xmlXPathCompExpr* const compiled = Compiled(query);
    if (compiled == nullptr) return E_FAIL;
    const XmlPointer<xmlXPathObject> object = Evaluate(node, compiled, namespaces);
    if (!object) return E_FAIL;
    if (const xmlNodeSet* set = object->nodesetval) {
        result.reserve(static_cast<std::size_t>(set->nodeNr));
        for (int index = 0; index < set->nodeNr; ++index)
            if (IsNode(set->nodeTab[index])) result.push_back(set->nodeTab[index]);
    }
    return S_OK;
}

} // namespace OvPlatform
