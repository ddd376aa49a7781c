#include "Package/SpoolFile.h"

#include "Package/PackageError.h"

#include <windows.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace OvPlatform {

namespace {

constexpr std::size_t BufferSize = 256u << 10;

HRESULT ResultOf(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    case EACCES:
    case EPERM:
    case EROFS:
        return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    case ENOSPC:
    case EDQUOT:
        return HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    default:
        return HRESULT_FROM_WIN32(ERROR_WRITE_FAULT);
    }
}

std::string Reason(int error) { return std::generic_category().message(error); }

// A file without a name, in the folder; -1 with errno.
int OpenNameless(const std::filesystem::path& folder) {
    const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return file;
    // A file system without nameless files: one with a name for a moment.
    std::string name = (folder / ".package-XXXXXX").string();
    const int named = mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) unlink(name.c_str());
    return named;
}

} // namespace

SpoolFile::SpoolFile(const std::filesystem::path& target) : m_target(target) {
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    m_file = OpenNameless(folder);
    if (m_file < 0)
        throw PackageError(ResultOf(errno), target.string(),
                           "no file can be made beside it: " + Reason(errno));
    m_buffer.reserve(BufferSize);
}

SpoolFile::~SpoolFile() { close(m_file); }

void SpoolFile::Append(const void* bytes, std::size_t size) {
    if (m_buffer.size() + size > BufferSize) Flush();
    if (size >= BufferSize) return WriteOut(bytes, size);
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    m_buffer.insert(m_buffer.end(), first, first + size);
}

void SpoolFile::Flush() {
    if (m_buffer.empty()) return;
    WriteOut(m_buffer.data(), m_buffer.size());
    m_buffer.clear();
}

void SpoolFile::WriteOut(const void* bytes, std::size_t size) {
    const auto* next = static_cast<const char*>(bytes);
    for (std::size_t left = size; left != 0;) {
        const ssize_t count = write(m_file, next, left);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0)
            throw PackageError(ResultOf(errno), m_target.string(),
                               "the package cannot be written: " + Reason(errno));
        next += count;
        left -= static_cast<std::size_t>(count);
    }
    m_written += size;
}

bool SpoolFile::Read(std::uint64_t offset, void* buffer, std::size_t size) const {
    auto* next = static_cast<char*>(buffer);
    while (size != 0) {
        const ssize_t count = pread(m_file, next, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        next += count;
        offset += static_cast<std::uint64_t>(count);
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace OvPlatform
