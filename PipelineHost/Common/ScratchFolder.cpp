#include "Common/ScratchFolder.h"

#include "Common/TemporaryFiles.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

namespace OvPipeline {

namespace {

constexpr int mostAttempts = 20;
constexpr auto betweenAttempts = std::chrono::milliseconds(10);

[[noreturn]] void RemoveAtTheEnd(int alive, const std::filesystem::path& folder) {
    setpgid(0, 0); // what a terminal sends is not for this process
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
        signal(number, SIG_IGN);
    dup2(alive, STDIN_FILENO);
    close_range(STDOUT_FILENO, ~0U, 0); // whoever reads the program's streams does not wait for this one
    char byte = 0;
    while (read(STDIN_FILENO, &byte, 1) < 0 && errno == EINTR) {
    }
    // A program that ends with this one may still write a file.
    std::error_code ignored;
    for (int attempt = 0; attempt < mostAttempts && std::filesystem::exists(folder, ignored); ++attempt) {
        if (attempt > 0) std::this_thread::sleep_for(betweenAttempts);
        std::filesystem::remove_all(folder, ignored);
    }
    _exit(0);
}

} // namespace

ScratchFolder::ScratchFolder(const std::string& purpose) {
    const std::filesystem::path folder = FolderForTemporaryFiles();
    std::string name = (folder / (purpose + "-XXXXXX")).string();
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) == 0 && mkdtemp(name.data()) != nullptr) {
        m_path = name;
        m_remover = fork();
    }
    if (m_remover == 0) {
        close(ends[1]);
        RemoveAtTheEnd(ends[0], m_path);
    }
    const int problem = errno;
    if (m_remover > 0) setpgid(m_remover, m_remover); // whoever of the two comes first
    if (ends[0] >= 0) close(ends[0]);
    m_alive = ends[1];
    if (m_remover > 0) return;
    if (m_alive >= 0) close(m_alive);
    std::error_code ignored;
    if (!m_path.empty()) std::filesystem::remove(m_path, ignored);
    errno = problem;
    ThrowNoTemporary(folder);
}

ScratchFolder::~ScratchFolder() {
    close(m_alive);
    while (waitpid(m_remover, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace OvPipeline
