#include "HtmlReport/RendererProcess.h"

#include "Common/ProgramEnvironment.h"

#include <fcntl.h>
#include <signal.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace OvPipeline {

namespace {

constexpr rlim_t largestFile = rlim_t{1} << 30;
constexpr rlim_t mostMemory = rlim_t{4} << 30;
constexpr auto patience = std::chrono::milliseconds(2); // between two looks
constexpr int cannotRun = 127;

void Limit(int what, rlim_t most) {
    const rlimit limit{most, most};
    setrlimit(what, &limit);
}

// Only what is safe behind a fork.
[[noreturn]] void Become(const char* program, char* const* arguments, char* const* environment,
                         const char* folder) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setpgid(0, 0); // so that what it starts ends with it
    signal(SIGPIPE, SIG_DFL);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, stream);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    Limit(RLIMIT_FSIZE, largestFile);
    Limit(RLIMIT_AS, mostMemory);
    Limit(RLIMIT_CORE, 0);
    if (chdir(folder) == 0) execve(program, arguments, environment);
    _exit(cannotRun);
}

std::string Words(int status) {
    if (WIFSIGNALED(status)) return std::string("it was ended by a signal: ") + strsignal(WTERMSIG(status));
    const int code = WEXITSTATUS(status);
    if (code == 0) return {};
    return code == cannotRun ? "it cannot be run" : "it ended with code " + std::to_string(code);
}

} // namespace

std::string RendererProcess::Run(const std::filesystem::path& program,
                                 const std::vector<std::string>& arguments,
                                 const std::filesystem::path& folder, double seconds) {
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    const ProgramEnvironment environment(folder);
    const pid_t child = fork();
    if (child == 0) Become(program.c_str(), words.data(), environment.Pointers(), folder.c_str());
    if (child < 0) return std::string("no process can be started: ") + strerror(errno);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    setpgid(child, child); // whoever of the two comes first
    bool isLate = false;
    for (siginfo_t ended{}; ended.si_pid != child && !isLate;) {
        if (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT | WNOHANG) < 0 &&
            errno != EINTR)
            return "nothing was heard of its end";
        if (ended.si_pid == child) continue;
        isLate = std::chrono::steady_clock::now() > end;
        if (!isLate) std::this_thread::sleep_for(patience);
    }
    kill(-child, SIGKILL); // with what it has started; until it is waited for, the group is no other's
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return isLate ? "it took too long" : Words(status);
}

} // namespace OvPipeline
