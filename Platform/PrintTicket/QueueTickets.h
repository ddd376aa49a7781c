#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/CapabilitiesIndex.h"
#include "PrintTicket/MergeMemory.h"
#include "PrintTicket/ValidatedTicket.h"
#include "Spooler/QueueFolder.h"

#include <memory>

namespace OvPlatform {

/// What tickets are validated against: a queue's capabilities and its default ticket, read once, and
/// what was lately made for it. May be shared between threads.
class OV_PLATFORM_API QueueTickets {
public:
    /// Kept for as long as somebody uses it, so that opening a queue again costs nothing. Throws
    /// PrintTicketError.
    static std::shared_ptr<const QueueTickets> Of(const std::shared_ptr<const QueueFolder>& queue);

    explicit QueueTickets(std::shared_ptr<const QueueFolder> queue);

    const std::wstring& PrinterName() const { return m_queue->PrinterName(); }
    const CapabilitiesIndex& Capabilities() const { return m_capabilities; }
    const SchemaDocument& DefaultTicket() const { return m_defaultTicket; }
    /// The default ticket, validated.
    const ValidatedTicket& Defaults() const { return m_defaults; }
    /// The tickets and merges of this queue.
    MergeMemory& Seen() const { return m_seen; }

private:
    std::shared_ptr<const QueueFolder> m_queue;
    CapabilitiesIndex m_capabilities;
    SchemaDocument m_defaultTicket;
    ValidatedTicket m_defaults; // points into the two before it
    mutable MergeMemory m_seen;
};

} // namespace OvPlatform
