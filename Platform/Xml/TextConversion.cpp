#include "Xml/TextConversion.h"

#include <utf8coder.h>

#include <algorithm>
#include <limits>

namespace OvPlatform {

namespace {

bool IsAscii(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

/// Calls `take` with every UTF-16 unit of `utf8`.
template <class Take>
void ForEachUnit(std::string_view utf8, Take&& take) {
    const char* next = utf8.data();
    for (const char* const end = next + utf8.size(); next != end;) {
        char16_t units[Utf8::MostUnits];
        const std::size_t count = Utf8::Encode(Utf8::Decode(next, end), units);
        for (std::size_t at = 0; at < count; ++at)
            take(units[at]);
    }
}

bool IsXmlCharacter(char32_t character) noexcept {
    if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
    return character != 0xFFFE && character != 0xFFFF;
}

/// False where the units are ill-formed, or a character of theirs is not accepted.
template <class Unit, class Accepts>
bool AppendWhere(std::string& target, const Unit* next, std::size_t size, Accepts&& accepts) {
    target.reserve(target.size() + size);
    const Unit* const end = next + size;
    // Most of a text, as a rule all of it, is what every reader takes as it is.
    const Unit* const other = std::find_if_not(next, end, [](Unit unit) {
        return (unit >= ' ' && unit <= '~') || unit == '\n' || unit == '\r' || unit == '\t';
    });
    const std::size_t filled = target.size();
    target.resize(filled + static_cast<std::size_t>(other - next));
    std::transform(next, other, target.data() + filled, [](Unit unit) { return static_cast<char>(unit); });
    for (next = other; next != end;) {
        bool wellFormed = true;
        const char32_t character = Utf8::Decode(next, end, wellFormed);
        if (!wellFormed || !accepts(character)) return false;
        if (character < 0x80) {
            target.push_back(static_cast<char>(character));
        } else {
            char bytes[Utf8::MostBytes];
            target.append(bytes, Utf8::Encode(character, bytes));
        }
    }
    return true;
}

constexpr auto any = [](char32_t) { return true; };

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
    return AppendWhere(target, utf16.data(), utf16.size(), any);
}

bool AppendXmlUtf8(std::string& target, std::wstring_view utf16) {
    return AppendWhere(target, utf16.data(), utf16.size(), IsXmlCharacter);
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
    return AppendWhere(utf8, units.data(), units.size(), any);
}

void AppendUtf16(std::wstring& target, std::string_view utf8) {
    if (IsAscii(utf8))
        target.append(utf8.begin(), utf8.end());
    else
        ForEachUnit(utf8, [&](char16_t unit) { target.push_back(static_cast<wchar_t>(unit)); });
}

} // namespace OvPlatform
