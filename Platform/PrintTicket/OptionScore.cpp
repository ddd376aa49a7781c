#include "PrintTicket/OptionScore.h"

#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace OvPlatform {
namespace {

bool SaysInteger(const SchemaValue& value) { return value.type.Is(SchemaSpace::Types, SchemaType::Integer); }

std::optional<double> Number(const SchemaValue& value) {
    if (value.IsQName() || value.type.Is(SchemaSpace::Types, SchemaType::String)) return std::nullopt;
    return NumberOf(value.text, SaysInteger(value));
}

bool SameValue(const SchemaValue& one, const SchemaValue& other) {
    if (one.IsQName() != other.IsQName()) return false;
    if (const auto left = Number(one), right = Number(other); left && right) return *left == *right;
    return one.text == other.text && one.space == other.space;
}

double Distance(const SchemaValue& one, const SchemaValue& other) {
    const auto left = Number(one), right = Number(other);
    if (!left || !right) return 1;
    const double larger = (std::max)(std::fabs(*left), std::fabs(*right));
    return larger == 0 ? 0 : (std::min)(1.0, std::fabs(*left - *right) / larger);
}

} // namespace

bool OptionScore::IsBetterThan(const OptionScore& other) const {
    const auto rank = [](const OptionScore& score) {
        // What the printer wrote itself finds its own option again: nothing is unmatched or extra then, and
        // of those that match as well, it alone says so in the same words.
        return std::make_tuple(!score.sameName, -score.matched, score.unmatched, score.distance,
                               score.otherwise, score.extra, !score.sameKind, score.respelled);
    };
    return rank(*this) < rank(other);
}

OptionScore OptionScorer::Score(const SchemaOption& ticketOption, const SchemaOption& candidate) const {
    OptionScore score;
    score.named = !ticketOption.name.Empty() && m_capabilities.Prefixes().Has(ticketOption.name.space);
    score.sameName = score.named && ticketOption.name == candidate.name;
    score.equalNames = ticketOption.name == candidate.name;
    score.sameKind = ticketOption.name.Empty() == candidate.name.Empty();
    ScoreProperties(ticketOption.scored, candidate.scored, score);
    return score;
}

void OptionScorer::ScoreProperties(const std::vector<SchemaProperty>& asked,
                                   const std::vector<SchemaProperty>& offered, OptionScore& score) const {
    std::vector<bool> used(offered.size());
    for (const SchemaProperty& property : asked) {
        std::size_t at = 0;
        while (at < offered.size() && (used[at] || offered[at].name != property.name))
            ++at;
        if (at == offered.size()) {
            ++score.unmatched;
            score.distance += 1;
            continue;
        }
        used[at] = true;
        ++(ScoreProperty(property, offered[at], score) ? score.matched : score.unmatched);
        ScoreProperties(property.scored, offered[at].scored, score);
    }
    score.extra += static_cast<int>(std::count(used.begin(), used.end(), false));
}

bool OptionScorer::ScoreProperty(const SchemaProperty& asked, const SchemaProperty& offered,
                                 OptionScore& score) const {
    const SchemaValue* value = ValueOf(asked);
    const std::size_t parameter = m_capabilities.FindParameter(offered.parameter);
    if (parameter != CapabilitiesIndex::notFound) {
        // A parameter that the ticket gives a bad value is mended as a parameter; the option is still meant.
        if (asked.parameter == offered.parameter) return true;
        ++score.otherwise;
        // A reference to a parameter without a value matches: the parameter's default will be its value.
        if (!value) return !asked.parameter.Empty();
        if (m_capabilities.ProblemOf(parameter, *value)) {
            ++score.refused;
            return false;
        }
        score.parameters.emplace_back(parameter, m_capabilities.Parameters()[parameter].Normalised(*value));
        return true;
    }
    if (!value || !offered.value) return !value && !offered.value && asked.parameter == offered.parameter;
    if (!asked.parameter.Empty()) ++score.otherwise;
    if (*value != *offered.value) ++score.respelled;
    if (SameValue(*value, *offered.value)) return true;
    score.distance += Distance(*value, *offered.value);
    return false;
}

const SchemaValue* OptionScorer::ValueOf(const SchemaProperty& property) const {
    if (property.value) return &*property.value;
    if (property.parameter.Empty()) return nullptr;
    const auto* parameter = m_ticket.parameters.Find(property.parameter);
    return parameter ? &parameter->setting->value : nullptr;
}

std::optional<OptionScorer::Best> OptionScorer::FindBest(const SchemaOption& ticketOption,
                                                         const CapabilitiesFeature& feature) const {
    const std::size_t named = ticketOption.name.Empty()
                                  ? CapabilitiesIndex::notFound
                                  : CapabilitiesIndex::Find(feature.optionByName, ticketOption.name);
    std::optional<Best> best;
    for (std::size_t option = 0; option < feature.options.size(); ++option) {
        if (!feature.options[option].viable) continue;
        const SchemaOption& candidate = *feature.options[option].schema;
        if (named != CapabilitiesIndex::notFound && candidate.name != ticketOption.name) continue;
        OptionScore score = Score(ticketOption, candidate);
        if (score.IsCandidate() && (!best || score.IsBetterThan(best->score)))
            best = Best{option, std::move(score)};
    }
    return best;
}

} // namespace OvPlatform
