#pragma once

#include "Options/JobTicket.h"

#include <vector>

namespace OvPrintServer {

/// Options that a ticket asks for and of which the device would not hear: the queue offers them, but the
/// commands of its device's family are the same without, and DeviceStream tells nothing of them with the
/// pages. merged: the ticket over the queue's, as filters have it. Nothing for a queue without a family,
/// which its filter refuses. The thread must be in a COM apartment. Throws OvPlatform::QueueFolderError for a
/// family that there is not, and CPException for a description of the device that is wrong.
std::vector<LeftOption> FindUntold(const QueueOffer& offer, const JobTicket& ticket,
                                   const std::string& merged);

} // namespace OvPrintServer
