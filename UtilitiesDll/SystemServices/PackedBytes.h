#pragma once

#include "LowLevelFacilities/ByteBuffer.h"

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

/// The start of a format's bytes; the content is to be appended.
ByteBuffer beginEnvelope(const char (&mark)[3]);
/// Appends the check.
void endEnvelope(ByteBuffer& bytes);

/// The bytes of the content, as far as the envelope can be told apart. damage becomes what is wrong with the
/// envelope, null if nothing is. Fewer bytes than an envelope has, another mark or version give no content.
std::span<const unsigned char> openEnvelope(std::span<const unsigned char> bytes, const char (&mark)[3],
                                            const char*& damage) noexcept;

} // namespace PackedBytes
