#pragma once

#include "Arguments/CommandOptions.h"
#include "Report/RunSummary.h"
#include "Report/ShownOutput.h"

#include <Spooler/QueueFolder.h>

#include <filesystem>
#include <memory>

namespace OvPipeline {

/// One job through the filters that the options name, to the output that they name. options.job: the job.
class JobRun {
public:
    enum class Progress { Shown, Hidden };

    /// folder: where an output that the options do not name is to stand; empty: in the current one.
    JobRun(const CommandOptions& options, std::shared_ptr<const OvPlatform::QueueFolder> queue,
           Progress progress, std::filesystem::path folder = {})
        : m_options(options), m_queue(std::move(queue)), m_progress(progress), m_folder(std::move(folder)) {}

    /// What keeps it from its end is in the summary; nothing is thrown. errors: gets the trace.
    RunSummary Run(ShownOutput& errors) const;

private:
    void RunInto(RunSummary& summary, ShownOutput& errors) const;

    const CommandOptions& m_options;
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    Progress m_progress;
    std::filesystem::path m_folder;
};

} // namespace OvPipeline
