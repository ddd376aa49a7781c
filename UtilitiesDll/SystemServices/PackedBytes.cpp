#include "SystemServices/PackedBytes.h"

#include "SystemServices/Hash32.h"

#include <array>

namespace PackedBytes {

namespace {

std::array<unsigned char, checkLength> checkOf(std::span<const unsigned char> bytes) noexcept {
    const std::uint32_t hash = Hash32::GetHash32(bytes.data(), bytes.size());
    std::array<unsigned char, checkLength> check{};
    for (std::size_t i = 0; i < checkLength; ++i)
        check[i] = static_cast<unsigned char>(hash >> (8 * i));
    return check;
}

} // namespace

ByteBuffer beginEnvelope(const char (&mark)[3]) {
    ByteBuffer bytes;
    bytes.push_back(static_cast<unsigned char>(mark[0]));
    bytes.push_back(static_cast<unsigned char>(mark[1]));
    bytes.push_back(version);
    return bytes;
}

void endEnvelope(ByteBuffer& bytes) {
    const auto check = checkOf(bytes);
    bytes.insert(bytes.end(), check.begin(), check.end());
}

std::span<const unsigned char> openEnvelope(std::span<const unsigned char> bytes, const char (&mark)[3],
                                            const char*& damage) noexcept {
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
    const auto check = bytes.last(checkLength);
    for (std::size_t i = 0; const unsigned char byte : checkOf(checked)) {
        if (check[i++] != byte) damage = "its check sum does not fit: it was cut or changed";
    }
    return checked.subspan(headLength);
}

} // namespace PackedBytes
