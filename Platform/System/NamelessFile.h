#pragma once

#include "Com/PlatformExport.h"

#include <filesystem>

namespace OvPlatform {

/// A new file in the folder, to read and write, that has no name: nothing is left of it, however the process
/// ends. Nobody else may open it. The caller closes the descriptor; -1 with errno where there is none. Where
/// the file system knows no such files, it has a name until this returns.
OV_PLATFORM_API int OpenNamelessFile(const std::filesystem::path& folder);

/// The same, but it can be given a name later, and has the rights that a new file of that mode gets. -1 with
/// EOPNOTSUPP where the file system cannot.
int OpenLinkableFile(const std::filesystem::path& folder, unsigned mode);
/// Gives such a file a name that is free; false with errno.
bool LinkFile(int file, const std::filesystem::path& name);

/// A name in the folder that nobody can foretell.
std::filesystem::path RandomName(const std::filesystem::path& folder);

} // namespace OvPlatform
