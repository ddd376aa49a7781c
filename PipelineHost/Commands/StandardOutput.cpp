#include "Commands/StandardOutput.h"

#include "Arguments/CommandOptions.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace OvPipeline {

StandardOutput::StandardOutput() {
    if (isatty(STDOUT_FILENO))
        throw UsageError("the output stream is a terminal: a job's output is not for reading");
    std::fflush(stdout);
    m_descriptor = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (m_descriptor < 0) throw UsageError("there is no output stream");
    dup2(STDERR_FILENO, STDOUT_FILENO);
    m_beforeSignal = signal(SIGPIPE, SIG_IGN);
}

bool StandardOutput::LeadsTo(const std::filesystem::path& file) const {
    struct stat own {
    }, other{};
    return fstat(m_descriptor, &own) == 0 && stat(file.c_str(), &other) == 0 && S_ISREG(own.st_mode) &&
           own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

StandardOutput::~StandardOutput() {
    std::fflush(stdout);
    dup2(m_descriptor, STDOUT_FILENO);
    close(m_descriptor);
    signal(SIGPIPE, m_beforeSignal);
}

} // namespace OvPipeline
