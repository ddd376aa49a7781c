#pragma once

#include "Parts/PartObject.h"

#include <Spooler/QueueFolder.h>

namespace OvPipeline {

/// Of a failure with a print ticket of the job in hand: says what is wrong with the ticket where a merge
/// refuses it, in words and with the merge's result, since a filter hands on no more than a result; where the
/// ticket is good, the part in hand is the one that was taken last. Other failures stay as they are.
void DiagnoseTicket(JobFailure& failure, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                    const PartContext& context, const std::string& taken);

} // namespace OvPipeline
