#pragma once

#include "Arguments/CommandOptions.h"
#include "Commands/JobProcess.h"
#include "Commands/Processors.h"
#include "Report/ShownOutput.h"

#include <PrintTicket/QueueTickets.h>
#include <Spooler/QueueFolder.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// Several jobs, as many of them at a time as the options say, each in a process of its own: a filter that
/// fails, crashes or exits takes no other job with it, and what one job leaves in memory no other one sees.
/// SIGINT and SIGTERM cancel the jobs that run, and no other one starts. Where several run at a time, the
/// process of the next one waits beside them for its turn, which comes as soon as a job has told all, so that
/// no core is idle while processes are made and go.
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
    struct Job {
        std::string name;
        bool hasBegun = false;
        int exitCode = ExitCancelled;            // until it is known
        std::string trouble = {};                // that the process itself did not tell
        std::optional<std::string> account = {}; // as the process told it
    };
    struct Worker {
        Job* job;
        std::unique_ptr<JobProcess> process;
        std::optional<int> processor = {}; // where it is to stay on one
    };

    void MakeJobs();
    std::shared_ptr<const OvPlatform::QueueTickets> ReadQueue() const;
    bool DoNext(ShownOutput& errors);
    void Begin(Worker worker);
    void Prepare(ShownOutput& errors);
    JobProcess::Result Print(const std::string& name, ShownOutput& errors) const;
    void Hear(ShownOutput& errors);
    void Leave(std::size_t running);
    void Conclude(Worker worker, ShownOutput& errors);
    void ShowProgress() const;
    void Tell(ShownOutput& out, ShownOutput& errors) const;
    int Code() const;

    const CommandOptions& m_options;
    const std::size_t m_atATime;
    Processors m_processors;
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    std::vector<Job> m_jobs;
    std::size_t m_prepared = 0; // of them, from the front
    std::size_t m_ended = 0;
    std::optional<Worker> m_next;
    std::vector<Worker> m_running;
    std::vector<Worker> m_told; // all, and are about to go
    bool m_showsProgress;
};

} // namespace OvPipeline
