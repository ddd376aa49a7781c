#pragma once

// No published header, but how both builds look at the units of UTF-16, two of which may be one character.
// Header only, as utf8coder.h is, which makes numbers of characters.

#include <utf8coder.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace OvPlatform::Utf16 {

template <class Unit>
constexpr bool IsHighSurrogate(Unit unit) noexcept {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
template <class Unit>
constexpr bool IsLowSurrogate(Unit unit) noexcept {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
template <class Unit>
constexpr bool IsSurrogate(Unit unit) noexcept {
    return IsHighSurrogate(unit) || IsLowSurrogate(unit);
}

/// Whether one character of two units begins at the place; not where the text ends there or before.
constexpr bool IsPairAt(std::wstring_view text, std::size_t at) noexcept {
    return at + 1 < text.size() && IsHighSurrogate(text[at]) && IsLowSurrogate(text[at + 1]);
}

/// The units of the character that begins at the place, which lies within the text: two of a pair, or one.
constexpr std::wstring_view CharacterAt(std::wstring_view text, std::size_t at) noexcept {
    return text.substr(at, IsPairAt(text, at) ? 2 : 1);
}

/// The characters of texts, each once, in the order of their first appearance. Half of a pair that stands
/// alone counts as one, and joins no half in another text.
class DifferentCharacters {
public:
    /// Throws std::bad_alloc.
    void Add(std::wstring_view text) {
        for (std::size_t at = 0; at < text.size();) {
            const std::wstring_view character = CharacterAt(text, at);
            const wchar_t* units = character.data();
            const char32_t number =
                character.size() == 1 ? static_cast<char32_t>(*units) : Utf8::Decode(units, units + 2);
            if (m_seen.insert(number).second) m_text += character;
            at += character.size();
        }
    }
    [[nodiscard]] const std::wstring& Text() const noexcept { return m_text; }

private:
    std::wstring m_text;
    std::unordered_set<char32_t> m_seen;
};

} // namespace OvPlatform::Utf16
