#pragma once

/// White space as Unicode has it (all of it lies in the BMP), independent of the process's locale.
namespace WhiteSpace {

constexpr bool isWhiteSpace(char32_t code) noexcept {
    return (code >= 0x09 && code <= 0x0D) || code == 0x20 || code == 0x85 || code == 0xA0 || code == 0x1680 ||
           (code >= 0x2000 && code <= 0x200A) || code == 0x2028 || code == 0x2029 || code == 0x202F ||
           code == 0x205F || code == 0x3000;
}

} // namespace WhiteSpace
