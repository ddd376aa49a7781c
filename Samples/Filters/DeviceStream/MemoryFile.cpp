#include "MemoryFile.h"

#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <sys/mman.h>
#include <unistd.h>

namespace {

[[noreturn]] void Refuse() {
    ThrowFailure<CPException>([] { return "there is no memory for the package of a page"; });
}

} // namespace

MemoryFile::MemoryFile() : m_descriptor(memfd_create("page", MFD_CLOEXEC)) {
    if (m_descriptor < 0) Refuse();
}

MemoryFile::~MemoryFile() { close(m_descriptor); }

void MemoryFile::Rewind() {
    if (lseek(m_descriptor, 0, SEEK_SET) != 0) Refuse();
}

void MemoryFile::Truncate() {
    if (ftruncate(m_descriptor, lseek(m_descriptor, 0, SEEK_CUR)) != 0) Refuse();
}

void MemoryFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(m_descriptor, bytes.data(), bytes.size());
        if (count <= 0) Refuse();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string MemoryFile::Path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }
