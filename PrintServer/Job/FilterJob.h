#pragma once

#include "Job/CancelWatch.h"
#include "Job/ServerLines.h"

#include <Chain/Pipeline.h>

#include <filesystem>
#include <string>
#include <vector>

namespace OvPrintServer {

/// What the print server says of a job.
struct FilterArguments {
    unsigned id = 0;
    std::string user;
    std::string title;
    unsigned copies = 1;
    std::string options;
    std::filesystem::path file; // empty: standard input
};

/// One job of a print server, from its document to the stream of the queue's device.
class FilterJob {
public:
    /// output: an open descriptor that stays the caller's.
    FilterJob(FilterArguments arguments, int output, ServerLines& lines)
        : m_arguments(std::move(arguments)), m_output(output), m_lines(lines) {}

    /// The exit code of the filter. What goes wrong was told in one line.
    int Run();

private:
    int RunWatched(CancelWatch& watch);
    OvPipeline::JobDescription Describe();
    int RunPipeline(CancelWatch& watch, OvPipeline::JobDescription job);

    FilterArguments m_arguments;
    int m_output;
    ServerLines& m_lines;
};

/// Reads the arguments of a filter: job, user, title, copies, options and perhaps a file. Throws
/// std::invalid_argument.
FilterArguments ReadFilterArguments(const std::vector<std::string>& arguments);

} // namespace OvPrintServer
