#pragma once

#include "Options/JobTicket.h"

#include <vector>

namespace OvPrintServer {

/// Options that a ticket asks for and of which the device would not hear: the queue offers them, but the
/// commands of its device's family are the same without, and DeviceStream tells nothing of them with the
/// pages. Nothing for a queue without a family, which its filter refuses. The thread must be in a COM
/// apartment. Throws OvPlatform::PrintTicketError for a queue whose documents are wrong, and CPException for
/// a description of the device that is.
std::vector<LeftOption> FindUntold(const QueueOffer& offer, const JobTicket& ticket);

} // namespace OvPrintServer
