#pragma once

#include <string>
#include <string_view>

namespace OvPlatform {

// UTF-8 to UTF-16 units in wchar_t, and back. What is not well-formed becomes U+FFFD.
std::wstring WidenQueueText(std::string_view utf8);
std::string NarrowQueueText(std::wstring_view utf16);

// Printer names are equal without regard to case.
std::wstring FoldQueueName(std::wstring_view name);

} // namespace OvPlatform
