#include "Commands/JobProcess.h"

#include "Arguments/CommandOptions.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <ostream>
#include <streambuf>
#include <system_error>

namespace OvPipeline {

namespace {

// What a process tells: lines for the error stream, each behind its mark, then its account to the end.
constexpr char lineMark = 'e';
constexpr char accountMark = 'a';

void WriteAll(int descriptor, std::string_view text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return; // nobody hears any more
        done += static_cast<std::size_t>(count);
    }
}

// -1 for a failure, as read(2).
ssize_t ReadSome(int descriptor, char* chunk, std::size_t size) {
    ssize_t count = -1;
    do
        count = read(descriptor, chunk, size);
    while (count < 0 && errno == EINTR);
    return count;
}

// Where no job runs in the process that has to be shut down: before it, and once it is over.
extern "C" void EndCancelled(int) { _exit(ExitCancelled); }

// While it lives, signals that cancel wait: a process that was just made would take them by the handlers of
// the first one, and forget them.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t held;
        sigemptyset(&held);
        sigaddset(&held, SIGINT);
        sigaddset(&held, SIGTERM);
        sigprocmask(SIG_BLOCK, &held, &m_before);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() { LetGo(); }
    void LetGo() const { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before;
};

// The error stream of the process.
class LineSender final : public std::streambuf {
public:
    explicit LineSender(int descriptor) : m_descriptor(descriptor) {}

private:
    int_type overflow(int_type character) override {
        m_line.push_back(traits_type::to_char_type(character));
        if (m_line.back() == '\n') {
            WriteAll(m_descriptor, m_line);
            m_line = lineMark;
        }
        return character;
    }

    int m_descriptor;
    std::string m_line{lineMark};
};

} // namespace

JobProcess::JobProcess(const Work& work, ShownOutput& errors) {
    End turn; // the process's ends
    End account;
    int ends[2];
    const auto join = [&](End& in, End& out) {
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
        in.Set(ends[0]);
        out.Set(ends[1]);
    };
    join(turn, m_turn);
    join(m_told, account);
    errors.Flush();
    const HeldSignals signals;
    m_process = fork();
    if (m_process < 0) throw std::system_error(errno, std::generic_category());
    if (m_process > 0) return;
    // Who sits at the terminal cancels all jobs at once, by the process that started them.
    signal(SIGINT, SIG_IGN);
    signal(SIGTERM, &EndCancelled);
    signals.LetGo();
    m_turn.Close();
    m_told.Close();
    WorkInChild(work, turn, account);
}

JobProcess::~JobProcess() {
    // That its end of the pipe is closed, it need not hear: processes that were made since have one, too.
    if (m_turn.Get() >= 0) kill(m_process, SIGKILL);
    Await();
}

void JobProcess::WorkInChild(const Work& work, End& turn, End& account) {
    prctl(PR_SET_PDEATHSIG,
          SIGKILL); // whatever its filter does: nobody is left to tell of it, and files have no names
    char word = 0;
    if (ReadSome(turn.Get(), &word, 1) != 1) _exit(0);
    turn.Close();
    LineSender sender(account.Get());
    std::ostream stream(&sender);
    ShownOutput errors(stream);
    const Result result = work(errors);
    signal(SIGTERM, SIG_IGN); // what came of it stands
    WriteAll(account.Get(), accountMark + result.account);
    account.Close();        // the next one may begin
    _exit(result.exitCode); // what else is to be done at a program's end is the first process's
}

void JobProcess::Begin() {
    WriteAll(m_turn.Get(), "1");
    m_turn.Close();
}

void JobProcess::Cancel() const {
    kill(m_process, SIGTERM);
    kill(m_process, SIGCONT); // one that somebody has stopped would not hear of it
}

bool JobProcess::Hear(ShownOutput& errors) {
    char chunk[4096];
    const ssize_t count = ReadSome(m_told.Get(), chunk, sizeof chunk);
    if (count <= 0) return false;
    m_text.append(chunk, static_cast<std::size_t>(count));
    std::size_t start = 0;
    for (std::size_t end = 0; start < m_text.size() && m_text[start] == lineMark; start = end + 1) {
        end = m_text.find('\n', start);
        if (end == std::string::npos) break;
        errors.Line(std::string_view(m_text).substr(start + 1, end - start - 1));
    }
    m_text.erase(0, start);
    return true;
}

int JobProcess::Await() {
    if (m_process < 0) return m_status;
    m_turn.Close();
    m_told.Close();
    while (waitpid(m_process, &m_status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    return m_status;
}

std::optional<std::string> JobProcess::Account() const {
    if (!m_text.starts_with(accountMark)) return std::nullopt;
    return m_text.substr(1);
}

void JobProcess::End::Close() {
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = -1;
}

} // namespace OvPipeline
