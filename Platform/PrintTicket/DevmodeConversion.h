#pragma once

#include "PrintTicket/CapabilitiesIndex.h"

#include <prntvpt.h>

#include <cstddef>
#include <string>

namespace OvPlatform {

/// The settings that a device mode makes, as a ticket that says nothing else: the public fields that count by
/// dmFields, under the public keywords, and the whole record with the driver's own bytes in the parameter
/// PageDevmodeSnapshot, if the capabilities define one. Sources and media beyond the published numbers are
/// only in the snapshot. The device mode of another printer makes no settings.
///
/// Throws std::invalid_argument if the record does not lie within `size` bytes.
SchemaDocument SettingsOfDevmode(const DEVMODEW* devmode, std::size_t size, const std::wstring& printerName,
                                 const CapabilitiesIndex& capabilities);

} // namespace OvPlatform
