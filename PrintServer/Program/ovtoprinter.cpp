// A filter of the print server: XPS, OpenXPS or PDF in, the stream of the queue's device out.
#include "Job/FilterJob.h"

#include <Common/ProgramStart.h>

#include <fcntl.h>
#include <signal.h>
#include <strings.h>
#include <unistd.h>

#include <cstring>

namespace {

// Whoever lists the processes sees their arguments. Quotes, braces and blanks may stand in a password and
// around it, so that all behind its name goes.
void HidePassword(char* options) {
    constexpr char name[] = "job-password";
    char* at = strcasestr(options, name);
    if (at == nullptr) return;
    for (at += sizeof name - 1; *at != '\0'; ++at)
        if (*at != '=') *at = '*';
}

// What anybody else writes to the output stream, also a filter, goes to the error stream. The server's
// channels are at 3 and 4, whether it has opened them or not.
int TakeOutput() {
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 5);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

} // namespace

int main(int count, char** arguments) {
    OvPipeline::StartProgram();
    signal(SIGXFSZ, SIG_IGN); // a file that grows too large is a failed write
    OvPrintServer::ServerLines lines;
    try {
        auto read = OvPrintServer::ReadFilterArguments({arguments + 1, arguments + count});
        HidePassword(arguments[5]);
        const int output = TakeOutput();
        if (output < 0) throw std::runtime_error("there is no output stream");
        return OvPrintServer::FilterJob(std::move(read), output, lines).Run();
    } catch (const std::exception& error) {
        lines.Error(error.what());
        return 1;
    }
}
