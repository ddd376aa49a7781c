#include "System/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace OvPlatform {

FolderLock::FolderLock(const std::filesystem::path& folder) noexcept
    : m_descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_descriptor < 0) return;
    while (flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (m_descriptor >= 0) close(m_descriptor);
}

} // namespace OvPlatform
