#include "Package/SpoolFile.h"

#include "Package/PackageError.h"
#include "System/FileError.h"
#include "System/NamelessFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t bufferSize = 256u << 10;

} // namespace

SpoolFile::SpoolFile(std::filesystem::path folder, std::filesystem::path target)
    : m_folder(std::move(folder)), m_target(std::move(target)) {}

SpoolFile::~SpoolFile() {
    if (m_file >= 0) close(m_file);
}

void SpoolFile::Append(const void* bytes, std::size_t size) {
    if (m_buffer.size() + size > bufferSize) Flush();
    if (size > bufferSize) return WriteOut(bytes, size);
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    m_buffer.insert(m_buffer.end(), first, first + size);
}

void SpoolFile::Flush() {
    if (m_buffer.empty()) return;
    WriteOut(m_buffer.data(), m_buffer.size());
    m_buffer.clear();
}

void SpoolFile::WriteOut(const void* bytes, std::size_t size) {
    if (m_file < 0) m_file = OpenNamelessFile(m_folder);
    if (m_file < 0) Fail(errno);
    const auto* next = static_cast<const char*>(bytes);
    for (std::size_t left = size; left != 0;) {
        const ssize_t count = pwrite(m_file, next, left, static_cast<off_t>(m_written));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) Fail(errno);
        next += count;
        left -= static_cast<std::size_t>(count);
        m_written += static_cast<std::uint64_t>(count);
    }
}

void SpoolFile::Read(std::uint64_t offset, void* buffer, std::size_t size) {
    auto* next = static_cast<char*>(buffer);
    if (offset + size > m_written) { // some of it is still in memory
        const std::uint64_t start = (std::max)(offset, m_written);
        const auto before = static_cast<std::size_t>(start - offset);
        std::memcpy(next + before, m_buffer.data() + (start - m_written), size - before);
        size = before;
    }
    while (size != 0) {
        const ssize_t count = pread(m_file, next, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) Fail(count < 0 ? errno : EIO);
        next += count;
        offset += static_cast<std::uint64_t>(count);
        size -= static_cast<std::size_t>(count);
    }
}

// The target may lie elsewhere, and have all the room that there is.
void SpoolFile::Fail(int number) const {
    throw PackageError(FileError(number, m_target,
                                 "cannot be written: a temporary file in " + m_folder.string() + ": " +
                                     std::generic_category().message(number)));
}

void SpoolFile::Clear() {
    m_buffer.clear();
    m_written = 0;
    if (m_file >= 0 && ftruncate(m_file, 0) != 0) Fail(errno);
}

} // namespace OvPlatform
