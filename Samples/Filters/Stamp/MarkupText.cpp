#include "MarkupText.h"

#include <charconv>
#include <cmath>

void AppendEscaped(std::wstring& target, std::wstring_view text, bool isAttribute) {
    for (const wchar_t unit : text) {
        switch (unit) {
        case L'&':
            target += L"&amp;";
            break;
        case L'<':
            target += L"&lt;";
            break;
        case L'>':
            target += L"&gt;";
            break;
        case L'"':
            target += isAttribute ? L"&quot;" : L"\"";
            break;
        case L'\r':
            target += L"&#13;";
            break;
        case L'\n':
            target += isAttribute ? L"&#10;" : L"\n";
            break;
        case L'\t':
            target += isAttribute ? L"&#9;" : L"\t";
            break;
        default:
            target += unit;
        }
    }
}

void AppendNumber(std::wstring& target, double number) {
    constexpr double steps = 10'000;
    char digits[64];
    const double rounded = std::round(number * steps) / steps;
    const auto [end, error] =
        std::to_chars(digits, digits + sizeof digits, rounded == 0 ? 0.0 : rounded, std::chars_format::fixed);
    if (error == std::errc()) target.append(digits, end);
}
