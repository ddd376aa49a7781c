#pragma once

// The sample queues, as options meet them.

#include <Options/JobTicket.h>
#include <PrintTicket/PrintTicketMerge.h>

#include <string>

inline std::shared_ptr<const OvPlatform::QueueFolder> SampleQueue(const std::string& name) {
    return OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/" + name);
}

inline OvPrintServer::JobTicket TicketOf(const OvPrintServer::QueueOffer& offer, const std::string& options,
                                         unsigned copies = 1) {
    return OvPrintServer::MakeJobTicket(offer, OvPrintServer::GivenOptions(options.c_str()), copies);
}

/// What a setting is where a ticket is laid over the queue's own; empty where the ticket did not decide.
inline std::string Merged(const OvPrintServer::QueueOffer& offer, const std::string& ticket,
                          const std::string& setting) {
    if (ticket.empty()) return {};
    const auto queue = std::make_shared<const OvPlatform::QueueFolder>(offer.Queue());
    const std::string_view delta = ticket;
    OvPlatform::MergeReport report;
    OvPlatform::PrintTicketMerge(queue).Merge(queue->DefaultTicket(), &delta, kPTJobScope, &report);
    const auto* const found = report.Find(setting);
    return found == nullptr || found->origin != OvPlatform::SettingOrigin::Delta || !found->reason.empty()
               ? std::string()
               : found->value;
}
