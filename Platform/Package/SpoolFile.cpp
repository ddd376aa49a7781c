#include "Package/SpoolFile.h"

#include "Package/PackageError.h"
#include "System/FileError.h"
#include "System/NamelessFile.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t bufferSize = 256u << 10;

} // namespace

SpoolFile::SpoolFile(const std::filesystem::path& folder, std::filesystem::path target)
    : m_target(std::move(target)), m_file(OpenNamelessFile(folder)) {
    if (m_file < 0) throw PackageError(FileError(errno, m_target));
    m_buffer.reserve(bufferSize);
}

SpoolFile::~SpoolFile() { close(m_file); }

void SpoolFile::Append(const void* bytes, std::size_t size) {
    if (m_buffer.size() + size > bufferSize) Flush();
    if (size >= bufferSize) return WriteOut(bytes, size);
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
        if (count < 0) throw PackageError(FileError(errno, m_target));
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
