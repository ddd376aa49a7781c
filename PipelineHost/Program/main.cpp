#include "Commands/Commands.h"

#include <iostream>

int main(int count, char** arguments) {
    return OvPipeline::RunProgram(std::vector<std::string>(arguments + 1, arguments + count), std::cout,
                                  std::cerr);
}
