#pragma once

// What an administrator's configuration enforces, in one ticket. Failures of the document are thrown as
// CPComException. One thread at a time.

#include "ComSupport/FilterUtilitiesExport.h"
#include "Configuration/NativeXmlConfigurationFeatureSet.h"
#include "Configuration/TicketEnforcement.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <vector>

class PrintTicketXmlDocument;

/// A feature that a configuration enforces in tickets, with the value that it writes.
struct EnforcedFeature {
    const TicketEnforcement::Feature* feature;
    const NativeXmlConfigurationFeature* configured; // of the set
    const TicketEnforcement::Value* value;
};

/// In the order in which they are enforced. The set must not change as long as the result is used.
[[nodiscard]] OV_FILTER_UTILITIES_API std::vector<EnforcedFeature>
FindEnforcedFeatures(const NativeXmlConfigurationFeatureSet& configuration);

/// What a ticket says of a feature that can be enforced: the option without prefix, or the number of the
/// scored property. Empty if it says nothing.
[[nodiscard]] OV_FILTER_UTILITIES_API CXString ReadEnforcedValue(const PrintTicketXmlDocument& ticket,
                                                                 const TicketEnforcement::Feature& feature);

/// Makes this the ticket's value, in the same form. A ticket without the feature gets it.
OV_FILTER_UTILITIES_API void WriteEnforcedValue(PrintTicketXmlDocument& ticket,
                                                const TicketEnforcement::Feature& feature,
                                                const CXString& value);

/// A value that was overruled.
struct EnforcedChange {
    const TicketEnforcement::Feature* feature;
    const NativeXmlConfigurationFeature* configured; // of the set
    CXString before;
};

/// Enforces a configuration in a ticket that has all its features, as a merged one does. What the ticket does
/// not have, or has without a name, stays so. What fails is reported, and the other features are enforced.
OV_FILTER_UTILITIES_API std::vector<EnforcedChange>
EnforceConfiguration(PrintTicketXmlDocument& ticket, const NativeXmlConfigurationFeatureSet& configuration);
