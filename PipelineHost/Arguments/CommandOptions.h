#pragma once

#include "Common/PageRanges.h"
#include "Source/JobFile.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace OvPipeline {

enum ExitCode { ExitOk = 0, ExitJobFailed = 1, ExitUsage = 2, ExitInputRefused = 3, ExitCancelled = 130 };

/// A command that was not given as it has to be. what() is one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What stands for the input stream where a file is asked for, and for the output stream where one is named.
inline constexpr const char* standardStream = "-";

/// What a user asks for. Texts are empty where they were not given.
struct CommandOptions {
    std::string command; // a name of the table of commands; empty where only help or the version is wanted
    bool wantsHelp = false;
    bool wantsVersion = false;

    std::vector<std::string> operands; // as they were given: jobs, files, folders, a name
    /// The first of the jobs, or another file that is read; without a name where there is none.
    JobFile job;

    bool quiet = false;
    bool json = false;
    bool trace = false;
    bool explain = false;
    bool all = false; // families
    bool why = false;
    bool firstPage = false;
    bool ignoreTimes = false;
    bool noPictures = false;
    std::string queue; // a folder; the sample queue
    std::string config;
    std::vector<std::string> filters; // MODULE or MODULE,{class id}
    std::string output;
    std::string devmode; // a file in place of a job
    std::string family;
    std::string feature;
    std::string ticket; // a file
    std::string title;
    std::string user;
    std::string text;
    std::string image;
    std::string font;
    std::string size;
    std::string color;
    std::string at;
    std::string width;
    std::string opacity;
    std::optional<unsigned long> document; // these from 1
    std::optional<unsigned long> page;
    std::optional<unsigned long> copies;
    std::optional<unsigned long> parallel;
    PageRanges pages;
};

} // namespace OvPipeline
