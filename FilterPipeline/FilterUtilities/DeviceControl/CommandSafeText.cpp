#include "DeviceControl/CommandSafeText.h"

#include <string>
#include <vector>

namespace {

bool IsUnsafeAlone(wchar_t unit) {
    const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
    const bool isSeparator = unit == 0x2028 || unit == 0x2029;
    return isControl || isSeparator || unit == L'"';
}

bool IsParenthesis(wchar_t unit) { return unit == L'(' || unit == L')'; }

bool IsUnsafeBackslash(std::wstring_view text, std::size_t position) {
    return text[position] == L'\\' && (position + 1 == text.size() || IsParenthesis(text[position + 1]));
}

bool BlankUnpairedParentheses(std::wstring& text) {
    bool isChanged = false;
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'(') {
            open.push_back(i);
        } else if (text[i] == L')' && !open.empty()) {
            open.pop_back();
        } else if (text[i] == L')') {
            text[i] = L' ';
            isChanged = true;
        }
    }
    for (const std::size_t position : open)
        text[position] = L' ';
    return isChanged || !open.empty();
}

} // namespace

bool CommandSafeText::Clean(CXString& text) {
    std::wstring clean(text.View());
    bool isChanged = false;
    for (std::size_t i = 0; i < clean.size(); ++i) {
        if (!IsUnsafeAlone(clean[i]) && !IsUnsafeBackslash(clean, i)) continue;
        clean[i] = L' ';
        isChanged = true;
    }
    if (BlankUnpairedParentheses(clean)) isChanged = true;
    if (isChanged) text = CXString(std::move(clean));
    return isChanged;
}
