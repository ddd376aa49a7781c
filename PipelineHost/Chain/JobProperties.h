#pragma once

#include "Chain/Pipeline.h"
#include "Parts/XpsVocabulary.h"

namespace OvPipeline {

/// The printer of a job while it runs: the queue under its name, with the job in it, and an open handle.
class JobPrinter {
public:
    /// Adds the job to the queue and makes the queue known. Throws HostError.
    explicit JobPrinter(const JobDescription& job);
    JobPrinter(const JobPrinter&) = delete;
    JobPrinter& operator=(const JobPrinter&) = delete;
    ~JobPrinter();

    const OvPlatform::QueueFolder& Queue() const { return *m_queue; }
    const std::shared_ptr<const OvPlatform::QueueFolder>& SharedQueue() const { return m_queue; }
    HANDLE Handle() const { return m_handle; }
    std::uint32_t JobId() const { return m_jobId; }

private:
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    HANDLE m_handle = nullptr;
    std::uint32_t m_jobId = 1;
};

/// Fills the bag with what filters may ask, in the published types. Throws HostError.
void AddJobProperties(PropertyBag* bag, const JobPrinter& printer, const JobDescription& job,
                      XpsFlavour flavour, const std::shared_ptr<JobState>& state);

} // namespace OvPipeline
