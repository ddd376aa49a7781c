#pragma once

#include "Support/TemporaryFolder.h"

#include <Commands/Commands.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

/// A run of the program in this process, with what it printed.
struct CommandRun {
    explicit CommandRun(const std::vector<std::string>& arguments) {
        std::ostringstream outStream;
        std::ostringstream errorStream;
        OvPipeline::ShownOutput shownOut(outStream);
        OvPipeline::ShownOutput shownErrors(errorStream);
        code = OvPipeline::RunProgram(arguments, shownOut, shownErrors);
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

/// A test in a folder of its own, which is the current one meanwhile.
class InOwnFolder : public testing::Test {
protected:
    InOwnFolder() { std::filesystem::current_path(m_folder.Path()); }
    ~InOwnFolder() override { std::filesystem::current_path(m_before); }

    TemporaryFolder m_folder;

private:
    std::filesystem::path m_before = std::filesystem::current_path();
};
