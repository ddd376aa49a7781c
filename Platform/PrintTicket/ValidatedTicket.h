#pragma once

#include "PrintTicket/CapabilitiesIndex.h"

#include <optional>
#include <vector>

namespace OvPlatform {

/// What a ticket says of one feature of the capabilities, in terms of the capabilities' own options.
struct FeatureChoice {
    struct Chosen {
        std::size_t option;
        std::vector<const SchemaProperty*>
            properties; // the ticket's own, if nothing else of its option differs
    };

    bool inScope = false;
    std::vector<Chosen> options; // one, unless several may be picked; in the order of the capabilities
    std::vector<const SchemaProperty*> properties;
    std::vector<FeatureChoice> features; // as the capabilities nest them

    bool Has(std::size_t option) const {
        for (const Chosen& chosen : options)
            if (chosen.option == option) return true;
        return false;
    }
};

/// A ticket that its printer can carry out. It points into the capabilities and into the tickets it came
/// from.
struct ValidatedTicket {
    std::vector<FeatureChoice> features;                // one for each of the capabilities' features
    std::vector<std::optional<SchemaValue>> parameters; // one for each definition of the capabilities
    std::vector<const SchemaProperty*> properties;
    bool conflictResolved = false;
};

} // namespace OvPlatform
