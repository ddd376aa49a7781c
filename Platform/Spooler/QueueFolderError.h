#pragma once

#include "Com/PlatformExport.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace OvPlatform {

/// A queue folder that cannot be used. what() is one line: the file, the line in it where there is one, and
/// what is wrong.
class OV_PLATFORM_API QueueFolderError : public std::runtime_error {
public:
    QueueFolderError(const std::filesystem::path& file, const std::string& problem)
        : QueueFolderError(file, 0, problem) {}
    QueueFolderError(const std::filesystem::path& file, long line, const std::string& problem);
};

} // namespace OvPlatform
