#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <atlcomcli.h>

#include <span>
#include <string_view>

/// Composes the XPath text that finds a node of a Print Schema document. Steps are joined as they come: a
/// step that searches the subtree ("//") behind another one searches the whole subtree of that one. Nothing
/// is checked or escaped; a name with a double quote gives a broken query.
///
/// The Add operations take the prefix of the keyword with its colon (it may be empty or null) and its local
/// name. They raise CPComException: E_FAIL if the framework prefix is empty, E_OUTOFMEMORY; the query may
/// then hold part of the step.
class OV_FILTER_UTILITIES_API PrintTicketQueryBuilder {
public:
    /// The framework prefix of the document, with its colon.
    explicit PrintTicketQueryBuilder(const wchar_t* frameworkPrefix);
    /// Goes on from a given query.
    PrintTicketQueryBuilder(const wchar_t* frameworkPrefix, const wchar_t* query);
    PrintTicketQueryBuilder(const PrintTicketQueryBuilder& other);
    PrintTicketQueryBuilder& operator=(const PrintTicketQueryBuilder& other);
    virtual ~PrintTicketQueryBuilder();

    /// Empties the query; the prefix stays.
    void Clear();
    /// A copy of the query, the caller's to free; null if nothing was added. Raises E_POINTER, E_OUTOFMEMORY.
    HRESULT GetQuery(wchar_t** out) const;

    // These search the subtree of the step before, or the document.
    HRESULT AddFeature(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddProperty(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddScoredProperty(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddParameterRef(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddParameterDef(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddParameterInit(const wchar_t* prefix, const wchar_t* name);
    // These look at the children of the step before.
    HRESULT AddChildProperty(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddChildPropertyValue(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddChildOptionName(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddValue();
    HRESULT AddOption();

protected:
    /// Null if nothing was added.
    [[nodiscard]] const CComBSTR& Text() const noexcept { return m_query; }
    /// An element of the subtree.
    void AddNamed(const wchar_t* element, std::wstring_view prefix, std::wstring_view name);
    /// One that has one of these names.
    void AddNamed(const wchar_t* element, std::span<const CComBSTR> names);

private:
    void AddNamed(const wchar_t* axis, const wchar_t* element, std::wstring_view prefix,
                  std::wstring_view name);
    void AddChild(const wchar_t* element);
    void RequireFrameworkPrefix() const;

    CComBSTR m_query;
    CComBSTR m_frameworkPrefix;
};
