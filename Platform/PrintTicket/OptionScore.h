#pragma once

#include "PrintTicket/CapabilitiesIndex.h"
#include "PrintTicket/MergedTicket.h"

#include <optional>
#include <utility>
#include <vector>

namespace OvPlatform {

/// How well an option of the capabilities serves for an option of a ticket.
struct OptionScore {
    bool named = false;      // the ticket's option has a name, in a namespace that the printer knows
    bool sameName = false;   // and it is the candidate's
    bool equalNames = false; // the names are the same, or there are none
    bool sameKind = false;   // both have a name, or neither has
    int matched = 0;         // scored properties that both have and that agree
    int unmatched = 0;       // scored properties of the ticket's option that find no match
    int extra = 0;           // scored properties that only the capabilities' option has
    int refused = 0;         // values of the ticket that the candidate's parameters do not take
    double distance = 0;     // how far numbers lie apart, each between 0 and 1
    int otherwise = 0;       // matches of a value with a reference to a parameter, or of two references
    int respelled = 0;       // matches of values that are the same number, or the same text of another type

    /// Values that the ticket gives and the capabilities leave to a parameter.
    std::vector<std::pair<std::size_t, SchemaValue>> parameters;

    bool IsCandidate() const {
        return sameName || matched > 0 || (equalNames && unmatched == 0 && extra == 0);
    }
    /// The ticket gets what it asks for. A name says it all: what the ticket takes the option to be made of
    /// may be more than the printer says of it, or rounded otherwise.
    bool IsAsAsked() const { return sameName ? refused == 0 : !named && unmatched == 0; }
    /// Nothing differs at all.
    bool IsPerfect() const { return equalNames && unmatched == 0 && extra == 0 && parameters.empty(); }
    bool IsBetterThan(const OptionScore& other) const;
};

/// Scores options of tickets against those of one printer.
class OptionScorer {
public:
    /// The ticket supplies the values of the parameters that its options refer to.
    OptionScorer(const CapabilitiesIndex& capabilities, const MergedTicket& ticket)
        : m_capabilities(capabilities), m_ticket(ticket) {}

    OptionScore Score(const SchemaOption& ticketOption, const SchemaOption& candidate) const;

    struct Best {
        std::size_t option;
        OptionScore score;
    };
    /// The best viable option of the feature: the one of the same name, else the one with the best score.
    /// Nothing where no option has anything in common with the ticket's, or the one of the name is not
    /// viable.
    std::optional<Best> FindBest(const SchemaOption& ticketOption, const CapabilitiesFeature& feature) const;

private:
    void ScoreProperties(const std::vector<SchemaProperty>& asked, const std::vector<SchemaProperty>& offered,
                         OptionScore& score) const;
    bool ScoreProperty(const SchemaProperty& asked, const SchemaProperty& offered, OptionScore& score) const;
    const SchemaValue* ValueOf(const SchemaProperty& property) const;

    const CapabilitiesIndex& m_capabilities;
    const MergedTicket& m_ticket;
};

} // namespace OvPlatform
