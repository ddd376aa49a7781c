#pragma once

#include "Com/FaultInjection.h"

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <initializer_list>
#include <new>
#include <string>
#include <string_view>

namespace OvPlatform {

/// A name of a Print Schema document: the prefix that it is written with resolved.
struct SchemaName {
    std::wstring local;
    std::wstring namespaceUri;
    bool operator==(const SchemaName&) const = default;
};

/// What a call on the document gave instead of success.
struct SchemaFailure {
    HRESULT result;
};

/// Runs one published operation over a document's nodes; what the functions below throw is its result.
template <class Work>
HRESULT OverSchema(Work work) noexcept {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    try {
        return work();
    } catch (const SchemaFailure& failure) {
        return failure.result;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

// These throw SchemaFailure and std::bad_alloc.

/// The root element of a document in UTF-8 or UTF-16.
CComPtr<IXMLDOMElement> LoadSchema(const std::string& bytes);
/// What the attribute "name" says; for the root, which has none, the element's own name.
SchemaName NameOf(IXMLDOMElement* element);
/// The first child that is one of these elements of the framework and has that name; null where there is
/// none.
CComPtr<IXMLDOMElement> FindNamed(IXMLDOMElement* parent, std::initializer_list<std::wstring_view> tags,
                                  const SchemaName& name);
/// The first child of that framework element; null where there is none.
CComPtr<IXMLDOMElement> FindFirst(IXMLDOMElement* parent, std::wstring_view tag);
std::size_t CountOf(IXMLDOMElement* parent, std::wstring_view tag);
/// The element that all others are in.
CComPtr<IXMLDOMElement> RootOf(IXMLDOMElement* element);
/// The type that an element of a value bears, without its prefix; empty where it says none.
std::wstring TypeOf(IXMLDOMElement* value);
CComBSTR TextOf(IXMLDOMNode* node);

/// A published name; an empty namespace is the public keywords'.
SchemaName AskedName(BSTR local, BSTR namespaceUri);
/// A public keyword.
SchemaName Keyword(std::wstring_view local);

} // namespace OvPlatform
