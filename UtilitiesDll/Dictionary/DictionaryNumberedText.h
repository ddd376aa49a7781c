#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Text that a caller holds in two pieces: a number, as it stands in five decimal digits, and what follows.
struct DictionaryNumberedText {
    static constexpr std::size_t headSize = 5;
    static constexpr std::uint32_t numberLimit = 100'000;

    /// The number must be less than numberLimit.
    DictionaryNumberedText(std::uint32_t number, std::string_view text) noexcept
        : head(MakeHead(number)), tail(text) {}

    /// The digits, the first one in the lowest byte.
    static constexpr std::uint64_t MakeHead(std::uint32_t number) noexcept {
        const auto digit = [number](std::uint32_t unit) -> std::uint64_t { return '0' + number / unit % 10; };
        return digit(10'000) | digit(1'000) << 8 | digit(100) << 16 | digit(10) << 24 | digit(1) << 32;
    }
    /// The same of the first bytes of a text.
    static std::uint64_t ReadHead(const char* text) noexcept {
        const auto byte = [text](int at) -> std::uint64_t { return static_cast<unsigned char>(text[at]); };
        return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24 | byte(4) << 32;
    }

    [[nodiscard]] std::string MakeString() const {
        std::string text;
        for (std::size_t digit = 0; digit < headSize; ++digit)
            text += static_cast<char>(head >> (8 * digit) & 0xFF);
        return text.append(tail);
    }

    std::uint64_t head;
    std::string_view tail;
};
