#include "Locale/CharacterCase.h"

#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>

namespace OvPlatform {

wchar_t SimpleLower(wchar_t unit) noexcept {
    const auto value = static_cast<std::uint32_t>(unit); // NOLINT(bugprone-signed-char-misuse): a UTF-16 unit
    if (value < 0x80) return value >= 'A' && value <= 'Z' ? static_cast<wchar_t>(value + 0x20) : unit;
    const auto lower = static_cast<std::uint32_t>(u_tolower(static_cast<UChar32>(value)));
    return lower <= 0xFFFF ? static_cast<wchar_t>(lower) : unit;
}

wchar_t SimpleUpper(wchar_t unit) noexcept {
    const auto value = static_cast<std::uint32_t>(unit); // NOLINT(bugprone-signed-char-misuse): a UTF-16 unit
    if (value < 0x80) return value >= 'a' && value <= 'z' ? static_cast<wchar_t>(value - 0x20) : unit;
    const auto upper = static_cast<std::uint32_t>(u_toupper(static_cast<UChar32>(value)));
    return upper <= 0xFFFF ? static_cast<wchar_t>(upper) : unit;
}

std::wstring FoldCase(std::wstring_view text) {
    const std::u16string units = ToUtf16(text);
    icu::UnicodeString folded(units.data(), static_cast<std::int32_t>(units.size()));
    folded.foldCase();
    return FromUtf16({folded.getBuffer(), static_cast<std::size_t>(folded.length())});
}

} // namespace OvPlatform

namespace {

using OvPlatform::SimpleLower;
using OvPlatform::SimpleUpper;

template <wchar_t (*Map)(wchar_t) noexcept>
DWORD MapBuffer(LPWSTR text, DWORD length) {
    if (text == nullptr) return 0;
    std::transform(text, text + length, text, Map);
    return length;
}

template <wchar_t (*Map)(wchar_t) noexcept>
LPWSTR MapString(LPWSTR text) {
    // A pointer whose upper half is empty is a single character, and the mapped one is returned the same way.
    const auto value = reinterpret_cast<std::uintptr_t>(text);
    if (value >> 16 == 0)
        return reinterpret_cast<LPWSTR>(static_cast<std::uintptr_t>(Map(static_cast<wchar_t>(value))));
    std::transform(text, text + std::wcslen(text), text, Map);
    return text;
}

int Compare(const wchar_t* left, const wchar_t* right, std::size_t count) {
    for (; count > 0; --count, ++left, ++right) {
        const wchar_t leftUnit = SimpleLower(*left);
        const wchar_t rightUnit = SimpleLower(*right);
        if (leftUnit != rightUnit) return leftUnit < rightUnit ? -1 : 1;
        if (leftUnit == 0) break;
    }
    return 0;
}

} // namespace

LPWSTR CharLowerW(LPWSTR text) { return MapString<SimpleLower>(text); }
LPWSTR CharUpperW(LPWSTR text) { return MapString<SimpleUpper>(text); }
DWORD CharLowerBuffW(LPWSTR text, DWORD length) { return MapBuffer<SimpleLower>(text, length); }
DWORD CharUpperBuffW(LPWSTR text, DWORD length) { return MapBuffer<SimpleUpper>(text, length); }

int _wcsicmp(const wchar_t* left, const wchar_t* right) {
    return Compare(left, right, (std::numeric_limits<std::size_t>::max)());
}

int _wcsnicmp(const wchar_t* left, const wchar_t* right, size_t count) { return Compare(left, right, count); }

long long _wtoi64(const wchar_t* text) {
    if (text == nullptr) return 0;
    return std::wcstoll(text, nullptr, 10);
}

int _wtoi(const wchar_t* text) {
    return static_cast<int>(std::clamp<long long>(_wtoi64(text), (std::numeric_limits<int>::min)(),
                                                  (std::numeric_limits<int>::max)()));
}

double _wtof(const wchar_t* text) { return text != nullptr ? std::wcstod(text, nullptr) : 0; }

wchar_t* _wcsdup(const wchar_t* text) {
    if (text == nullptr || OvPlatform::FaultPointHit()) return nullptr;
    const std::size_t bytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
    auto* copy = static_cast<wchar_t*>(std::malloc(bytes));
    if (copy != nullptr) std::memcpy(copy, text, bytes);
    return copy;
}

int lstrlenW(LPCWSTR text) { return text != nullptr ? static_cast<int>(std::wcslen(text)) : 0; }

int lstrlenA(LPCSTR text) { return text != nullptr ? static_cast<int>(std::strlen(text)) : 0; }
