#include <wchar.h>

#include <new>
#include <string>
#include <string_view>

namespace {

/// Conversions of texts and characters are the other way round than in the standard's wide formats: without a
/// length they are as wide as the format if in small letters, and narrow if in capitals.
std::wstring_view Conversion(wchar_t letter, std::wstring_view length) {
    const bool isText = letter == L's' || letter == L'S';
    const bool isCapital = letter == L'S' || letter == L'C';
    const bool isWide = length == L"l" || length == L"w" || (length.empty() && !isCapital);
    if (isText) return isWide ? L"ls" : L"s";
    return isWide ? L"lc" : L"c";
}

std::wstring_view IntegerLength(std::wstring_view length) {
    if (length == L"I64") return L"ll";
    if (length == L"I32") return L"";
    return length == L"I" ? L"z" : length;
}

/// Takes the characters of a set from the start of the text.
std::wstring_view Take(std::wstring_view& text, const wchar_t* set) {
    const std::wstring_view taken = text.substr(0, text.find_first_not_of(set));
    text.remove_prefix(taken.size());
    return taken;
}

std::wstring_view TakeLength(std::wstring_view& text) {
    for (const std::wstring_view word : {L"I64", L"I32", L"I"}) {
        if (!text.starts_with(word)) continue;
        text.remove_prefix(word.size());
        return word;
    }
    return Take(text, L"hlLwjzt");
}

/// The format as the standard's function reads it.
std::wstring StandardFormat(std::wstring_view format) {
    std::wstring result;
    for (auto at = format.find(L'%'); at != format.npos; at = format.find(L'%')) {
        result += format.substr(0, at + 1);
        format.remove_prefix(at + 1);
        result += Take(format, L"-+ #0123456789.*");
        const std::wstring_view length = TakeLength(format);
        if (format.empty()) break;
        const wchar_t letter = format.front();
        format.remove_prefix(1);
        if (std::wstring_view(L"sScC").find(letter) != std::wstring_view::npos) {
            result += Conversion(letter, length);
        } else {
            result += IntegerLength(length);
            result += letter;
        }
    }
    result += format;
    return result;
}

} // namespace

int _vsnwprintf(wchar_t* text, size_t count, const wchar_t* format, va_list arguments) {
    try {
        return vswprintf(text, count, StandardFormat(format).c_str(), arguments);
    } catch (const std::bad_alloc&) {
        return -1;
    }
}
