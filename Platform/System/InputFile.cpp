#include "System/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace OvPlatform {

std::FILE* OpenInputFile(const std::filesystem::path& file) {
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return nullptr;
    struct stat state {};
    std::FILE* opened = nullptr;
    if (fstat(descriptor, &state) == 0) {
        if (S_ISREG(state.st_mode))
            opened = fdopen(descriptor, "rb");
        else
            errno = EISDIR;
    }
    if (opened != nullptr) return opened;
    const int error = errno;
    close(descriptor);
    errno = error;
    return nullptr;
}

} // namespace OvPlatform
