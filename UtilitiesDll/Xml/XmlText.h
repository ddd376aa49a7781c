#pragma once

#include "LowLevelFacilities/Failures/ThrowComException.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>
#include <atlcomcli.h>

#include <string_view>

/// Text on its way to and from the platform's XML interfaces.
namespace XmlText {

/// Both throw CPComException with E_OUTOFMEMORY, under the name of the operation that asks.
inline CComBSTR toBstr(const CXString& text) {
    CComBSTR result;
    result.Attach(SysAllocStringLen(text, static_cast<UINT>(text.GetLength())));
    if (!result) ThrowComException(E_OUTOFMEMORY);
    return result;
}

inline CComVariant toVariant(const CXString& text) {
    CComVariant result;
    result.bstrVal = toBstr(text).Detach();
    result.vt = VT_BSTR;
    return result;
}

inline std::wstring_view viewOf(BSTR text) noexcept {
    return text == nullptr ? std::wstring_view{} : std::wstring_view{text, SysStringLen(text)};
}

inline CXString toCXString(BSTR text) { return CXString(text, static_cast<int>(viewOf(text).size())); }

} // namespace XmlText
