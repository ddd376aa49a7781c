#include "PrintTicket/MergedTicket.h"

#include "PrintTicket/CapabilitiesIndex.h"

namespace OvPlatform {
namespace {

void AddTicket(MergedTicket& merged, const SchemaDocument& ticket, SettingOrigin origin,
               EPrintTicketScope scope, const CapabilitiesIndex& capabilities) {
    for (const SchemaFeature& feature : ticket.features)
        if (InScope(LevelOf(feature.name.local), scope)) merged.features.Add(feature, origin);
    for (const SchemaParameter& parameter : ticket.parameters)
        if (InScope(capabilities.LevelOfParameter(parameter.name), scope))
            merged.parameters.Add(parameter, origin);
    for (const SchemaProperty& property : ticket.properties)
        if (InScope(LevelOf(property.name.local), scope)) merged.properties.Add(property, origin);
}

} // namespace

MergedTicket MergeTickets(const SchemaDocument& base, const SchemaDocument* delta, EPrintTicketScope scope,
                          const CapabilitiesIndex& capabilities) {
    MergedTicket merged;
    AddTicket(merged, base, SettingOrigin::Base, scope, capabilities);
    if (delta != nullptr) AddTicket(merged, *delta, SettingOrigin::Delta, scope, capabilities);
    return merged;
}

} // namespace OvPlatform
