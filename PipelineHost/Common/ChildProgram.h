#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// Another program that works for a job. It has our environment but for the folder of its temporary files,
/// and no open files of ours; it reads nothing. It ends with this object, or with this program, and all that
/// it has started ends with it.
class ChildProgram {
public:
    struct Call {
        std::filesystem::path program;
        std::vector<std::string> arguments; // behind its name
        std::filesystem::path folder;       // that it works in, with its temporary files
        std::filesystem::path words;        // the file that gets what it says; empty: nobody hears it
        std::optional<std::uint64_t> mostFileBytes;
        std::optional<std::uint64_t> mostMemoryBytes;
    };

    /// The exit code where the program cannot be run.
    static constexpr int cannotRun = 127;

    /// Throws std::system_error where there is no process for it.
    explicit ChildProgram(const Call& call);
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram();

    /// The process, and the group that it leads. It is nobody else's number before Finish.
    pid_t Process() const { return m_process; }
    /// Without waiting for it. What it has started may still be there.
    bool HasEnded() const;
    /// Ends what is still there. The status as wait(2) has it. Once.
    int Finish();

private:
    pid_t m_process;
};

} // namespace OvPipeline
