#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/PrintTicketError.h"

#include <memory>
#include <string>
#include <string_view>

namespace OvPlatform {

/// A ticket that is laid over the tickets of a job as it stands, whatever the printer: each feature,
/// parameter and property at its root takes the place of theirs of that name. All else in them stays, what
/// other namespaces put there included. May be shared between threads.
class OV_PLATFORM_API TicketOverlay {
public:
    /// Throws PrintTicketError for a text that is no ticket.
    explicit TicketOverlay(std::string_view ticket);
    ~TicketOverlay();

    /// The base with all that the overlay says. Both throw PrintTicketError for a base that is no ticket, and
    /// give XML in UTF-8.
    std::string Over(std::string_view base) const;
    /// The base without what the overlay says differently: for a level below the one that has it all.
    std::string GivingWay(std::string_view base) const;

private:
    class Settings;
    std::unique_ptr<const Settings> m_settings;
};

} // namespace OvPlatform
