#pragma once

#include "Com/PlatformExport.h"
#include "Spooler/QueueDescription.h"

#include <filesystem>

namespace OvPlatform {

/// Writes a queue as a folder that QueueFolder::Load reads back unchanged. The folder is made if need be;
/// files in it that the description does not name are left alone. Throws QueueFolderError.
OV_PLATFORM_API void WriteQueueFolder(const QueueDescription& description,
                                      const std::filesystem::path& folder);

} // namespace OvPlatform
