#pragma once

#include <string>
#include <string_view>

// Pieces of markup, in UTF-16.

/// A text as the value of an attribute in quotation marks, or between tags. Blanks other than the blank
/// itself become references where a reader would take them for something else.
void AppendEscaped(std::wstring& target, std::wstring_view text, bool isAttribute);

/// With at most four decimals and a point, whatever the locale.
void AppendNumber(std::wstring& target, double number);

/// Numbers with commas between them.
template <typename... Numbers>
void AppendNumbers(std::wstring& target, double first, Numbers... others) {
    AppendNumber(target, first);
    ((target += L',', AppendNumber(target, others)), ...);
}
