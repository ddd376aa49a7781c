#pragma once

#include "Options/JobTicket.h"

#include <Spooler/QueueFolder.h>

#include <memory>
#include <vector>

namespace OvPrintServer {

/// What does not stay as a ticket asks for it: what the printer cannot do together, and what the queue's
/// administrator has decided otherwise. The filters do so themselves; this tells of it beforehand. The thread
/// must be in a COM apartment. Throws OvPlatform::PrintTicketError for a queue whose documents are wrong.
std::vector<LeftOption> FindOverruled(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                                      const JobTicket& ticket);

} // namespace OvPrintServer
