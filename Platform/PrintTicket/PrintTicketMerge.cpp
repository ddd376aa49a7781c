#include "PrintTicket/PrintTicketMerge.h"

#include "PrintTicket/CapabilitiesView.h"
#include "PrintTicket/DevmodeConversion.h"
#include "PrintTicket/QueueTickets.h"
#include "PrintTicket/SchemaReader.h"
#include "PrintTicket/TicketInput.h"
#include "PrintTicket/TicketValidation.h"
#include "PrintTicket/TicketWriter.h"

#include <atomic>
#include <memory>
#include <optional>

namespace OvPlatform {
namespace {

std::atomic<std::uint64_t> mergeCount{0};
std::atomic<std::uint64_t> conflictCount{0};

SchemaDocument ReadTicket(std::string_view bytes, InputKind kind) {
    return AsInput(kind, [&] { return ReadSchemaDocument(bytes, FrameworkCheck::Kind::Ticket); });
}

} // namespace

PrintTicketMerge::PrintTicketMerge(const std::shared_ptr<const QueueFolder>& queue)
    : m_queue(QueueTickets::Of(queue)) {}

PrintTicketMerge::~PrintTicketMerge() = default;

PrintTicketMerge::Result PrintTicketMerge::Merge(std::string_view base, const std::string_view* delta,
                                                 EPrintTicketScope scope, MergeReport* report) const {
    // A report tells of a merge that was made for it.
    const auto merge = [&] { return MergeAnew(base, delta, scope, report); };
    const auto merged = report != nullptr ? std::make_shared<const Result>(merge())
                                          : m_queue->Seen().MergeOf(base, delta, scope, merge);
    ++mergeCount;
    if (merged->conflictResolved) ++conflictCount;
    return *merged;
}

PrintTicketMerge::Result PrintTicketMerge::MergeAnew(std::string_view base, const std::string_view* delta,
                                                     EPrintTicketScope scope, MergeReport* report) const {
    const MergeMemory::Ticket baseTicket =
        m_queue->Seen().BaseOf(base, [&] { return ReadTicket(base, InputKind::BaseTicket); });
    const std::optional<SchemaDocument> deltaTicket =
        delta ? std::optional(ReadTicket(*delta, InputKind::DeltaTicket)) : std::nullopt;

    const CapabilitiesIndex& capabilities = m_queue->Capabilities();
    const MergedTicket merged =
        MergeTickets(*baseTicket, deltaTicket ? &*deltaTicket : nullptr, scope, capabilities);
    if (report) *report = {};
    const ValidatedTicket valid =
        TicketValidation(capabilities, &m_queue->Defaults(), scope, report).Validate(merged);
    return {WriteTicket(valid, capabilities), valid.conflictResolved};
}

std::string PrintTicketMerge::Capabilities(const std::string_view* ticket) const {
    const CapabilitiesIndex& capabilities = m_queue->Capabilities();
    if (!ticket) return WriteCapabilities(capabilities, m_queue->Defaults());
    const SchemaDocument asked = ReadTicket(*ticket, InputKind::Ticket);
    const MergedTicket merged = MergeTickets(asked, nullptr, kPTJobScope, capabilities);
    return WriteCapabilities(
        capabilities,
        TicketValidation(capabilities, &m_queue->Defaults(), kPTJobScope, nullptr).Validate(merged));
}

std::string PrintTicketMerge::ConvertDevmode(const DEVMODEW* devmode, std::size_t size,
                                             EPrintTicketScope scope) const {
    const CapabilitiesIndex& capabilities = m_queue->Capabilities();
    const SchemaDocument asked = SettingsOfDevmode(devmode, size, m_queue->PrinterName(), capabilities);
    const MergedTicket merged = MergeTickets(m_queue->DefaultTicket(), &asked, scope, capabilities);
    return WriteTicket(TicketValidation(capabilities, &m_queue->Defaults(), scope, nullptr).Validate(merged),
                       capabilities);
}

MergeCounts PrintTicketMerge::Counts() { return {mergeCount, conflictCount}; }

} // namespace OvPlatform
