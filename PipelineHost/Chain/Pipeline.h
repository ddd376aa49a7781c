#pragma once

#include "Chain/FilterModule.h"
#include "Chain/PropertyBag.h"
#include "Report/JobState.h"
#include "Report/LeftOutParts.h"
#include "Source/PackageSource.h"

#include <Spooler/QueueFolder.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace OvPipeline {

/// One job as it is to be run.
struct JobDescription {
    JobFile file;
    JobWishes wishes;     // of a job that is a package
    std::string title;    // UTF-8, as the two below; empty: the file's name
    std::string user;     // empty: who started the program
    std::uint32_t id = 0; // 0: the queue's next
    std::shared_ptr<const OvPlatform::QueueFolder> queue;
    PipelineSpec pipeline;
    std::filesystem::path output;
    std::filesystem::path byteOutput; // in place of output where bytes come out; empty: output
    /// An open stream in place of both; -1: none. It is its caller's.
    int outputStream = -1;
    /// Filters are told the output's name, as of a job that the user prints to a file.
    bool outputIsNamed = false;
};

struct FilterOutcome {
    std::string name;
    HRESULT result = S_OK; // of InitializeFilter where that failed, else of StartOperation
    bool wasStarted = false;
    bool closedOutput = false; // by the filter itself
    // Of StartOperation:
    double seconds = 0;          // by the clock, waits for other filters among them
    double processorSeconds = 0; // of the filter's own thread
};

struct JobOutcome {
    bool isWritten = false; // the output stands under its name
    bool isCancelled = false;
    std::optional<JobFailure> failure;
    std::vector<FilterOutcome> filters;
    EndKind outputKind = EndKind::XpsParts;
    std::filesystem::path output;
    std::uint64_t outputSize = 0; // of what is written
    LeftOutParts leftOut;         // of a package that became a package
    std::vector<std::string>
        gotOver; // what the filters' library reported of a job that is written all the same
};

/// Plays the print filter pipeline for one job: loads the filters, connects them, runs each on its own
/// thread, and writes what the last one gives. The output appears under its name only when every filter has
/// succeeded.
class Pipeline {
public:
    Pipeline(JobDescription job, std::shared_ptr<JobState> state);
    ~Pipeline();
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    /// Once. Nothing is thrown: what goes wrong is in the outcome.
    JobOutcome Run();

    /// Any thread, also before Run: every filter is told to shut down, and no output is written.
    void Cancel() { m_state->Cancel(); }

private:
    class Implementation;
    std::shared_ptr<JobState> m_state;
    std::unique_ptr<Implementation> m_implementation;
};

/// What the first filter of a chain must be given, and what comes out of the last: finds out the ends of
/// filters that are named by themselves, and refuses a chain that does not fit, with words. Throws HostError.
void FitChain(PipelineSpec& pipeline, const std::vector<std::shared_ptr<FilterModule>>& modules,
              PropertyBag* bag, const std::shared_ptr<JobState>& job);

} // namespace OvPipeline
