#pragma once

#include "Parts/PartObject.h"

#include <PrintTicket/TicketOverlay.h>

namespace OvPipeline {

/// The bytes of a print ticket, whole. Throws InputError for more than a document may have, and what its
/// content throws.
std::string ReadTicket(const PartCore& core);

/// A ticket of the job under the one that the user gave. Made anew at each reading, which is seldom: whoever
/// merges tickets knows them by their names.
class OverlaidTicket final : public Content {
public:
    /// Over: the job's own, which gets all that the overlay says. Below: one that gives way to it.
    enum class Place { Over, Below };

    /// below.content: null where the job has no ticket.
    OverlaidTicket(PartCore below, std::shared_ptr<const OvPlatform::TicketOverlay> overlay, Place place)
        : m_below(std::move(below)), m_overlay(std::move(overlay)), m_place(place) {}

    /// Throws InputError where there is no ticket to lay it over. Below, such a one stays as it is: it is for
    /// the filters to say so.
    std::unique_ptr<ByteReader> Open() const override;
    std::uint64_t Identity() const override;

private:
    PartCore m_below;
    std::shared_ptr<const OvPlatform::TicketOverlay> m_overlay;
    Place m_place;
};

} // namespace OvPipeline
