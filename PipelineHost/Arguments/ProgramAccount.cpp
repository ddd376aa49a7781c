#include "Arguments/ProgramAccount.h"

#include <array>

namespace OvPipeline {

namespace {

constexpr auto exitCodes = std::to_array<ExplainedName>({
    {"0", "done; of diff: no difference"},
    {"1", "the job failed (a filter, the chain or the output), nothing has the name, a configuration is "
          "faulty, or there "
          "are differences"},
    {"2", "wrong usage"},
    {"3", "the job's file or the queue folder was refused"},
    {"130", "cancelled"},
});

constexpr auto environmentVariables = std::to_array<ExplainedName>({
    {"OV_FILTERS",
     "folders, separated by colons, in which filter modules without a folder are looked for first"},
    {"OV_QUEUES",
     "folders, separated by colons, whose subfolders are queue folders: a printer that a job names is looked "
     "for there"},
    {"OV_DEBUG_OUTPUT", "not empty: what filters tell a debugger goes to the error stream"},
    {"OV_REGISTRY", "the file that stands for the system's registry"},
    {"OV_USER_PROPERTIES", "the folder of what printers know of users"},
    {"TMPDIR", "the folder for temporary files; without it, /tmp"},
    {"COLUMNS", "how wide tables and help are on a terminal, in place of its own width"},
});

} // namespace

std::span<const ExplainedName> ExitCodes() { return exitCodes; }

std::span<const ExplainedName> EnvironmentVariables() { return environmentVariables; }

} // namespace OvPipeline
