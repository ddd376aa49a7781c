#include "Xml/TextConversion.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <limits>

namespace OvPlatform {

namespace {

constexpr UChar32 Replacement = 0xFFFD;

bool IsAscii(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

/// Calls `unit` with every UTF-16 unit of `utf8`.
template <class Unit>
void ForEachUnit(std::string_view utf8, Unit&& unit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    for (std::size_t index = 0; index < utf8.size();) {
        UChar32 character;
        U8_NEXT(bytes, index, utf8.size(), character);
        if (character < 0) character = Replacement;
        if (U_IS_BMP(character)) {
            unit(static_cast<char16_t>(character));
        } else {
            unit(static_cast<char16_t>(U16_LEAD(character)));
            unit(static_cast<char16_t>(U16_TRAIL(character)));
        }
    }
}

void AppendCharacter(std::string& target, UChar32 character) {
    char bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    target.append(bytes, length);
}

bool IsXmlCharacter(UChar32 character) noexcept {
    if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
    return !U_IS_SURROGATE(character) && character != 0xFFFE && character != 0xFFFF;
}

template <class Accepts>
bool AppendWhere(std::string& target, std::wstring_view utf16, Accepts&& accepts) {
    target.reserve(target.size() + utf16.size());
    for (std::size_t index = 0; index < utf16.size();) {
        auto character = static_cast<UChar32>(utf16[index++]);
        if (character < 0 || character > 0xFFFF) return false; // a unit has 16 bits, whatever wchar_t has
        if (U16_IS_LEAD(character) && index < utf16.size() && U16_IS_TRAIL(utf16[index]))
            character = U16_GET_SUPPLEMENTARY(character, static_cast<UChar32>(utf16[index++]));
        if (!accepts(character)) return false;
        if (character < 0x80)
            target.push_back(static_cast<char>(character));
        else
            AppendCharacter(target, character);
    }
    return true;
}

} // namespace

BSTR ToBstr(std::string_view utf8) noexcept {
    if (utf8.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR)) return nullptr;
    if (IsAscii(utf8)) {
        BSTR text = ::SysAllocStringLen(nullptr, static_cast<UINT>(utf8.size()));
        if (text != nullptr) std::copy(utf8.begin(), utf8.end(), text);
        return text;
    }
    UINT units = 0;
    ForEachUnit(utf8, [&](char16_t) { ++units; });
    BSTR text = ::SysAllocStringLen(nullptr, units);
    if (text != nullptr) {
        OLECHAR* next = text;
        ForEachUnit(utf8, [&](char16_t unit) { *next++ = static_cast<OLECHAR>(unit); });
    }
    return text;
}

HRESULT GiveText(BSTR* place, std::string_view utf8) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    *place = ToBstr(utf8);
    return *place != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT GiveText(VARIANT* place, std::string_view utf8) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    ::VariantInit(place);
    BSTR text = nullptr;
    const HRESULT result = GiveText(&text, utf8);
    if (SUCCEEDED(result)) {
        place->vt = VT_BSTR;
        place->bstrVal = text;
    }
    return result;
}

bool AppendUtf8(std::string& target, std::wstring_view utf16) {
    return AppendWhere(target, utf16, [](UChar32 character) { return !U_IS_SURROGATE(character); });
}

bool AppendXmlUtf8(std::string& target, std::wstring_view utf16) {
    return AppendWhere(target, utf16, IsXmlCharacter);
}

std::string ToUtf16Bytes(std::string_view utf8) {
    std::string bytes = "\xFF\xFE";
    bytes.reserve(2 + 2 * utf8.size());
    ForEachUnit(utf8, [&](char16_t unit) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    });
    return bytes;
}

bool FromUtf16Bytes(std::string_view bytes, bool bigEndian, std::string& utf8) {
    if (bytes.size() % 2 != 0) return false;
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t index = 0; index < units.size(); ++index) {
        const auto first = static_cast<unsigned char>(bytes[2 * index]);
        const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
        units[index] = static_cast<char16_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
    }
    utf8.reserve(units.size());
    for (std::size_t index = 0; index < units.size();) {
        UChar32 character;
        U16_NEXT(units, index, units.size(), character);
        if (U_IS_SURROGATE(character)) return false;
        AppendCharacter(utf8, character);
    }
    return true;
}

void AppendUtf16(std::wstring& target, std::string_view utf8) {
    if (IsAscii(utf8))
        target.append(utf8.begin(), utf8.end());
    else
        ForEachUnit(utf8, [&](char16_t unit) { target.push_back(static_cast<wchar_t>(unit)); });
}

} // namespace OvPlatform
