#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Hashing and comparing of text for tables in memory, made for keys of some dozen bytes: up to 32 of them
/// are done without a loop or a call, since a processor foresees neither the end of the one nor what the
/// other chooses. The words that are read overlap, and coincide in a text of eight bytes.
namespace DictionaryText {

namespace Detail {

constexpr std::uint64_t odd1 = 0x9E3779B97F4A7C15u;
constexpr std::uint64_t odd2 = 0xC2B2AE3D27D4EB4Fu;
constexpr std::uint64_t odd3 = 0x165667B19E3779F9u;
constexpr std::uint64_t odd4 = 0xD6E8FEB86659FD93u;
constexpr std::uint64_t odd5 = 0xA0761D6478BD642Fu;

template <typename Word>
inline std::uint64_t Load(const char* bytes) noexcept {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// All of a text of at most seven bytes.
inline std::uint64_t LoadShort(const char* bytes, std::size_t size) noexcept {
    if (size >= 4) return Load<std::uint32_t>(bytes) | Load<std::uint32_t>(bytes + size - 4) << 32;
    if (size == 0) return 0;
    return Load<std::uint8_t>(bytes) | Load<std::uint8_t>(bytes + size / 2) << 8 |
           Load<std::uint8_t>(bytes + size - 1) << 16;
}

/// Where the second and the third of the four words of a text of 8 to 32 bytes begin.
inline std::size_t SecondWord(std::size_t size) noexcept { return (std::min<std::size_t>)(8, size - 8); }
inline std::size_t ThirdWord(std::size_t size) noexcept { return size > 16 ? size - 16 : 0; }

} // namespace Detail

/// The hash of the text and of a number that stands for what is before it. Differs between machines.
inline std::uint32_t Hash(std::uint64_t head, std::string_view text) noexcept {
    using namespace Detail;
    const char* at = text.data();
    std::size_t left = text.size();
    std::uint64_t sum = head * odd5 + left;
    for (; left > 32; left -= 8, at += 8)
        sum = (sum ^ Load<std::uint64_t>(at)) * odd1;
    if (left < 8) {
        sum += LoadShort(at, left) * odd1;
    } else {
        sum += Load<std::uint64_t>(at) * odd1 + Load<std::uint64_t>(at + SecondWord(left)) * odd2 +
               Load<std::uint64_t>(at + ThirdWord(left)) * odd3 + Load<std::uint64_t>(at + left - 8) * odd4;
    }
    sum = (sum ^ (sum >> 32)) * odd2;
    return static_cast<std::uint32_t>(sum >> 32);
}

inline bool AreEqual(std::string_view one, std::string_view other) noexcept {
    using namespace Detail;
    const std::size_t size = one.size();
    if (other.size() != size) return false;
    const char* const left = one.data();
    const char* const right = other.data();
    if (size > 32) return std::memcmp(left, right, size) == 0;
    if (size < 8) return LoadShort(left, size) == LoadShort(right, size);
    const auto differ = [left, right](std::size_t at) {
        return Load<std::uint64_t>(left + at) ^ Load<std::uint64_t>(right + at);
    };
    return (differ(0) | differ(SecondWord(size)) | differ(ThirdWord(size)) | differ(size - 8)) == 0;
}

} // namespace DictionaryText
