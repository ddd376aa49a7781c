#include "Commands/Commands.h"
#include "Commands/JobWatch.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <iostream>

namespace {

// A standard stream that was closed before must not become a file of the job's, which would then get what is
// said to the user. Its place is taken by one that cannot be written either.
void FillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= 2)
        descriptor = open("/dev/null", O_RDONLY);
    if (descriptor > 2) close(descriptor);
}

} // namespace

int main(int count, char** arguments) {
    FillStandardStreams();
    // A write that meets the limit on the size of files then fails like any other, and is told.
    signal(SIGXFSZ, SIG_IGN);
    OvPipeline::JobWatch::StayForTheProgram();
    return OvPipeline::RunProgram(std::vector<std::string>(arguments + 1, arguments + count), std::cout,
                                  std::cerr);
}
