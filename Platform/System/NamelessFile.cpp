#include "System/NamelessFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>

namespace OvPlatform {

namespace {

std::string OwnLink(int file) { return "/proc/self/fd/" + std::to_string(file); }

int OpenNameless(const std::filesystem::path& folder, int flags, unsigned mode) {
    const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC | flags, mode);
    // Kernels and file systems without nameless files answer in three ways.
    if (file < 0 && (errno == EISDIR || errno == EINVAL)) errno = EOPNOTSUPP;
    return file;
}

} // namespace

int OpenNamelessFile(const std::filesystem::path& folder) {
    const int file = OpenNameless(folder, O_EXCL, 0600); // O_EXCL here: never to have a name
    if (file >= 0 || errno != EOPNOTSUPP) return file;
    const std::filesystem::path name = RandomName(folder);
    const int named = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (named >= 0) unlink(name.c_str());
    return named;
}

int OpenLinkableFile(const std::filesystem::path& folder, unsigned mode) {
    const int file = OpenNameless(folder, 0, mode);
    if (file < 0 || access(OwnLink(file).c_str(), F_OK) == 0) return file;
    close(file); // no /proc: it could not be named
    errno = EOPNOTSUPP;
    return -1;
}

bool LinkFile(int file, const std::filesystem::path& name) {
    return linkat(AT_FDCWD, OwnLink(file).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

std::filesystem::path RandomName(const std::filesystem::path& folder) {
    std::uint64_t bits[2];
    if (getrandom(bits, sizeof bits, 0) != static_cast<ssize_t>(sizeof bits))
        throw std::system_error(errno, std::generic_category(), "no random name");
    char name[48];
    std::snprintf(name, sizeof name, ".output-%016llx%016llx", static_cast<unsigned long long>(bits[0]),
                  static_cast<unsigned long long>(bits[1]));
    return folder / name;
}

} // namespace OvPlatform
