#pragma once

#include "PrintTicket/SchemaModel.h"

#include <libxml/tree.h>

#include <cstddef>
#include <string>
#include <vector>

namespace OvPlatform {

class CapabilitiesIndex;
struct FeatureChoice;

/// Choices that a printer cannot carry out together, from the Constraint elements of a queue's capabilities
/// (docs/formats/queue-capabilities.md).
class ConstraintRules {
public:
    static constexpr const char* namespaceUri = "urn:ov-platform:queue-constraints:1";

    struct Choice {
        std::size_t feature;
        std::vector<bool> options; // by their place in the capabilities
    };

    /// Throws SchemaFormatError for a constraint that names what the capabilities do not have.
    static ConstraintRules Read(const xmlDoc* capabilities, const CapabilitiesIndex& index);

    bool Empty() const { return m_constraints.empty(); }
    std::size_t Count() const { return m_constraints.size(); }

    /// What a constraint is about, in the order of the document.
    const std::vector<Choice>& Choices(std::size_t constraint) const {
        return m_constraints[constraint].choices;
    }
    /// Whether all choices of the constraint are made. A feature that is out of scope has made none.
    bool Holds(std::size_t constraint, const std::vector<FeatureChoice>& choices) const;
    /// How many of the constraints that concern the feature hold.
    std::size_t HoldingFor(std::size_t feature, const std::vector<FeatureChoice>& choices) const;

    /// The features of a constraint, the one that gives way first at the front.
    const std::vector<std::size_t>& GivingWay(std::size_t constraint) const {
        return m_constraints[constraint].givingWay;
    }

private:
    struct Constraint {
        std::vector<Choice> choices;
        std::vector<std::size_t> givingWay;
    };

    std::vector<Constraint> m_constraints;
    std::vector<std::vector<std::size_t>> m_byFeature; // the constraints that concern a feature
};

} // namespace OvPlatform
