#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// Base64 with the usual alphabet and padding, on texts of char and of wchar_t alike.
namespace Base64 {

inline constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Without a terminator.
constexpr std::size_t encodedLength(std::size_t bytes) noexcept { return (bytes + 2) / 3 * 4; }

/// Writes encodedLength(length) characters.
template <typename Character>
void encode(const unsigned char* bytes, std::size_t length, Character* text) noexcept {
    for (std::size_t i = 0; i < length; i += 3) {
        const std::size_t rest = length - i;
        const unsigned int group = (static_cast<unsigned int>(bytes[i]) << 16) |
                                   (rest > 1 ? static_cast<unsigned int>(bytes[i + 1]) << 8 : 0u) |
                                   (rest > 2 ? static_cast<unsigned int>(bytes[i + 2]) : 0u);
        *text++ = static_cast<Character>(alphabet[group >> 18]);
        *text++ = static_cast<Character>(alphabet[(group >> 12) & 63]);
        *text++ = static_cast<Character>(rest > 1 ? alphabet[(group >> 6) & 63] : '=');
        *text++ = static_cast<Character>(rest > 2 ? alphabet[group & 63] : '=');
    }
}

inline constexpr std::array<signed char, 128> valueOfCharacter = [] {
    std::array<signed char, 128> values{};
    values.fill(-1);
    for (int i = 0; i < 64; ++i)
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<signed char>(i);
    return values;
}();

/// Replaces `bytes` by the decoded ones. ASCII white space is skipped; missing padding is accepted. False,
/// with `bytes` empty, if another character stands in the text, one behind the padding, or a group is
/// incomplete.
template <typename Character>
[[nodiscard]] bool decode(const Character* text, std::size_t length, std::vector<unsigned char>& bytes) {
    bytes.clear();
    bytes.reserve(length / 4 * 3 + 3);
    unsigned int bits = 0;
    int characters = 0; // of the current group
    int padding = 0;
    bool good = true;
    for (std::size_t i = 0; i < length && good; ++i) {
        const auto code = static_cast<char32_t>(text[i]);
        if (code == ' ' || code == '\t' || code == '\r' || code == '\n') continue;
        if (code == '=') {
            good = characters >= 2 && characters + ++padding <= 4;
            continue;
        }
        const int value = code < valueOfCharacter.size() ? valueOfCharacter[code] : -1;
        good = value >= 0 && padding == 0;
        if (!good) break;
        bits = (bits << 6) | static_cast<unsigned int>(value);
        if (++characters < 4) continue;
        bytes.push_back(static_cast<unsigned char>(bits >> 16));
        bytes.push_back(static_cast<unsigned char>(bits >> 8));
        bytes.push_back(static_cast<unsigned char>(bits));
        characters = 0;
        bits = 0;
    }
    if (!good || characters == 1) {
        bytes.clear();
        return false;
    }
    if (characters >= 2) bytes.push_back(static_cast<unsigned char>(bits >> (characters == 2 ? 4 : 10)));
    if (characters == 3) bytes.push_back(static_cast<unsigned char>(bits >> 2));
    return true;
}

} // namespace Base64
