#pragma once

#include "Streams/ByteReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace OvPipeline {

using ObfuscationKey = std::array<std::uint8_t, 16>;

/// The key that lies in the font part's name; nothing where the name is no GUID.
std::optional<ObfuscationKey> ObfuscationKeyOf(std::string_view partName);

/// Mixes the key into the first 32 bytes. What was obfuscated comes out plain, and the other way round.
std::unique_ptr<ByteReader> Obfuscate(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key);

} // namespace OvPipeline
