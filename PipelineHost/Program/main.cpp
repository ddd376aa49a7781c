#include "Commands/Commands.h"
#include "Commands/JobWatch.h"

#include <iostream>

#include <signal.h>

int main(int count, char** arguments) {
    // A write that meets the limit on the size of files then fails like any other, and is told.
    signal(SIGXFSZ, SIG_IGN);
    OvPipeline::JobWatch::StayForTheProgram();
    return OvPipeline::RunProgram(std::vector<std::string>(arguments + 1, arguments + count), std::cout,
                                  std::cerr);
}
