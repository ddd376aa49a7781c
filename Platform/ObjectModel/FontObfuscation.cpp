#include "ObjectModel/FontObfuscation.h"

namespace OvPlatform {

namespace {

constexpr std::size_t obfuscatedBytes = 32;

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

std::optional<ObfuscationKey> ObfuscationKeyOf(std::string_view partName) {
    partName.remove_prefix(partName.rfind('/') + 1);
    const std::string_view guid = partName.substr(0, partName.rfind('.'));
    if (guid.size() != 36) return {};
    ObfuscationKey key{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < guid.size(); ++i) {
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (isHyphen != (guid[i] == '-')) return {};
        if (isHyphen) continue;
        const int digit = HexDigit(guid[i]);
        if (digit < 0) return {};
        key[digits / 2] = static_cast<std::uint8_t>(key[digits / 2] * 16 + digit);
        ++digits;
    }
    return key;
}

void Obfuscate(const ObfuscationKey& key, std::uint64_t position, void* bytes, std::size_t size) {
    auto* const masked = static_cast<std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < size && position + i < obfuscatedBytes; ++i) {
        const std::uint8_t mask = key[15 - (position + i) % 16];
        masked[i] = static_cast<std::uint8_t>(masked[i] ^ mask);
    }
}

} // namespace OvPlatform
