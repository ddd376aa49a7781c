#pragma once

// No published header, but how both builds go between UTF-8 and UTF-16. Header only, since the library's own
// strings need it beside the platform's functions. A wchar_t holds one UTF-16 unit, whatever its width.

#include <cstddef>
#include <string_view>

namespace OvPlatform::Utf8 {

/// What stands for ill-formed input: one for each maximal subpart of it, as Unicode recommends. That is as
/// many bytes as some character could begin with, or else one byte; in UTF-16 one unit.
inline constexpr char32_t Replacement = 0xFFFD;

inline constexpr std::size_t MostBytes = 4;
inline constexpr std::size_t MostUnits = 2;

constexpr bool IsTrail(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// How many characters a well-formed text has.
constexpr std::size_t CountCharacters(std::string_view text) noexcept {
    std::size_t count = 0;
    for (const char byte : text)
        if (!IsTrail(byte)) ++count;
    return count;
}

/// Takes the character at `text`, which is not at its end, and moves `text` behind it, or behind the
/// ill-formed subpart that stands there: the result is then Replacement and `wellFormed` false.
constexpr char32_t Decode(const char*& text, const char* end, bool& wellFormed) noexcept {
    const auto lead = static_cast<unsigned char>(*text++);
    wellFormed = lead < 0x80;
    if (wellFormed) return lead;
    if (lead < 0xC2 || lead > 0xF4) return Replacement;
    // Which second byte may follow depends on the first: none may make a longer form than needed, a surrogate
    // or a number beyond the last character.
    unsigned char least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    int trails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t character = lead & (0x3Fu >> trails);
    for (; trails != 0; --trails) {
        if (text == end) return Replacement;
        const auto trail = static_cast<unsigned char>(*text);
        if (trail < least || trail > most) return Replacement;
        character = character << 6 | (trail & 0x3Fu);
        ++text;
        least = 0x80;
        most = 0xBF;
    }
    wellFormed = true;
    return character;
}

constexpr char32_t Decode(const char*& text, const char* end) noexcept {
    bool wellFormed = false;
    return Decode(text, end, wellFormed);
}

/// The same for UTF-16. Ill-formed is a surrogate that stands alone, and a value of more than 16 bits.
template <class Unit>
constexpr char32_t DecodeUnits(const Unit*& text, const Unit* end, bool& wellFormed) noexcept {
    const auto unit = static_cast<char32_t>(*text++);
    wellFormed = unit < 0xD800 || (unit > 0xDFFF && unit <= 0xFFFF);
    if (wellFormed) return unit;
    if (unit > 0xDBFF || text == end) return Replacement;
    const auto low = static_cast<char32_t>(*text);
    if (low < 0xDC00 || low > 0xDFFF) return Replacement;
    wellFormed = true;
    ++text;
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

constexpr char32_t Decode(const wchar_t*& text, const wchar_t* end, bool& wellFormed) noexcept {
    return DecodeUnits(text, end, wellFormed);
}
constexpr char32_t Decode(const char16_t*& text, const char16_t* end, bool& wellFormed) noexcept {
    return DecodeUnits(text, end, wellFormed);
}
constexpr char32_t Decode(const wchar_t*& text, const wchar_t* end) noexcept {
    bool wellFormed = false;
    return Decode(text, end, wellFormed);
}

/// Writes the bytes of a character and gives their number, 1 to MostBytes.
constexpr std::size_t Encode(char32_t character, char* bytes) noexcept {
    if (character < 0x80) {
        bytes[0] = static_cast<char>(character);
        return 1;
    }
    const std::size_t length = character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
    for (std::size_t at = length - 1; at > 0; --at) {
        bytes[at] = static_cast<char>(0x80u | (character & 0x3Fu));
        character >>= 6;
    }
    const unsigned mark = (0xF00u >> length) & 0xFFu;
    bytes[0] = static_cast<char>(mark | character);
    return length;
}

/// Writes the UTF-16 units of a character and gives their number, 1 or 2.
template <class Unit>
constexpr std::size_t EncodeUnits(char32_t character, Unit* units) noexcept {
    if (character < 0x10000) {
        units[0] = static_cast<Unit>(character);
        return 1;
    }
    units[0] = static_cast<Unit>(0xD7C0 + (character >> 10));
    units[1] = static_cast<Unit>(0xDC00 | (character & 0x3FF));
    return 2;
}
constexpr std::size_t Encode(char32_t character, wchar_t* units) noexcept {
    return EncodeUnits(character, units);
}
constexpr std::size_t Encode(char32_t character, char16_t* units) noexcept {
    return EncodeUnits(character, units);
}

} // namespace OvPlatform::Utf8
