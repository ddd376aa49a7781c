#include "Cancelling.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

constexpr int cancelled = 130;

pid_t Start(const std::vector<std::string>& command, int output) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& part : command)
        arguments.push_back(const_cast<char*>(part.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(output >= 0 ? output : nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execv(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

double SecondsToEnd(const std::vector<std::string>& command, double after, bool isRead) {
    int ends[2] = {-1, -1};
    if (!isRead && pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const pid_t child = Start(command, ends[1]);
    std::this_thread::sleep_for(std::chrono::duration<double>(after));
    const auto start = std::chrono::steady_clock::now();
    int status = 0;
    const bool isOver = waitpid(child, &status, WNOHANG) == child;
    if (!isOver) {
        kill(child, SIGINT);
        waitpid(child, &status, 0);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    if (!isRead) {
        close(ends[0]);
        close(ends[1]);
    }
    if (!WIFEXITED(status) || (WEXITSTATUS(status) != 0 && WEXITSTATUS(status) != cancelled))
        throw std::runtime_error("ends otherwise than cancelled: " + command[0]);
    return isOver ? 0 : elapsed.count();
}
