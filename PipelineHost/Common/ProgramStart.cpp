#include "Common/ProgramStart.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace OvPipeline {

namespace {

void FillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = open("/dev/null", O_RDONLY);
    if (descriptor > STDERR_FILENO) close(descriptor);
}

} // namespace

void StartProgram() {
    FillStandardStreams();
    signal(SIGCHLD, SIG_DFL); // where it is ignored, nobody hears how a process has ended
}

} // namespace OvPipeline
