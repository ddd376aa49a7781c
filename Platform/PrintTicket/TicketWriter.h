#pragma once

#include "PrintTicket/ValidatedTicket.h"

#include <string>

namespace OvPlatform {

/// The ticket as XML in UTF-8: the XML declaration, a line feed, then one line. Parameters come first, then
/// features, both in the order of the capabilities, then properties; all namespaces of the capabilities are
/// declared at the root, so that equal settings give equal bytes.
std::string WriteTicket(const ValidatedTicket& ticket, const CapabilitiesIndex& capabilities);

} // namespace OvPlatform
