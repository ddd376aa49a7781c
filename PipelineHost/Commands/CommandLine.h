#pragma once

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

struct CommandOptions {
    /// run, ticket, features, settings, annotations, header, parts, policy, queue, stamp, translate; empty
    /// where only help or the version is wanted
    std::string command;
    bool wantsHelp = false;
    bool wantsVersion = false;
    std::string job;                  // of policy: a configuration, if any
    std::string queue;                // empty: the sample queue
    std::string config;               // empty: none
    std::vector<std::string> filters; // MODULE or MODULE,{class id}
    std::string output;               // empty: named after the job, in the current folder
    bool trace = false;
    bool explain = false;
    bool json = false;
    std::string devmode; // a file in place of a job; empty: none
    std::string family;  // empty: the queue's
    bool all = false;    // families
    bool why = false;
    std::string name;    // to translate
    std::string feature; // whose value is to be translated; empty: any
    // What is to be stamped, and how; empty: as is usual.
    std::string text;
    std::string image;
    bool firstPage = false;
    std::string font;
    std::string size;
    std::string color;
    std::string at;
    std::string width;
    std::string opacity;
    std::optional<unsigned long> document; // from 1
    std::optional<unsigned long> page;     // from 1
};

/// Reads the arguments behind the program's name. Throws UsageError.
CommandOptions ParseCommandLine(const std::vector<std::string>& arguments);

/// The help of a command, or of the program for an empty one.
std::string HelpText(const std::string& command);

} // namespace OvPipeline
