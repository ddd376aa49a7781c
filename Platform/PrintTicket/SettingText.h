#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/ValidatedTicket.h"

#include <string>

namespace OvPlatform {

/// Options as a person reads them in a report: "psk:ISOA4", "(psk:ResolutionX=600, psk:ResolutionY=600)".
OV_PLATFORM_API std::string TextOf(const SchemaOption& option, const NamespacePrefixes& prefixes);
/// Several chosen options are separated by commas.
std::string TextOf(const FeatureChoice& choice, const CapabilitiesFeature& feature,
                   const NamespacePrefixes& prefixes);

} // namespace OvPlatform
