#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace OvPipeline {

// Between UTF-8 and UTF-16 in wchar_t units, through the platform's conversions. Throw std::bad_alloc.
std::string Utf8(std::wstring_view text);
std::wstring Wide(std::string_view text);

/// A BSTR that the caller frees. Throws std::bad_alloc.
BSTR NewBstr(std::string_view utf8);

/// The text of a caller's string argument; a null one is empty.
std::string Utf8Argument(const wchar_t* text);

std::string LowerAscii(std::string_view text);
bool EqualIgnoringAsciiCase(std::string_view one, std::string_view other);

/// "1 page", "2 pages".
std::string Counted(unsigned long long count, std::string_view noun);

/// Bytes for people: "512 bytes", "3.4 KB", "17 MB".
std::string ByteCount(unsigned long long bytes);

/// "{4d47a67c-...}" in lower case.
std::string GuidText(const GUID& guid);

} // namespace OvPipeline
