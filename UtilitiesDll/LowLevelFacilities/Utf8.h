#pragma once

#include <cstddef>

/// The one place where UTF-8 and UTF-16 units meet. A wchar_t holds one UTF-16 unit, whatever its width.
/// Malformed input never fails: it decodes to U+FFFD, one for each bad byte or lone surrogate.
namespace Utf8 {

inline constexpr char32_t replacement = 0xFFFD;
inline constexpr std::size_t maxBytes = 4;

/// Decodes the code point at `text` (not at its end) and moves `text` behind it. `valid` tells whether the
/// bytes were well formed; if not, one byte has been skipped.
inline char32_t decode(const char*& text, const char* end, bool& valid) noexcept {
    const auto byte = [](const char* at) { return static_cast<unsigned char>(*at); };
    const unsigned char lead = byte(text++);
    valid = true;
    if (lead < 0x80) return lead;
    const int tail = lead >= 0xF0 && lead <= 0xF4  ? 3
                     : lead >= 0xE0 && lead < 0xF0 ? 2
                     : lead >= 0xC2 && lead < 0xE0 ? 1
                                                   : 0;
    if (tail != 0 && end - text >= tail) {
        char32_t code = lead & (0x3Fu >> tail);
        bool good = true;
        for (int i = 0; i < tail; ++i) {
            good = good && (byte(text + i) & 0xC0u) == 0x80u;
            code = (code << 6) | (byte(text + i) & 0x3Fu);
        }
        const char32_t least = tail == 3 ? 0x10000 : tail == 2 ? 0x800 : 0x80;
        if (good && code >= least && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF)) {
            text += tail;
            return code;
        }
    }
    valid = false;
    return replacement;
}

inline char32_t decode(const char*& text, const char* end) noexcept {
    bool valid = false;
    return decode(text, end, valid);
}

/// Decodes one code point of UTF-16 and moves `text` behind it.
inline char32_t decode(const wchar_t*& text, const wchar_t* end) noexcept {
    const auto unit = static_cast<char32_t>(*text++);
    if (unit < 0xD800 || (unit > 0xDFFF && unit <= 0xFFFF)) return unit;
    if (unit < 0xDC00 && text != end) {
        const auto low = static_cast<char32_t>(*text);
        if (low >= 0xDC00 && low <= 0xDFFF) {
            ++text;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return replacement;
}

/// Writes the bytes of a code point and gives their number, 1 to 4.
inline std::size_t encode(char32_t code, char* bytes) noexcept {
    if (code < 0x80) {
        bytes[0] = static_cast<char>(code);
        return 1;
    }
    const std::size_t length = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    for (std::size_t i = length - 1; i > 0; --i) {
        bytes[i] = static_cast<char>(0x80u | (code & 0x3Fu));
        code >>= 6;
    }
    const unsigned int mark = (0xF00u >> length) & 0xFFu;
    bytes[0] = static_cast<char>(mark | code);
    return length;
}

/// Writes the UTF-16 units of a code point and gives their number, 1 or 2.
inline std::size_t encode(char32_t code, wchar_t* units) noexcept {
    if (code < 0x10000) {
        units[0] = static_cast<wchar_t>(code);
        return 1;
    }
    units[0] = static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    units[1] = static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    return 2;
}

} // namespace Utf8
