#pragma once

#include "Com/PlatformExport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace OvPlatform {

using ObfuscationKey = std::array<std::uint8_t, 16>;

/// The key that lies in the font part's name; nothing where the name is no GUID.
OV_PLATFORM_API std::optional<ObfuscationKey> ObfuscationKeyOf(std::string_view partName);

/// Mixes the key into what of the font's first 32 bytes is among these. What was obfuscated comes out plain,
/// and the other way round. position: of the bytes in the font.
OV_PLATFORM_API void Obfuscate(const ObfuscationKey& key, std::uint64_t position, void* bytes,
                               std::size_t size);

} // namespace OvPlatform
