#include "Fonts/FontFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <new>

namespace OvPlatform {

std::shared_ptr<const FontFile> FontFile::Open(const std::filesystem::path& path) {
    // Whatever else than a file stands there, a pipe say, would be waited for.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return nullptr;
    struct stat status = {};
    void* bytes = MAP_FAILED;
    std::size_t size = 0;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        size = static_cast<std::size_t>(status.st_size);
        bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    }
    close(file);
    if (bytes == MAP_FAILED) return nullptr;
    auto* const opened = new (std::nothrow) FontFile({static_cast<const std::byte*>(bytes), size});
    if (opened == nullptr) {
        munmap(bytes, size);
        throw std::bad_alloc();
    }
    return std::shared_ptr<const FontFile>(opened);
}

FontFile::~FontFile() { munmap(const_cast<std::byte*>(m_bytes.data()), m_bytes.size()); }

} // namespace OvPlatform
