#pragma once

#include "Com/PlatformExport.h"

#include <cstdio>
#include <filesystem>

namespace OvPlatform {

/// A regular file, to read its bytes; the caller closes it. Null with errno where there is none, EISDIR for
/// whatever else stands there: a pipe would be waited for, and a device might never end.
OV_PLATFORM_API std::FILE* OpenInputFile(const std::filesystem::path& file);

} // namespace OvPlatform
