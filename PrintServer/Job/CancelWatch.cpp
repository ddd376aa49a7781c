#include "Job/CancelWatch.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <stdexcept>
#include <utility>

namespace OvPrintServer {

namespace {

constexpr int pollMilliseconds = 100;
constexpr char stopByte = 's';
constexpr char signalByte = 'c';
// A filter holds a page that it images while the next one is read: two behind what it has taken, all is done.
constexpr std::uint64_t pagesInHand = 2;

// For the handler, which may do little: it marks the job, ends the converter and writes to a pipe.
std::array<int, 2> pipeEnds{-1, -1};
std::atomic<bool> wasSignalled{false};
std::atomic<bool> endsAtOnce{false};
std::atomic<pid_t> converter{0};
std::atomic<OvPipeline::JobState*> job{nullptr};
struct sigaction beforeTerm {};
struct sigaction beforeInt {};
struct sigaction beforePipe {};

void Tell(char what) {
    const ssize_t ignored = write(pipeEnds[1], &what, 1);
    static_cast<void>(ignored);
}

extern "C" void OnSignal(int) {
    const int error = errno;
    if (endsAtOnce) {
        constexpr char line[] = "INFO: the job is cancelled\n";
        const ssize_t ignored = write(STDERR_FILENO, line, sizeof line - 1);
        static_cast<void>(ignored);
        _exit(0);
    }
    wasSignalled = true;
    if (const pid_t child = converter; child > 0) kill(-child, SIGTERM);
    if (OvPipeline::JobState* const watched = job) watched->AskCancel();
    Tell(signalByte);
    errno = error;
}

} // namespace

CancelWatch::CancelWatch() {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe can be made");
    wasSignalled = false;
    struct sigaction action {};
    action.sa_handler = &OnSignal;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, &beforeTerm);
    sigaction(SIGINT, &action, &beforeInt);
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &beforePipe);
}

CancelWatch::~CancelWatch() {
    sigaction(SIGTERM, &beforeTerm, nullptr);
    sigaction(SIGINT, &beforeInt, nullptr);
    sigaction(SIGPIPE, &beforePipe, nullptr);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

bool CancelWatch::IsCancelled() const { return wasSignalled; }

void CancelWatch::SetChild(pid_t child) {
    converter = child;
    if (child > 0 && wasSignalled) kill(-child, SIGTERM);
}

CancelWatch::AtOnce::AtOnce() { endsAtOnce = true; }
CancelWatch::AtOnce::~AtOnce() { endsAtOnce = false; }

CancelWatch::Pipeline::Pipeline(std::shared_ptr<OvPipeline::JobState> watched, ServerLines& lines,
                                unsigned copies)
    : m_job(std::move(watched)), m_lines(lines), m_copies(copies) {
    job = m_job.get();
    if (wasSignalled) m_job->Cancel();
    try {
        m_thread = OvPlatform::Thread("to watch the job", [this] { Watch(); });
    } catch (...) {
        job = nullptr;
        throw;
    }
}

CancelWatch::Pipeline::~Pipeline() {
    Stop();
    job = nullptr;
}

void CancelWatch::Pipeline::Stop() {
    if (std::exchange(m_isStopped, true)) return;
    Tell(stopByte);
    m_thread.Join();
}

void CancelWatch::Pipeline::TellAllPages() {
    Stop();
    TellPages(m_job->Counters().pages);
    m_lines.Progress(100);
}

void CancelWatch::Pipeline::Watch() {
    for (;;) {
        pollfd ready{pipeEnds[0], POLLIN, 0};
        if (poll(&ready, 1, pollMilliseconds) > 0) {
            char what = 0;
            if (read(pipeEnds[0], &what, 1) == 1 && what == stopByte) return;
            m_job->Cancel();
        }
        const std::uint64_t taken = m_job->Counters().pages;
        if (m_job->IsStopping() || taken < pagesInHand + m_told + 1) continue;
        TellPages(taken - pagesInHand);
        // Two documents may have one page part in common.
        m_lines.Progress(100 * m_told / std::max<std::uint64_t>(m_job->Counters().pageParts, taken));
    }
}

void CancelWatch::Pipeline::TellPages(std::uint64_t done) {
    while (m_told < done)
        m_lines.Page(++m_told, m_copies);
}

} // namespace OvPrintServer
