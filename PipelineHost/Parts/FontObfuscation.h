#pragma once

#include "Streams/ByteReader.h"

#include <ObjectModel/FontObfuscation.h>

namespace OvPipeline {

using OvPlatform::ObfuscationKey;
using OvPlatform::ObfuscationKeyOf;

/// Mixes the key into the first 32 bytes. What was obfuscated comes out plain, and the other way round.
std::unique_ptr<ByteReader> Obfuscate(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key);

} // namespace OvPipeline
