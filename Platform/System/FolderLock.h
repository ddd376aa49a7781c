#pragma once

#include "Com/PlatformExport.h"

#include <filesystem>

namespace OvPlatform {

/// While it lives, no other process and no other thread has such a lock of the same folder; whoever asks for
/// one waits. It leaves nothing in the folder, ends with its process, and binds only those who ask. Where a
/// file system knows no locks, or the folder cannot be opened, it is none.
class OV_PLATFORM_API FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder) noexcept;
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int m_descriptor;
};

} // namespace OvPlatform
