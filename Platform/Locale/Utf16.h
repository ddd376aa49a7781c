#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace OvPlatform {

// Text conversion for the platform's own use: no fault points, no last error; memory that is out is
// std::bad_alloc. Ill-formed parts become U+FFFD, as utf8coder.h has it.

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view bytes);

/// The same units in the type that the Unicode library takes.
std::u16string ToUtf16(std::wstring_view text);
std::wstring FromUtf16(std::u16string_view text);

/// Copies text with its terminator to a caller's buffer of `capacity` units if it fits; says whether it did.
bool CopyText(std::wstring_view text, LPWSTR buffer, std::size_t capacity) noexcept;

} // namespace OvPlatform
