#pragma once

#include "Options/JobTicket.h"

#include <Commands/TicketExplanation.h>

#include <vector>

namespace OvPrintServer {

/// What does not stay as a ticket asks for it: what the printer cannot do together, and what the queue's
/// administrator has decided otherwise. The filters do so themselves; this tells of it beforehand. merged:
/// the account of that ticket over the queue's. The thread must be in a COM apartment.
std::vector<LeftOption> FindOverruled(const OvPipeline::TicketExplanation& merged, const JobTicket& ticket);

} // namespace OvPrintServer
