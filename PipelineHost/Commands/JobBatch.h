#pragma once

#include "Arguments/CommandOptions.h"
#include "Report/ShownOutput.h"

#include <Spooler/QueueFolder.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// Several jobs, as many of them at a time as the options say, each in a process of its own: a filter that
/// fails, crashes or exits takes no other job with it, and what one job leaves in memory no other one sees.
/// SIGINT and SIGTERM cancel the jobs that run, and no other one starts.
class JobBatch {
public:
    JobBatch(const CommandOptions& options, std::shared_ptr<const OvPlatform::QueueFolder> queue);
    JobBatch(const JobBatch&) = delete;
    JobBatch& operator=(const JobBatch&) = delete;
    ~JobBatch() = default;

    /// One thread; no other one may run. Gives the exit code. Throws UsageError for options that go with one
    /// job alone, and for jobs whose outputs would stand in one place.
    int Run(ShownOutput& out, ShownOutput& errors);

private:
    enum class State { Waiting, Running, Ended };
    struct Job {
        CommandOptions options;
        State state = State::Waiting;
        int process = -1;
        int account = -1;             // the end of a pipe
        std::string told;             // by the process, without the lines that have been passed on
        int exitCode = ExitCancelled; // until it is known
        std::string trouble;          // that the process itself did not tell
    };

    void MakeJobs();
    void Start(Job& job, ShownOutput& errors);
    [[noreturn]] void RunInChild(const Job& job, int account);
    void Hear(ShownOutput& errors);
    static void Take(Job& job, std::string_view told, ShownOutput& errors);
    static void End(Job& job, ShownOutput& errors);
    void ShowProgress(std::size_t ended) const;
    void Tell(ShownOutput& out, ShownOutput& errors) const;
    int Code() const;

    const CommandOptions& m_options;
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    std::vector<Job> m_jobs;
    bool m_showsProgress;
};

} // namespace OvPipeline
