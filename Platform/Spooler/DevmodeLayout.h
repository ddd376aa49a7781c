#pragma once

#include "Com/PlatformExport.h"

#include <cstdint>
#include <vector>

namespace OvPlatform {

/// A stored device mode (little-endian, 16-bit text) as the DEVMODEW that programs read, dmSize adjusted, the
/// driver's own bytes behind it. Empty where the bytes are too short to be a device mode.
OV_PLATFORM_API std::vector<std::uint8_t> LoadDevmode(const std::vector<std::uint8_t>& stored);

/// The reverse. Empty where the record is too short for its own sizes.
OV_PLATFORM_API std::vector<std::uint8_t> StoreDevmode(const std::vector<std::uint8_t>& record);

} // namespace OvPlatform
