#pragma once

#include "Parts/PartObject.h"

#include "Spooler/QueueFolder.h"

namespace OvPipeline {

// In words, what is wrong with a print ticket of the job that a merge has refused; empty where nothing is
// found. A filter hands on no more than the result.
std::string DiagnoseTicket(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                           const PartContext& context, const std::string& partName) noexcept;

} // namespace OvPipeline
