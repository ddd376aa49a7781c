#pragma once

#include "PrintTicket/ValidatedTicket.h"

#include <string>

namespace OvPlatform {

/// The capabilities as XML in UTF-8, as they are with these settings in force. Two things depend on the
/// settings: which options are constrained, and the imageable size. The queue's Constraint elements stay
/// behind.
std::string WriteCapabilities(const CapabilitiesIndex& capabilities, const ValidatedTicket& settings);

} // namespace OvPlatform
