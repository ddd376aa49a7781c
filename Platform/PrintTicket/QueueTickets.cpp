#include "PrintTicket/QueueTickets.h"

#include "PrintTicket/SchemaReader.h"
#include "PrintTicket/TicketInput.h"
#include "PrintTicket/TicketValidation.h"

#include <map>
#include <mutex>

namespace OvPlatform {

std::shared_ptr<const QueueTickets> QueueTickets::Of(const std::shared_ptr<const QueueFolder>& queue) {
    using Known = std::map<std::weak_ptr<const void>, std::weak_ptr<const QueueTickets>, std::owner_less<>>;
    static std::mutex mutex;
    static Known known;

    const std::scoped_lock lock(mutex);
    std::erase_if(known, [](const auto& entry) { return entry.first.expired() || entry.second.expired(); });
    if (const auto found = known.find(queue->DocumentsOwner()); found != known.end())
        if (auto tickets = found->second.lock()) return tickets;
    auto tickets = std::make_shared<const QueueTickets>(queue);
    known[queue->DocumentsOwner()] = tickets;
    return tickets;
}

QueueTickets::QueueTickets(std::shared_ptr<const QueueFolder> queue)
    : m_queue(std::move(queue)),
      m_capabilities(
          AsInput(InputKind::Capabilities, [&] { return CapabilitiesIndex(m_queue->Capabilities()); })),
      m_defaultTicket(AsInput(InputKind::DefaultTicket, [&] {
          return ReadSchemaDocument(m_queue->DefaultTicket(), FrameworkCheck::Kind::Ticket);
      })) {
    const MergedTicket merged = MergeTickets(m_defaultTicket, nullptr, kPTJobScope, m_capabilities);
    m_defaults = TicketValidation(m_capabilities, nullptr, kPTJobScope, nullptr).Validate(merged);
}

} // namespace OvPlatform
