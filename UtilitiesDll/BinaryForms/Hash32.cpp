#include "BinaryForms/Hash32.h"

#include <cstdint>

namespace {

// FNV-1a, 32 bits.
constexpr std::uint32_t offsetBasis = 0x811C9DC5u;

constexpr std::uint32_t add(std::uint32_t hash, unsigned int byte) noexcept {
    return (hash ^ (byte & 0xFFu)) * 0x01000193u;
}

} // namespace

unsigned int Hash32::GetHash32(const CXString& text) noexcept {
    std::uint32_t hash = offsetBasis;
    for (const wchar_t unit : text.View()) {
        const auto code = static_cast<unsigned int>(unit);
        hash = add(add(hash, code), code >> 8);
    }
    return hash;
}

unsigned int Hash32::GetHash32(const void* bytes, std::size_t length) noexcept {
    std::uint32_t hash = offsetBasis;
    const auto* const first = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < length; ++i)
        hash = add(hash, first[i]);
    return hash;
}
