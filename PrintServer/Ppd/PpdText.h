#pragma once

#include "Queue/QueueOffer.h"

#include <filesystem>
#include <string>

namespace OvPrintServer {

/// What the PPD says beside the queue's own documents.
struct PpdWishes {
    std::filesystem::path queue;    // absolute
    std::filesystem::path pipeline; // absolute; empty: none
};

/// The PPD of a queue: what its printer offers as options of the print server, with the choices of its
/// default ticket, and where the filter finds the queue. Throws std::invalid_argument where a path cannot be
/// written in a PPD.
std::string PpdText(const QueueOffer& offer, const PpdWishes& wishes);

} // namespace OvPrintServer
