#pragma once

#include "Spooler/QueueDescription.h"

#include <filesystem>

namespace OvPlatform {

/// Reads folder/queue.xml and what it names. Throws QueueFolderError.
QueueDescription ReadQueueFolder(const std::filesystem::path& folder);

} // namespace OvPlatform
