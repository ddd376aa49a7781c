#pragma once

#include "Chain/JobProperties.h"

#include <JobContext/JobAnnotations.h>

#include <memory>
#include <string>

namespace OvPipeline {

/// What the driver puts onto the pages that the snapshot is of, with the definitions that the queue keeps.
/// job: for messages. Throws OvPlatform::QueueFolderError where those are damaged, and InputError where the
/// ticket's settings are.
std::unique_ptr<JobAnnotations> AnnotationsOfJob(XpsFilterPrintTicket& ticket, const JobPrinter& printer,
                                                 const std::string& job);

} // namespace OvPipeline
