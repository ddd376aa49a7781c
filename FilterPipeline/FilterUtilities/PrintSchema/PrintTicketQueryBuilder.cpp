#include "PrintSchema/PrintTicketQueryBuilder.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaKeywords.h"

#include <utility>

using namespace PrintSchemaText;

namespace {

constexpr wchar_t subtree[] = L"//";
constexpr wchar_t child[] = L"/";

} // namespace

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix)
    : PrintTicketQueryBuilder(frameworkPrefix, nullptr) {}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix, const wchar_t* query) {
    const OperationScope operation("PrintTicketQueryBuilder::PrintTicketQueryBuilder");
    if (query != nullptr) m_query = Make(query);
    if (frameworkPrefix != nullptr) m_frameworkPrefix = Make(frameworkPrefix);
}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const PrintTicketQueryBuilder& other) {
    const OperationScope operation("PrintTicketQueryBuilder::PrintTicketQueryBuilder");
    m_query = Copy(other.m_query);
    m_frameworkPrefix = Copy(other.m_frameworkPrefix);
}

PrintTicketQueryBuilder& PrintTicketQueryBuilder::operator=(const PrintTicketQueryBuilder& other) {
    const OperationScope operation("PrintTicketQueryBuilder::operator=");
    if (this != &other) {
        CComBSTR query = Copy(other.m_query);
        m_frameworkPrefix = Copy(other.m_frameworkPrefix);
        m_query = std::move(query);
    }
    return *this;
}

PrintTicketQueryBuilder::~PrintTicketQueryBuilder() = default;

void PrintTicketQueryBuilder::Clear() { m_query.Empty(); }

HRESULT PrintTicketQueryBuilder::GetQuery(wchar_t** out) const {
    const OperationScope operation("PrintTicketQueryBuilder::GetQuery");
    if (out == nullptr) ThrowComException(E_POINTER);
    CopyOut(m_query, out);
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddFeature(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddFeature");
    AddNamed(subtree, PrintSchema::FEATURE_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddProperty(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddProperty");
    AddNamed(subtree, PrintSchema::PROPERTY_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddScoredProperty(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddScoredProperty");
    AddNamed(subtree, PrintSchema::SCORED_PROP_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterRef(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddParameterRef");
    AddNamed(subtree, PrintSchema::PARAM_REF_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterDef(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddParameterDef");
    AddNamed(subtree, PrintSchema::PARAM_DEF_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterInit(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddParameterInit");
    AddNamed(subtree, PrintSchema::PARAM_INIT_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildProperty(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddChildProperty");
    AddNamed(child, PrintSchema::PROPERTY_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildPropertyValue(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddChildPropertyValue");
    AddNamed(child, PrintSchema::PROPERTY_ELEMENT_NAME, View(prefix), View(name));
    AddChild(PrintSchema::VALUE_ELEMENT_NAME);
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildOptionName(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintTicketQueryBuilder::AddChildOptionName");
    AddNamed(child, PrintSchema::OPTION_ELEMENT_NAME, View(prefix), View(name));
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddValue() {
    const OperationScope operation("PrintTicketQueryBuilder::AddValue");
    AddChild(PrintSchema::VALUE_ELEMENT_NAME);
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddOption() {
    const OperationScope operation("PrintTicketQueryBuilder::AddOption");
    AddChild(PrintSchema::OPTION_ELEMENT_NAME);
    return S_OK;
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* axis, const wchar_t* element, std::wstring_view prefix,
                                       std::wstring_view name) {
    RequireFrameworkPrefix();
    m_query =
        Join({View(m_query), axis, View(m_frameworkPrefix), element, L"[@name = \"", prefix, name, L"\"]"});
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::wstring_view prefix,
                                       std::wstring_view name) {
    AddNamed(subtree, element, prefix, name);
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::span<const CComBSTR> names) {
    // As nearly all are asked for.
    if (names.size() == 1) return AddNamed(subtree, element, View(names[0]), {});
    RequireFrameworkPrefix();
    CComBSTR condition;
    for (const CComBSTR& name : names)
        condition = Join(
            {View(condition), condition.Length() == 0 ? L"" : L" or ", L"@name = \"", View(name), L"\""});
    if (names.empty()) condition = Make(L"false()");
    m_query = Join({View(m_query), subtree, View(m_frameworkPrefix), element, L"[", View(condition), L"]"});
}

void PrintTicketQueryBuilder::AddChild(const wchar_t* element) {
    RequireFrameworkPrefix();
    m_query = Join({View(m_query), child, View(m_frameworkPrefix), element});
}

void PrintTicketQueryBuilder::RequireFrameworkPrefix() const {
    if (m_frameworkPrefix.Length() == 0) ThrowComException(E_FAIL);
}
