#pragma once

#include <cstdint>
#include <set>
#include <string>

/// A number that stays as long as the texts do. It tells of a change to a device's commands that nobody
/// meant; whoever means one puts the new number into the test.
inline std::uint64_t FingerprintOf(const std::set<std::string>& texts) {
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a
    for (const std::string& text : texts)
        for (const char unit : text + '\n')
            hash = (hash ^ static_cast<unsigned char>(unit)) * 0x100000001B3;
    return hash;
}
