#pragma once

#include "Report/JobState.h"

#include <memory>
#include <thread>

namespace OvPipeline {

// While it lives: SIGINT and SIGTERM cancel the job (a second one ends the program at once), and where the
// error stream is a terminal it shows how far the job is. One at a time.
class JobWatch {
public:
    JobWatch(std::shared_ptr<JobState> job, bool showsProgress);
    JobWatch(const JobWatch&) = delete;
    JobWatch& operator=(const JobWatch&) = delete;
    ~JobWatch();

private:
    void Watch();
    void ShowProgress() const;

    std::shared_ptr<JobState> m_job;
    bool m_showsProgress;
    std::thread m_thread;
};

} // namespace OvPipeline
