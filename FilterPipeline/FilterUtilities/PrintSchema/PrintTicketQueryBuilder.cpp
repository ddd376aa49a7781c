#include "PrintTicketQueryBuilder.h"

#include "Bstr.h"
#include "PrintSchemaKeywords.h"

#include <ComSupport/ThrowHresult.h>

using namespace PrintSchemaText;

namespace {

constexpr wchar_t subtree[] = L"//";
constexpr wchar_t child[] = L"/";

} // namespace

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix)
    : PrintTicketQueryBuilder(frameworkPrefix, nullptr) {}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix, const wchar_t* query) {
    constexpr char function[] = "PrintTicketQueryBuilder::PrintTicketQueryBuilder";
    if (query != nullptr) m_query = Make(query, function);
    if (frameworkPrefix != nullptr) m_frameworkPrefix = Make(frameworkPrefix, function);
}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const PrintTicketQueryBuilder& other)
    : m_query(Copy(other.m_query, "PrintTicketQueryBuilder::PrintTicketQueryBuilder")),
      m_frameworkPrefix(Copy(other.m_frameworkPrefix, "PrintTicketQueryBuilder::PrintTicketQueryBuilder")) {}

PrintTicketQueryBuilder& PrintTicketQueryBuilder::operator=(const PrintTicketQueryBuilder& other) {
    if (this != &other) {
        CComBSTR query = Copy(other.m_query, "PrintTicketQueryBuilder::operator=");
        m_frameworkPrefix = Copy(other.m_frameworkPrefix, "PrintTicketQueryBuilder::operator=");
        m_query = std::move(query);
    }
    return *this;
}

PrintTicketQueryBuilder::~PrintTicketQueryBuilder() = default;

void PrintTicketQueryBuilder::Clear() { m_query.Empty(); }

HRESULT PrintTicketQueryBuilder::GetQuery(wchar_t** out) const {
    constexpr char function[] = "PrintTicketQueryBuilder::GetQuery";
    if (out == nullptr) ThrowComException(E_POINTER, function);
    CopyOut(m_query, out, function);
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddFeature(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::FEATURE_ELEMENT_NAME, prefix, name, "PrintTicketQueryBuilder::AddFeature");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddProperty(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::PROPERTY_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddProperty");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddScoredProperty(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::SCORED_PROP_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddScoredProperty");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterRef(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::PARAM_REF_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddParameterRef");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterDef(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::PARAM_DEF_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddParameterDef");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddParameterInit(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(subtree, PrintSchema::PARAM_INIT_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddParameterInit");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildProperty(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(child, PrintSchema::PROPERTY_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddChildProperty");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildPropertyValue(const wchar_t* prefix, const wchar_t* name) {
    constexpr char function[] = "PrintTicketQueryBuilder::AddChildPropertyValue";
    AddNamed(child, PrintSchema::PROPERTY_ELEMENT_NAME, prefix, name, function);
    AddChild(PrintSchema::VALUE_ELEMENT_NAME, function);
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddChildOptionName(const wchar_t* prefix, const wchar_t* name) {
    AddNamed(child, PrintSchema::OPTION_ELEMENT_NAME, prefix, name,
             "PrintTicketQueryBuilder::AddChildOptionName");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddValue() {
    AddChild(PrintSchema::VALUE_ELEMENT_NAME, "PrintTicketQueryBuilder::AddValue");
    return S_OK;
}

HRESULT PrintTicketQueryBuilder::AddOption() {
    AddChild(PrintSchema::OPTION_ELEMENT_NAME, "PrintTicketQueryBuilder::AddOption");
    return S_OK;
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* axis, const wchar_t* element, const wchar_t* prefix,
                                       const wchar_t* name, const char* function) {
    RequireFrameworkPrefix(function);
    m_query = Join({View(m_query), axis, View(m_frameworkPrefix), element, L"[@name = \"", View(prefix),
                    View(name), L"\"]"},
                   function);
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::span<const CComBSTR> names,
                                       const char* function) {
    RequireFrameworkPrefix(function);
    CComBSTR condition;
    for (const CComBSTR& name : names)
        condition =
            Join({View(condition), condition.Length() == 0 ? L"" : L" or ", L"@name = \"", View(name), L"\""},
                 function);
    if (names.empty()) condition = Make(L"false()", function);
    m_query = Join({View(m_query), subtree, View(m_frameworkPrefix), element, L"[", View(condition), L"]"},
                   function);
}

void PrintTicketQueryBuilder::AddChild(const wchar_t* element, const char* function) {
    RequireFrameworkPrefix(function);
    m_query = Join({View(m_query), child, View(m_frameworkPrefix), element}, function);
}

void PrintTicketQueryBuilder::RequireFrameworkPrefix(const char* function) const {
    if (m_frameworkPrefix.Length() == 0) ThrowComException(E_FAIL, function);
}
