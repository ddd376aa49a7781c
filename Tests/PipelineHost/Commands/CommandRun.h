#pragma once

#include <Commands/Commands.h>

#include <sstream>
#include <string>
#include <vector>

/// A run of the program in this process, with what it printed.
struct CommandRun {
    explicit CommandRun(const std::vector<std::string>& arguments) {
        std::ostringstream outStream;
        std::ostringstream errorStream;
        code = OvPipeline::RunProgram(arguments, outStream, errorStream);
        out = outStream.str();
        errors = errorStream.str();
    }

    int code;
    std::string out;
    std::string errors;
};

inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}
