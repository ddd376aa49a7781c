#pragma once

// BSTRs as the Print Schema classes handle them: what runs out of memory is raised as CPComException with
// E_OUTOFMEMORY under the name of the operation that asked.

#include <windows.h>
#include <atlcomcli.h>

#include <initializer_list>
#include <string_view>

namespace PrintSchemaText {

/// Null counts as the empty text.
inline std::wstring_view View(const wchar_t* text) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text);
}
inline std::wstring_view View(const CComBSTR& text) { return {text.m_str, text.Length()}; }

inline bool IsEmpty(const wchar_t* text) { return text == nullptr || *text == L'\0'; }

/// The pieces one behind the other. Never null, also when all pieces are empty.
CComBSTR Join(std::initializer_list<std::wstring_view> pieces);
inline CComBSTR Make(std::wstring_view text) { return Join({text}); }
/// Null for null.
CComBSTR Copy(const CComBSTR& text);
/// Gives the caller a copy; null for null.
void CopyOut(const CComBSTR& text, BSTR* out);

/// The number at the start of a text, 0 for none.
int IntegerOf(const CComBSTR& text);
float RealOf(const CComBSTR& text);

/// A VARIANT over a text that stays the caller's: for arguments that are passed by value.
VARIANT Borrowed(BSTR text);

/// Whether a text is of visible ASCII alone: another such text is equal only if it is the same.
bool IsPlain(BSTR text);

/// Whether two texts are equal in the platform's comparison of BSTRs, as names and namespaces are compared.
bool AreEqual(BSTR left, BSTR right);

} // namespace PrintSchemaText
