#include "System/OutputFile.h"

#include "System/FileError.h"
#include "System/NamelessFile.h"

#include <linux/magic.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace OvPlatform {

namespace {

constexpr int mostLinks = 40; // as many as the system itself follows

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : ".";
}

// A link there stands for something that a process has open, and is no place in a folder.
bool IsOfProcesses(const std::filesystem::path& folder) {
    struct statfs system {};
    return statfs(folder.c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

// The system may refuse to follow a link that somebody else has laid in a folder for all.
void RequireFollowable(const std::filesystem::path& link) {
    const int file = open(link.c_str(), O_PATH | O_CLOEXEC);
    if (file >= 0)
        close(file);
    else if (errno != ENOENT)
        throw FileError(errno, link);
}

// What a name leads to: a regular file, or a place where one can be made.
std::filesystem::path Resolved(const std::filesystem::path& named) {
    std::filesystem::path target = named;
    for (int links = 0; links <= mostLinks; ++links) {
        struct stat state {};
        if (!target.has_filename()) throw FileError(EISDIR, named, "this names a folder, not a file");
        if (lstat(target.c_str(), &state) != 0) {
            if (errno == ENOENT) return target;
            throw FileError(errno, named);
        }
        if (S_ISREG(state.st_mode)) return target;
        if (S_ISDIR(state.st_mode))
            throw FileError(EISDIR, named, "this is a folder, not a file to be replaced");
        if (!S_ISLNK(state.st_mode) || IsOfProcesses(FolderOf(target)))
            throw FileError(EACCES, named, "this is no file that can be replaced");
        if (links == 0) RequireFollowable(named);
        std::error_code error;
        const auto next = std::filesystem::read_symlink(target, error);
        if (error) throw FileError(error.value(), named);
        target = target.parent_path() / next;
    }
    throw FileError(ELOOP, named);
}

} // namespace

OutputFile::OutputFile(const std::filesystem::path& target)
    : m_named(target), m_target(std::filesystem::absolute(Resolved(target))) {
    LookAtTarget();
    Open();
    m_file = fdopen(m_descriptor, "wb");
    if (m_file != nullptr) return;
    const int number = errno;
    close(m_descriptor);
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
    Throw(number);
}

OutputFile::~OutputFile() {
    std::fclose(m_file);
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

std::filesystem::path OutputFile::Folder() const { return FolderOf(m_target); }

void OutputFile::Open() {
    // What replaces a file may be secret as that file is, also before it has its rights.
    const unsigned mode = m_replaced ? 0600 : 0666;
    m_descriptor = OpenLinkableFile(Folder(), mode);
    if (m_descriptor < 0 && errno == EOPNOTSUPP) {
        m_temporary = RandomName(Folder());
        m_descriptor = open(m_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    }
    if (m_descriptor < 0) Throw(errno);
}

void OutputFile::LookAtTarget() {
    struct stat state {};
    if (lstat(m_target.c_str(), &state) == 0 && S_ISREG(state.st_mode))
        m_replaced = Rights{state.st_mode & 0777, state.st_uid, state.st_gid};
}

void OutputFile::Write(const void* bytes, std::size_t size) {
    if (size > 0 && std::fwrite(bytes, 1, size, m_file) != size) Throw(errno);
}

void OutputFile::Flush() {
    if (std::fflush(m_file) != 0) Throw(errno);
}

void OutputFile::Finish() {
    Flush();
    // Across a network it may be told only at closing that bytes were lost.
    const int again = dup(m_descriptor);
    if (again < 0 || close(again) != 0) Throw(errno);
    LookAtTarget(); // it may be another than at the start
    if (m_replaced) TakeOverRights();
}

void OutputFile::TakeOverRights() const {
    unsigned mode = m_replaced->mode;
    if (fchown(m_descriptor, m_replaced->owner, m_replaced->group) != 0 &&
        fchown(m_descriptor, static_cast<uid_t>(-1), m_replaced->group) != 0) {
        // The old group's rights are not for another group: that one may do what all may.
        mode = (mode & ~070U) | ((mode & 07U) << 3U);
    }
    // Where it fails, the file stays the user's own alone.
    static_cast<void>(fchmod(m_descriptor, mode));
}

void OutputFile::Commit() {
    if (m_temporary.empty()) {
        if (LinkFile(m_descriptor, m_target)) return;
        if (errno != EEXIST) Throw(errno);
        // A nameless file cannot take another's place: it has a name of its own for a moment.
        std::filesystem::path name = RandomName(Folder());
        if (!LinkFile(m_descriptor, name)) Throw(errno);
        m_temporary = std::move(name);
    }
    if (rename(m_temporary.c_str(), m_target.c_str()) != 0) Throw(errno);
    m_temporary.clear();
}

void OutputFile::Throw(int number) const { throw FileError(number, m_named); }

} // namespace OvPlatform
