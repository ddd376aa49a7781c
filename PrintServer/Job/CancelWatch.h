#pragma once

#include "Job/ServerLines.h"

#include <Report/JobState.h>
#include <System/Thread.h>

#include <sys/types.h>

#include <memory>

namespace OvPrintServer {

/// While it lives, SIGTERM and SIGINT end the job: the pipeline is cancelled, a converter is ended. The
/// reader of the output may go away, which is a failed write. One at a time, for the life of a job.
class CancelWatch {
public:
    /// Throws std::runtime_error.
    CancelWatch();
    CancelWatch(const CancelWatch&) = delete;
    CancelWatch& operator=(const CancelWatch&) = delete;
    ~CancelWatch();

    /// While it lives, nothing is under way that had to be ended first: a signal ends the program, whatever
    /// it waits for.
    class AtOnce {
    public:
        AtOnce();
        AtOnce(const AtOnce&) = delete;
        AtOnce& operator=(const AtOnce&) = delete;
        ~AtOnce();
    };

    bool IsCancelled() const;
    /// The converter that runs, with a process group of its own; 0: none.
    void SetChild(pid_t child);

    /// Watches a pipeline, and tells of its pages as they are done.
    class Pipeline {
    public:
        /// Throws OvPlatform::ThreadError.
        Pipeline(std::shared_ptr<OvPipeline::JobState> job, ServerLines& lines, unsigned copies);
        Pipeline(const Pipeline&) = delete;
        Pipeline& operator=(const Pipeline&) = delete;
        ~Pipeline();

        /// Of a job that went well: all its pages are done.
        void TellAllPages();

    private:
        void Watch();
        void Stop();
        void TellPages(std::uint64_t done);

        std::shared_ptr<OvPipeline::JobState> m_job;
        ServerLines& m_lines;
        const unsigned m_copies;
        std::uint64_t m_told = 0;
        bool m_isStopped = false;
        OvPlatform::Thread m_thread;
    };
};

} // namespace OvPrintServer
