#include "Commands/Commands.h"
#include "Commands/JobWatch.h"

#include <iostream>

int main(int count, char** arguments) {
    OvPipeline::JobWatch::StayForTheProgram();
    return OvPipeline::RunProgram(std::vector<std::string>(arguments + 1, arguments + count), std::cout,
                                  std::cerr);
}
