#include "Commands/Commands.h"
#include "Commands/JobWatch.h"
#include "Common/ProgramStart.h"

#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace {

// Of the output stream, in characters; 0 where it leads to no terminal, or to one that does not say.
std::size_t TerminalWidth() {
    if (!isatty(STDOUT_FILENO)) return 0;
    unsigned long columns = 0;
    if (const char* const set = std::getenv("COLUMNS")) columns = std::strtoul(set, nullptr, 10);
    winsize size{};
    if (columns == 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) columns = size.ws_col;
    return columns;
}

// Where no job runs that had to be shut down.
extern "C" void EndAtOnce(int) {
    constexpr char line[] = "ov-pipeline: cancelled\n";
    const ssize_t ignored = write(STDERR_FILENO, line, sizeof line - 1);
    static_cast<void>(ignored);
    _exit(OvPipeline::ExitCancelled);
}

void TakeSignals() {
    // A write that meets the limit on the size of files, or a reader that has gone away, then fails like any
    // other, and is told.
    signal(SIGXFSZ, SIG_IGN);
    signal(SIGPIPE, SIG_IGN);
    for (const int number : {SIGINT, SIGTERM})
        if (signal(number, &EndAtOnce) == SIG_IGN) signal(number, SIG_IGN);
}

} // namespace

int main(int count, char** arguments) {
    OvPipeline::StartProgram();
    TakeSignals();
    OvPipeline::JobWatch::StayForTheProgram();
    OvPipeline::ShownOutput out(std::cout, TerminalWidth());
    OvPipeline::ShownOutput errors(std::cerr);
    return OvPipeline::RunProgram(std::vector<std::string>(arguments + 1, arguments + count), out, errors);
}
