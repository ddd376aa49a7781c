#pragma once

#include "Report/JobState.h"

#include <System/Thread.h>

#include <memory>

namespace OvPipeline {

/// While it lives: SIGINT and SIGTERM cancel the job, unless they were ignored when it was made; a second one
/// ends the program at once and says so. Tells whom a job waits for that is to stop and does not. Where the
/// error stream is a terminal it shows how far the job is. One at a time.
class JobWatch {
public:
    /// Throws OvPlatform::ThreadError.
    JobWatch(std::shared_ptr<JobState> job, bool showsProgress);
    JobWatch(const JobWatch&) = delete;
    JobWatch& operator=(const JobWatch&) = delete;
    ~JobWatch();

    /// For a program that runs one job and ends: once an output stands under its name, a signal does not make
    /// the program look as if it were cancelled, also when the watch is gone. false: it has more to do.
    static void StayForTheProgram(bool stays = true);

private:
    void Watch();
    /// Reads what there is to hear; false at the end of the watch.
    bool Hear();
    void TellWhoIsWaitedFor();
    void ShowProgress() const;
    void LetGo();

    std::shared_ptr<JobState> m_job;
    bool m_showsProgress;
    int m_stoppingTicks = 0; // how often the watch has looked since the job is to stop
    OvPlatform::Thread m_thread;
};

} // namespace OvPipeline
