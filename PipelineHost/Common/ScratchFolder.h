#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace OvPipeline {

/// A folder for the files of other programs, which only this user may enter. It goes away with the object,
/// and also where the program is ended from outside, by whatever signal: a process of its own waits for that.
class ScratchFolder {
public:
    /// purpose begins its name. Throws HostError.
    explicit ScratchFolder(const std::string& purpose);
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
    int m_alive = -1; // its other end is at its end when nobody has this one any more
    pid_t m_remover = -1;
};

} // namespace OvPipeline
