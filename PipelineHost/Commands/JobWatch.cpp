#include "Commands/JobWatch.h"

#include "Arguments/CommandOptions.h"
#include "Common/Text.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace OvPipeline {

namespace {

constexpr int pollMilliseconds = 100;
constexpr int patientTicks = 10; // a second
constexpr char stopByte = 's';
constexpr char signalByte = 'c';

struct Watched {
    int number;
    bool isTaken;
    struct sigaction before;
};
std::array<Watched, 2> signals{{{SIGINT, false, {}}, {SIGTERM, false, {}}}};

// A handler may do little: it marks the job and writes to a pipe; the watching thread reads it. The pipe
// stays, since a handler may still be on its way to it when a watch ends.
std::array<int, 2> pipeEnds{-1, -1};
pid_t pipeOwner = 0;
std::atomic<JobState*> job{nullptr};
std::atomic<bool> wasSignalled{false};
std::atomic<bool> staysForTheProgram{false};
std::atomic<bool> isTerminal{false};

void Tell(char what) {
    const ssize_t ignored = write(pipeEnds[1], &what, 1);
    static_cast<void>(ignored);
}

// A terminal shows there what was typed, or how far the job is.
[[noreturn]] void EndNow(const char* line, int code) {
    const ssize_t ended = isTerminal ? write(STDERR_FILENO, "\n", 1) : 0;
    const ssize_t said = write(STDERR_FILENO, line, std::strlen(line));
    static_cast<void>(ended + said);
    _exit(code);
}

extern "C" void OnSignal(int) {
    const int error = errno;
    if (JobState* const watched = job; !watched)
        _exit(ExitOk); // the output stands, and only words about it are left to be printed
    else if (!wasSignalled.exchange(true)) {
        watched->AskCancel();
        Tell(signalByte);
    } else if (watched->AskCancel())
        EndNow("ov-pipeline: ended at once; nothing was written\n", ExitCancelled);
    else if (watched->IsPublished())
        EndNow("ov-pipeline: ended at once; the output was written before\n", ExitOk);
    errno = error;
}

void OpenPipe() {
    // One that was made before a fork is the other process's, too, which would hear what is told here.
    if (pipeOwner != getpid()) {
        for (const int end : pipeEnds)
            if (end >= 0) close(end);
        pipeEnds = {-1, -1};
        if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            throw std::runtime_error("no pipe can be made");
        pipeOwner = getpid();
    }
    for (char old = 0; read(pipeEnds[0], &old, 1) == 1;) {
    }
}

void TakeSignals() {
    struct sigaction action {};
    action.sa_handler = &OnSignal;
    action.sa_flags = SA_RESTART;
    for (Watched& watched : signals) {
        sigaction(watched.number, nullptr, &watched.before);
        watched.isTaken = watched.before.sa_handler != SIG_IGN;
        if (watched.isTaken) sigaction(watched.number, &action, nullptr);
    }
}

void GiveSignalsBack() {
    for (Watched& watched : signals)
        if (watched.isTaken) sigaction(watched.number, &watched.before, nullptr);
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " and ") + name;
    return text;
}

} // namespace

JobWatch::JobWatch(std::shared_ptr<JobState> watched, bool showsProgress)
    : m_job(std::move(watched)), m_showsProgress(showsProgress && isatty(STDERR_FILENO)) {
    OpenPipe();
    isTerminal = isatty(STDERR_FILENO) != 0;
    wasSignalled = false;
    job = m_job.get();
    TakeSignals();
    try {
        m_thread = OvPlatform::Thread("to watch the job", [this] { Watch(); });
    } catch (...) {
        LetGo();
        throw;
    }
}

JobWatch::~JobWatch() {
    Tell(stopByte);
    m_thread.Join();
    if (m_showsProgress) std::fputs("\r\x1b[K", stderr);
    LetGo();
}

void JobWatch::LetGo() {
    if (staysForTheProgram && m_job->IsPublished())
        job = nullptr;
    else
        GiveSignalsBack();
}

void JobWatch::StayForTheProgram(bool stays) { staysForTheProgram = stays; }

void JobWatch::Watch() {
    while (Hear()) {
        if (m_showsProgress) ShowProgress();
        TellWhoIsWaitedFor();
    }
}

bool JobWatch::Hear() {
    pollfd ready{pipeEnds[0], POLLIN, 0};
    if (poll(&ready, 1, pollMilliseconds) <= 0) return true;
    char what = 0;
    if (read(pipeEnds[0], &what, 1) != 1 || what == stopByte) return false;
    m_job->Cancel();
    m_stoppingTicks = 0; // who asks is told, also where the job was to stop before
    return true;
}

void JobWatch::TellWhoIsWaitedFor() {
    if (!m_job->IsStopping() || ++m_stoppingTicks != patientTicks) return;
    const std::string who = Joined(m_job->AtWork());
    if (who.empty()) return;
    std::fprintf(stderr, "%sov-pipeline: the job is to stop, and waits for %s%s\n",
                 m_showsProgress ? "\r\x1b[K" : "", who.c_str(),
                 wasSignalled ? "; a second Ctrl-C ends the program at once" : "");
    std::fflush(stderr);
}

void JobWatch::ShowProgress() const {
    const JobCounters& counters = m_job->Counters();
    const std::string line =
        Counted(counters.pages, "page") + ", " + ByteCount(counters.bytesWritten) + " written";
    std::fprintf(stderr, "\r\x1b[K%s", line.c_str());
    std::fflush(stderr);
}

} // namespace OvPipeline
