#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

/// SipHash-2-4, the published keyed hash of 64 bits.
namespace SipHash {

using Key = std::array<std::uint64_t, 2>;

namespace detail {

class State {
public:
    constexpr explicit State(const Key& key) noexcept
        : m_words{key[0] ^ 0x736F6D6570736575u, key[1] ^ 0x646F72616E646F6Du, key[0] ^ 0x6C7967656E657261u,
                  key[1] ^ 0x7465646279746573u} {}

    constexpr void add(std::uint64_t word) noexcept {
        m_words[3] ^= word;
        mix(2);
        m_words[0] ^= word;
    }
    constexpr std::uint64_t finish() noexcept {
        m_words[2] ^= 0xFF;
        mix(4);
        return m_words[0] ^ m_words[1] ^ m_words[2] ^ m_words[3];
    }

private:
    constexpr void half(std::size_t a, std::size_t b, int rotation) noexcept {
        m_words[a] += m_words[b];
        m_words[b] = std::rotl(m_words[b], rotation) ^ m_words[a];
    }
    constexpr void mix(int rounds) noexcept {
        for (; rounds > 0; --rounds) {
            half(0, 1, 13);
            m_words[0] = std::rotl(m_words[0], 32);
            half(2, 3, 16);
            half(0, 3, 21);
            half(2, 1, 17);
            m_words[2] = std::rotl(m_words[2], 32);
        }
    }

    std::array<std::uint64_t, 4> m_words;
};

} // namespace detail

constexpr std::uint64_t hash(const Key& key, std::span<const unsigned char> bytes) noexcept {
    detail::State state(key);
    std::uint64_t word = 0;
    std::size_t i = 0;
    for (; i < bytes.size(); ++i) {
        word |= std::uint64_t{bytes[i]} << (i % 8 * 8);
        if (i % 8 != 7) continue;
        state.add(word);
        word = 0;
    }
    state.add(word | std::uint64_t{i & 0xFF} << 56);
    return state.finish();
}

} // namespace SipHash
