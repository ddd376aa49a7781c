#pragma once

#include "Report/ShownOutput.h"

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace OvPipeline {

/// A process that does one job of several and tells what came of it: lines for the error stream while it
/// works, then its account. It waits for its turn first, so that it can be made before there is room for it.
class JobProcess {
public:
    /// Works in the process; gives the account, any bytes, and the exit code.
    struct Result {
        std::string account;
        int exitCode = 0;
    };
    using Work = std::function<Result(ShownOutput& errors)>;

    /// Makes the process. One thread, as only that one goes on in it; what errors holds is written before.
    /// Throws std::system_error.
    JobProcess(const Work& work, ShownOutput& errors);
    JobProcess(const JobProcess&) = delete;
    JobProcess& operator=(const JobProcess&) = delete;
    /// Waits for the process. One that has not been told to begin goes without having worked.
    ~JobProcess();

    pid_t Process() const { return m_process; }
    void Begin();
    /// SIGTERM, also for one that is stopped. Work that does not take the signal ends without an account,
    /// with ExitCancelled.
    void Cancel() const;
    /// What poll(2) is to wait for.
    int Descriptor() const { return m_told.Get(); }
    /// Takes what was told by now, and passes lines on. False: all is told.
    bool Hear(ShownOutput& errors);
    /// The process's state, as waitpid(2) gives it, once it is gone.
    int Await();
    /// None where the process ended before the job did.
    std::optional<std::string> Account() const;

private:
    // One end of a pipe.
    class End {
    public:
        End() = default;
        End(const End&) = delete;
        End& operator=(const End&) = delete;
        ~End() { Close(); }
        int Get() const { return m_descriptor; }
        void Set(int descriptor) { m_descriptor = descriptor; }
        void Close();

    private:
        int m_descriptor = -1;
    };

    [[noreturn]] static void WorkInChild(const Work& work, End& turn, End& account);

    pid_t m_process = -1;
    End m_turn; // where the process hears that it may begin
    End m_told;
    std::string m_text; // that was told, without the lines that have been passed on
    int m_status = 0;
};

} // namespace OvPipeline
