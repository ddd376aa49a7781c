#pragma once

#include <oleauto.h>

#include <string>
#include <string_view>

// Between the interfaces' UTF-16 and the tree's UTF-8.

namespace OvPlatform {

inline std::wstring_view ViewOf(BSTR text) noexcept { return {text, ::SysStringLen(text)}; }

/// The caller's to free. Null only when memory is out; bytes that are no UTF-8 become U+FFFD.
BSTR ToBstr(std::string_view utf8) noexcept;

/// Gives a text out: E_INVALIDARG for a null place, E_OUTOFMEMORY with null in it.
HRESULT GiveText(BSTR* place, std::string_view utf8) noexcept;
HRESULT GiveText(VARIANT* place, std::string_view utf8) noexcept;

/// Appends. False, with `target` as far as it got, where a surrogate stands alone.
bool AppendUtf8(std::string& target, std::wstring_view utf16);

/// Appends text that is to stand in a document. False where XML has no such character: controls, lone
/// surrogates, U+FFFE and U+FFFF.
bool AppendXmlUtf8(std::string& target, std::wstring_view utf16);

/// The bytes of `utf8` as UTF-16, little-endian, with a byte order mark.
std::string ToUtf16Bytes(std::string_view utf8);

/// UTF-16 bytes without their mark. False for an odd count or a lone surrogate.
bool FromUtf16Bytes(std::string_view bytes, bool bigEndian, std::string& utf8);

/// Appends UTF-16 units to `target`, which holds them in wchar_t.
void AppendUtf16(std::wstring& target, std::string_view utf8);

} // namespace OvPlatform
