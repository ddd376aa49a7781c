#include "PrintSchema/PrintTicketQueryBuilder.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaKeywords.h"

#include <new>
#include <utility>

using namespace PrintSchemaText;

namespace {

constexpr wchar_t subtree[] = L"//";
constexpr wchar_t child[] = L"/";
constexpr std::size_t usualLength = 96;

template <typename Work>
void OrOutOfMemory(Work&& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        ThrowComException(E_OUTOFMEMORY);
    }
}

} // namespace

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix)
    : PrintTicketQueryBuilder(frameworkPrefix, nullptr) {}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const wchar_t* frameworkPrefix, const wchar_t* query) {
    const OperationScope operation("PrintTicketQueryBuilder::PrintTicketQueryBuilder");
    OrOutOfMemory([&] {
        m_query.reserve(usualLength);
        m_query = View(query);
        m_frameworkPrefix = View(frameworkPrefix);
    });
}

PrintTicketQueryBuilder::PrintTicketQueryBuilder(const PrintTicketQueryBuilder& other) {
    const OperationScope operation("PrintTicketQueryBuilder::PrintTicketQueryBuilder");
    *this = other;
}

PrintTicketQueryBuilder& PrintTicketQueryBuilder::operator=(const PrintTicketQueryBuilder& other) {
    const OperationScope operation("PrintTicketQueryBuilder::operator=");
    OrOutOfMemory([&] {
        std::wstring query = other.m_query;
        m_frameworkPrefix = other.m_frameworkPrefix;
        m_query = std::move(query);
    });
    return *this;
}

PrintTicketQueryBuilder::~PrintTicketQueryBuilder() = default;

void PrintTicketQueryBuilder::Clear() { m_query.clear(); }

CComBSTR PrintTicketQueryBuilder::Text() const { return m_query.empty() ? CComBSTR() : Make(m_query); }

HRESULT PrintTicketQueryBuilder::GetQuery(wchar_t** out) const {
    const OperationScope operation("PrintTicketQueryBuilder::GetQuery");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = Text().Detach();
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
    Append({axis, m_frameworkPrefix, element, L"[@name = \"", prefix, name, L"\"]"});
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::wstring_view prefix,
                                       std::wstring_view name) {
    AddNamed(subtree, element, prefix, name);
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::span<const CComBSTR> names) {
    // As nearly all are asked for.
    if (names.size() == 1) return AddNamed(subtree, element, View(names[0]), {});
    RequireFrameworkPrefix();
    Append({subtree, m_frameworkPrefix, element, names.empty() ? L"[false()" : L"["});
    for (const CComBSTR& name : names)
        Append({&name == names.data() ? L"" : L" or ", L"@name = \"", View(name), L"\""});
    Append({L"]"});
}

void PrintTicketQueryBuilder::AddChild(const wchar_t* element) {
    RequireFrameworkPrefix();
    Append({child, m_frameworkPrefix, element});
}

void PrintTicketQueryBuilder::Append(std::initializer_list<std::wstring_view> pieces) {
    OrOutOfMemory([&] {
        for (const std::wstring_view piece : pieces)
            m_query += piece;
    });
}

void PrintTicketQueryBuilder::RequireFrameworkPrefix() const {
    if (m_frameworkPrefix.empty()) ThrowComException(E_FAIL);
}
