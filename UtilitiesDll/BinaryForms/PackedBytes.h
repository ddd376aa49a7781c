#pragma once

#include "BinaryForms/Hash32.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// How the library's own binary formats write numbers, and the envelope around each of them: a mark of two
/// letters and a version byte, the content, and the Hash32 of all that (4 bytes, least significant first).
namespace PackedBytes {

inline constexpr std::size_t checkLength = 4;
inline constexpr std::size_t headLength = 3;
inline constexpr unsigned char version = 1;

/// 7 bits a byte, least significant first, the top bit set in all but the last.
inline void appendNumber(ByteBuffer& bytes, std::uint32_t value) {
    for (; value >= 0x80; value >>= 7)
        bytes.push_back(static_cast<unsigned char>(value | 0x80));
    bytes.push_back(static_cast<unsigned char>(value));
}

constexpr std::size_t numberLength(std::uint32_t value) noexcept {
    std::size_t length = 1;
    for (; value >= 0x80; value >>= 7)
        ++length;
    return length;
}

/// A small number of either sign becomes a small one without.
constexpr std::uint32_t fromSigned(std::int32_t value) noexcept {
    const auto bits = static_cast<std::uint32_t>(value);
    return (bits << 1) ^ (value < 0 ? ~std::uint32_t{0} : 0);
}

constexpr std::int32_t toSigned(std::uint32_t value) noexcept {
    return static_cast<std::int32_t>((value >> 1) ^ ((value & 1) != 0 ? ~std::uint32_t{0} : 0));
}

/// Takes bytes from the front. What is not there, or not in this form, is not taken.
class Reader {
public:
    constexpr explicit Reader(std::span<const unsigned char> bytes) noexcept : m_rest(bytes) {}

    [[nodiscard]] constexpr std::span<const unsigned char> rest() const noexcept { return m_rest; }
    [[nodiscard]] constexpr bool isAtEnd() const noexcept { return m_rest.empty(); }

    [[nodiscard]] constexpr bool readByte(unsigned char& value) noexcept {
        if (m_rest.empty()) return false;
        value = m_rest.front();
        m_rest = m_rest.subspan(1);
        return true;
    }
    /// Only the shortest form of a number is one, so that a content has one form.
    [[nodiscard]] constexpr bool readNumber(std::uint32_t& value) noexcept {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < 5 && i < m_rest.size(); ++i) {
            const unsigned char byte = m_rest[i];
            number |= std::uint64_t{byte & 0x7Fu} << (7 * i);
            if (byte >= 0x80) continue;
            if ((byte == 0 && i > 0) || number > UINT32_MAX) return false;
            value = static_cast<std::uint32_t>(number);
            m_rest = m_rest.subspan(i + 1);
            return true;
        }
        return false;
    }
    [[nodiscard]] constexpr bool readBytes(std::size_t length,
                                           std::span<const unsigned char>& bytes) noexcept {
        if (length > m_rest.size()) return false;
        bytes = m_rest.first(length);
        m_rest = m_rest.subspan(length);
        return true;
    }

private:
    std::span<const unsigned char> m_rest;
};

inline std::array<unsigned char, checkLength> checkOf(std::span<const unsigned char> bytes) noexcept {
    const std::uint32_t hash = Hash32::GetHash32(bytes.data(), bytes.size());
    std::array<unsigned char, checkLength> check{};
    for (std::size_t i = 0; i < checkLength; ++i)
        check[i] = static_cast<unsigned char>(hash >> (8 * i));
    return check;
}

/// The start of a format's bytes; the content is to be appended.
inline ByteBuffer beginEnvelope(const char (&mark)[3]) {
    ByteBuffer bytes;
    bytes.push_back(static_cast<unsigned char>(mark[0]));
    bytes.push_back(static_cast<unsigned char>(mark[1]));
    bytes.push_back(version);
    return bytes;
}

/// Appends the check.
inline void endEnvelope(ByteBuffer& bytes) {
    const auto check = checkOf(bytes);
    bytes.insert(bytes.end(), check.begin(), check.end());
}

/// The bytes of the content. damage becomes what is wrong with the envelope, null if nothing is. A wrong
/// check leaves the content to those who want to see it; otherwise there is none.
inline std::span<const unsigned char> openEnvelope(std::span<const unsigned char> bytes,
                                                   const char (&mark)[3], const char*& damage) noexcept {
    damage = nullptr;
    if (bytes.size() < headLength + checkLength)
        damage = "it is too short";
    else if (bytes[0] != static_cast<unsigned char>(mark[0]) ||
             bytes[1] != static_cast<unsigned char>(mark[1]))
        damage = "it begins with another mark";
    else if (bytes[2] != version)
        damage = "it is of a version unknown here";
    if (damage != nullptr) return {};
    const auto checked = bytes.first(bytes.size() - checkLength);
    const auto check = checkOf(checked);
    if (!std::equal(check.begin(), check.end(), bytes.last(checkLength).begin()))
        damage = "its check sum does not fit: it was cut or changed";
    return checked.subspan(headLength);
}

} // namespace PackedBytes
