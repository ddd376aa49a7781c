#include "Common/ChildProgram.h"

#include "Common/ProgramEnvironment.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace OvPipeline {

namespace {

void Limit(int what, std::optional<std::uint64_t> most) {
    if (!most) return;
    const rlimit limit{*most, *most};
    setrlimit(what, &limit);
}

// Only what is safe behind a fork.
[[noreturn]] void Become(const ChildProgram::Call& call, char* const* arguments, char* const* environment) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setpgid(0, 0);
    for (const int number : {SIGINT, SIGTERM, SIGPIPE})
        signal(number, SIG_DFL);
    const int nothing = open("/dev/null", O_RDWR);
    const int said =
        call.words.empty() ? nothing : open(call.words.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (nothing < 0 || said < 0) _exit(ChildProgram::cannotRun);
    dup2(nothing, STDIN_FILENO);
    dup2(said, STDOUT_FILENO);
    dup2(said, STDERR_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    Limit(RLIMIT_FSIZE, call.mostFileBytes);
    Limit(RLIMIT_AS, call.mostMemoryBytes);
    Limit(RLIMIT_CORE, 0);
    if (chdir(call.folder.c_str()) == 0) execve(call.program.c_str(), arguments, environment);
    _exit(ChildProgram::cannotRun);
}

} // namespace

ChildProgram::ChildProgram(const Call& call) {
    std::vector<char*> words{const_cast<char*>(call.program.c_str())};
    for (const std::string& argument : call.arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    const ProgramEnvironment environment(call.folder);
    m_process = fork();
    if (m_process == 0) Become(call, words.data(), environment.Pointers());
    if (m_process < 0) throw std::system_error(errno, std::generic_category(), "no process can be started");
    setpgid(m_process, m_process); // whoever of the two comes first
}

ChildProgram::~ChildProgram() {
    if (m_process > 0) Finish();
}

bool ChildProgram::HasEnded() const {
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(m_process), &ended, WEXITED | WNOWAIT | WNOHANG) < 0)
        if (errno != EINTR) return true;
    return ended.si_pid == m_process;
}

int ChildProgram::Finish() {
    kill(-m_process, SIGKILL);
    int status = 0;
    while (waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return status;
}

} // namespace OvPipeline
