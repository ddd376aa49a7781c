#pragma once

#include "Arguments/CommandOptions.h"

#include <string>

namespace OvPipeline {

/// What keeps a command from its work: one line, without the program's name, and the exit code.
struct Trouble {
    int code = ExitOk;
    std::string line;

    /// Of the exception in flight.
    static Trouble Caught(const CommandOptions& options);
};

/// Puts the name of the job, or of the device mode that stands for one, before a line that does not begin
/// with it.
std::string AboutJob(const CommandOptions& options, const std::string& line);

} // namespace OvPipeline
