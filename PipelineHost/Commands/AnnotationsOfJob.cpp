#include "Commands/AnnotationsOfJob.h"

#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <Spooler/QueueFolderError.h>

namespace OvPipeline {

namespace {

/// The job as a filter finds it with the spooler.
JobAnnotations::Job JobAt(const JobPrinter& printer) {
    JobAnnotations::Job job{printer.Handle(), printer.JobId()};
    for (const OvPlatform::QueueJob& queued : printer.Queue().Jobs()) {
        if (queued.id != printer.JobId()) continue;
        job.userName = CXString(queued.user.c_str());
        job.documentName = CXString(queued.document.c_str());
    }
    return job;
}

std::unique_ptr<AnnotationStore> StoreOf(const OvPlatform::QueueFolder& queue) {
    try {
        return JobAnnotations::ReadStore(QueueSettings(queue).Properties());
    } catch (const CPExceptionInvalidArgument& failure) {
        throw OvPlatform::QueueFolderError(queue.Folder(), "the queue property AnnotationStore: " +
                                                               std::string(failure.what()));
    }
}

} // namespace

std::unique_ptr<JobAnnotations> AnnotationsOfJob(XpsFilterPrintTicket& ticket, const JobPrinter& printer,
                                                 const std::string& job) {
    auto store = StoreOf(printer.Queue());
    try {
        return std::make_unique<JobAnnotations>(ticket, std::move(store), JobAt(printer));
    } catch (const CPExceptionInvalidArgument& failure) {
        throw InputError(E_INVALIDARG, job, job + ": " + failure.what());
    }
}

} // namespace OvPipeline
