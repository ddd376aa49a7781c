#include "Chain/ExitGuard.h"

#include "Chain/FilterCall.h"

#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace OvPipeline {

namespace {

constexpr int jobFailed = 1; // the program's exit code

std::atomic<JobState*> guarded{nullptr};
std::atomic<pid_t> program{0}; // what a filter forks may end as it likes

// Without memory of its own, for a signal's handler; at once, as other jobs' processes may have words, too.
void Say(const char* who, const char* what) {
    const char* const texts[] = {"ov-pipeline: ", who, what};
    iovec pieces[std::size(texts)];
    for (std::size_t i = 0; i < std::size(texts); ++i)
        pieces[i] = {const_cast<char*>(texts[i]), std::strlen(texts[i])};
    const ssize_t ignored = writev(STDERR_FILENO, pieces, std::size(pieces));
    static_cast<void>(ignored);
}

// What else is to be done at the end of a program, other threads may be in the midst of.
void EndAtOnce() {
    JobState* const job = guarded;
    if (job == nullptr || getpid() != program || !job->AskCancel()) return;
    const char* who = FilterCall::Innermost();
    Say(who != nullptr ? who : "a thread of a filter",
        ": it has ended the program by exit(); nothing was written\n");
    _exit(jobFailed);
}

// A filter's library does it in threads of its own, too.
extern "C" void OnAbort(int) {
    JobState* const job = guarded;
    if (job == nullptr || getpid() != program || !job->AskCancel()) return;
    const char* who = FilterCall::Innermost();
    Say(who != nullptr ? who : "a thread of a filter or of the pipeline",
        ": it aborts the program; nothing was written\n");
}

} // namespace

ExitGuard::ExitGuard(JobState& job) : m_outer(guarded.exchange(&job)) {
    program = getpid();
    struct sigaction action {};
    action.sa_handler = &OnAbort;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGABRT, &action, &m_beforeAbort);
    Listen();
}

ExitGuard::~ExitGuard() {
    sigaction(SIGABRT, &m_beforeAbort, nullptr);
    guarded = m_outer;
}

void ExitGuard::Listen() {
    std::atexit(&EndAtOnce);
    std::at_quick_exit(&EndAtOnce);
}

} // namespace OvPipeline
