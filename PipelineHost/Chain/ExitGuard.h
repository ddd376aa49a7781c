#pragma once

#include "Report/JobState.h"

#include <signal.h>

namespace OvPipeline {

/// While it lives, a filter does not end the program unnoticed: exit() and quick_exit() end it with a line
/// that names the filter and with the exit code of a failed job, and abort() says the same before it ends it
/// in its own way. Nothing is written then. Once the output stands, the program may end as it likes. What
/// ends a process without asking it (_exit, a signal) is not heard.
class ExitGuard {
public:
    explicit ExitGuard(JobState& job);
    ExitGuard(const ExitGuard&) = delete;
    ExitGuard& operator=(const ExitGuard&) = delete;
    ~ExitGuard();

    /// Once more behind modules that were loaded since, so that it is heard before what they do at the end.
    static void Listen();

private:
    JobState* m_outer;
    struct sigaction m_beforeAbort {};
};

} // namespace OvPipeline
