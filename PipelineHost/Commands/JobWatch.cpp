#include "Commands/JobWatch.h"

#include "Common/Text.h"

#include <array>
#include <cstdio>
#include <stdexcept>

#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace OvPipeline {

namespace {

constexpr int PollMilliseconds = 100;
constexpr char Stop = 's';
constexpr char Signal = 'c';

// A handler may only write to a pipe; the watching thread reads it.
std::array<int, 2> pipeEnds{-1, -1};
struct sigaction previousInterrupt;
struct sigaction previousTerminate;

void Tell(char what) {
    const ssize_t ignored = write(pipeEnds[1], &what, 1);
    static_cast<void>(ignored);
}

extern "C" void OnSignal(int) { Tell(Signal); }

} // namespace

JobWatch::JobWatch(std::shared_ptr<JobState> job, bool showsProgress)
    : m_job(std::move(job)), m_showsProgress(showsProgress && isatty(STDERR_FILENO)) {
    if (pipe(pipeEnds.data()) != 0) throw std::runtime_error("no pipe can be made");
    struct sigaction action {};
    action.sa_handler = &OnSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigaction(SIGINT, &action, &previousInterrupt);
    sigaction(SIGTERM, &action, &previousTerminate);
    m_thread = std::thread([this] { Watch(); });
}

JobWatch::~JobWatch() {
    sigaction(SIGINT, &previousInterrupt, nullptr);
    sigaction(SIGTERM, &previousTerminate, nullptr);
    Tell(Stop);
    m_thread.join();
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    if (m_showsProgress) std::fputs("\r\x1b[K", stderr);
}

void JobWatch::Watch() {
    for (;;) {
        pollfd ready{pipeEnds[0], POLLIN, 0};
        if (poll(&ready, 1, m_showsProgress ? PollMilliseconds : -1) > 0) {
            char what = 0;
            if (read(pipeEnds[0], &what, 1) != 1 || what == Stop) return;
            m_job->Cancel();
        }
        if (m_showsProgress) ShowProgress();
    }
}

void JobWatch::ShowProgress() const {
    const JobCounters& counters = m_job->Counters();
    const std::string line =
        Counted(counters.pages, "page") + ", " + ByteCount(counters.bytesWritten) + " written";
    std::fprintf(stderr, "\r\x1b[K%s", line.c_str());
    std::fflush(stderr);
}

} // namespace OvPipeline
