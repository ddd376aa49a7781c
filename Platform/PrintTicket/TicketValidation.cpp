#include "PrintTicket/TicketValidation.h"

#include "PrintTicket/SettingText.h"

#include <algorithm>

namespace OvPlatform {
namespace {

int Standing(SettingOrigin origin) {
    return origin == SettingOrigin::Queue ? 0 : origin == SettingOrigin::Base ? 1 : 2;
}

} // namespace

ValidatedTicket TicketValidation::Validate(const MergedTicket& ticket) {
    const std::vector<CapabilitiesFeature>& features = m_capabilities.Features();
    m_result = {};
    m_result.features.resize(features.size());
    m_featureNotes.assign(features.size(), {});
    m_optionParameters.assign(m_capabilities.Parameters().size(), std::nullopt);

    const OptionScorer scorer(m_capabilities, ticket);
    for (std::size_t i = 0; i < features.size(); ++i) {
        if (!InScope(features[i].level, m_scope)) continue;
        const auto* asked = ticket.features.Find(features[i].Name());
        m_result.features[i] =
            Choose(features[i], asked != nullptr ? asked->setting : nullptr,
                   asked != nullptr ? asked->origin : SettingOrigin::Queue,
                   m_defaults != nullptr ? &m_defaults->features[i] : nullptr, scorer, m_featureNotes[i]);
    }
    ResolveConstraints();
    ReportFeatures();
    SetParameters(ticket);
    KeepProperties(ticket);
    NoteUnknown(ticket);
    if (m_report != nullptr) m_report->conflictResolved = m_result.conflictResolved;
    return std::move(m_result);
}

FeatureChoice TicketValidation::Choose(const CapabilitiesFeature& feature, const SchemaFeature* asked,
                                       SettingOrigin origin, const FeatureChoice* fallback,
                                       const OptionScorer& scorer, Note& note) {
    FeatureChoice choice;
    choice.inScope = true;
    if (asked != nullptr) {
        // A feature without an option leaves the choice to the queue.
        if (!asked->options.empty()) note.origin = origin;
        choice.properties = Reported(asked->properties);
        ChooseOptions(choice, feature, *asked, scorer, note);
    }
    if (choice.options.empty()) choice.options = DefaultOptions(feature, fallback);

    KeywordMap<const SchemaFeature*> askedByName;
    if (asked != nullptr)
        for (const SchemaFeature& nested : asked->features)
            askedByName.emplace(nested.name, &nested);
    note.nested.resize(feature.features.size());
    for (std::size_t i = 0; i < feature.features.size(); ++i) {
        const auto found = askedByName.find(feature.features[i].Name());
        choice.features.push_back(
            Choose(feature.features[i], found == askedByName.end() ? nullptr : found->second, origin,
                   fallback != nullptr && !fallback->features.empty() ? &fallback->features[i] : nullptr,
                   scorer, note.nested[i]));
        if (found != askedByName.end()) askedByName.erase(found);
    }
    for (const auto& [name, nested] : askedByName)
        if (m_capabilities.Prefixes().Has(name.space))
            Conflict(note, m_capabilities.Prefixes().Qualified(name),
                     "the printer does not have this feature");
    return choice;
}

void TicketValidation::ChooseOptions(FeatureChoice& choice, const CapabilitiesFeature& feature,
                                     const SchemaFeature& asked, const OptionScorer& scorer, Note& note) {
    const NamespacePrefixes& prefixes = m_capabilities.Prefixes();
    for (const SchemaOption& option : asked.options) {
        if (!feature.pickMany && &option != &asked.options.front()) {
            Conflict(note, TextOf(option, prefixes), "only one option may be picked");
            break;
        }
        auto best = scorer.FindBest(option, feature);
        if (!best) {
            const bool known = !option.name.Empty() && feature.optionByName.count(option.name) != 0;
            Conflict(note, TextOf(option, prefixes),
                     known ? "the printer does not allow this option at present"
                           : "the printer does not have this option");
            continue;
        }
        if (!best->score.IsAsAsked())
            Conflict(note, TextOf(option, prefixes), "this is the printer's nearest option");
        if (choice.Has(best->option)) continue;
        choice.options.push_back({best->option, {}});
        if (best->score.IsPerfect()) choice.options.back().properties = Reported(option.properties);
        for (auto& [parameter, value] : best->score.parameters)
            m_optionParameters[parameter] = OptionValue{std::move(value), note.origin};
    }
    std::sort(choice.options.begin(), choice.options.end(),
              [](const auto& one, const auto& other) { return one.option < other.option; });

    const auto identity = std::find_if(choice.options.begin(), choice.options.end(), [&](const auto& chosen) {
        return feature.options[chosen.option].identity;
    });
    if (choice.options.size() > 1 && identity != choice.options.end()) {
        choice.options = {*identity};
        Conflict(note, TextOf(*feature.options[choice.options[0].option].schema, prefixes),
                 "this option excludes all others");
    }
}

std::vector<FeatureChoice::Chosen> TicketValidation::DefaultOptions(const CapabilitiesFeature& feature,
                                                                    const FeatureChoice* fallback) const {
    const auto& options = feature.options;
    if (options.empty()) return {};
    if (fallback != nullptr && !fallback->options.empty()) {
        std::vector<FeatureChoice::Chosen> chosen;
        for (const FeatureChoice::Chosen& one : fallback->options)
            chosen.push_back({one.option, {}});
        return chosen;
    }
    const auto first = [&](auto condition) {
        return static_cast<std::size_t>(std::find_if(options.begin(), options.end(), condition) -
                                        options.begin());
    };
    std::size_t option = first([](const auto& one) { return one.viable && one.identity; });
    if (option == options.size()) option = first([](const auto& one) { return one.viable; });
    return {{option, {}}};
}

// Every step makes fewer constraints hold, so that this ends, and what it ends at is where it would start
// again.
void TicketValidation::ResolveConstraints() {
    const ConstraintRules& rules = m_capabilities.Constraints();
    for (bool moved = true; moved;) {
        moved = false;
        for (std::size_t constraint = 0; constraint < rules.Count(); ++constraint) {
            if (!rules.Holds(constraint, m_result.features)) continue;
            // What nobody asked for gives way before what was asked for, the base before the delta.
            std::vector<std::size_t> features = rules.GivingWay(constraint);
            std::stable_sort(features.begin(), features.end(), [&](std::size_t one, std::size_t other) {
                return Standing(m_featureNotes[one].origin) < Standing(m_featureNotes[other].origin);
            });
            moved |= std::any_of(features.begin(), features.end(),
                                 [&](std::size_t feature) { return GiveWay(feature, constraint); });
        }
    }
}

bool TicketValidation::GiveWay(std::size_t at, std::size_t constraint) {
    const ConstraintRules& rules = m_capabilities.Constraints();
    const CapabilitiesFeature& feature = m_capabilities.Features()[at];
    FeatureChoice& choice = m_result.features[at];
    const std::size_t before = rules.HoldingFor(at, m_result.features);
    const std::vector<FeatureChoice::Chosen> asked = choice.options;
    const auto serves = [&](std::vector<FeatureChoice::Chosen> candidate) {
        choice.options = std::move(candidate);
        return !rules.Holds(constraint, m_result.features) &&
               rules.HoldingFor(at, m_result.features) < before;
    };

    bool found = serves(DefaultOptions(feature, m_defaults != nullptr ? &m_defaults->features[at] : nullptr));
    for (std::size_t option = 0; !found && option < feature.options.size(); ++option)
        found = feature.options[option].viable && serves({{option, {}}});
    if (!found) {
        choice.options = asked;
        return false;
    }
    std::string others;
    for (const std::size_t other : rules.GivingWay(constraint))
        if (other != at)
            others +=
                (others.empty() ? "" : " and ") +
                m_capabilities.Prefixes().Qualified(m_capabilities.Features()[other].Name()) + " " +
                TextOf(m_result.features[other], m_capabilities.Features()[other], m_capabilities.Prefixes());
    FeatureChoice askedChoice;
    askedChoice.options = asked;
    Conflict(m_featureNotes[at], TextOf(askedChoice, feature, m_capabilities.Prefixes()),
             "not possible with " + others);
    return true;
}

void TicketValidation::SetParameters(const MergedTicket& ticket) {
    const std::vector<ParameterRules>& parameters = m_capabilities.Parameters();
    const std::vector<bool> referenced = ReferencedParameters();
    m_result.parameters.assign(parameters.size(), std::nullopt);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const ParameterRules& rules = parameters[i];
        if (!InScope(rules.Level(), m_scope)) continue;
        const auto* asked = ticket.parameters.Find(rules.Name());
        Note note;
        if (asked != nullptr) note.origin = asked->origin;

        std::optional<SchemaValue>& value = m_result.parameters[i];
        const bool useless = rules.Need() == ParameterRules::Mandatory::Conditional && !referenced[i];
        if (useless) {
            if (asked != nullptr) {
                note.requested = asked->setting->value.text;
                note.reason = "no chosen option uses it";
            }
        } else if (m_optionParameters[i] && referenced[i]) {
            value = m_optionParameters[i]->value;
            note.origin = m_optionParameters[i]->origin;
        } else if (asked != nullptr) {
            if (const char* problem = m_capabilities.ProblemOf(i, asked->setting->value)) {
                Conflict(note, asked->setting->value.text, std::string("the value ") + problem);
                if (rules.Default()) value = *rules.Default();
            } else {
                value = rules.Normalised(asked->setting->value);
            }
        } else if ((referenced[i] || rules.Need() == ParameterRules::Mandatory::Unconditional) &&
                   rules.Default()) {
            value = *rules.Default();
        }
        if (value || asked != nullptr)
            Report(m_capabilities.Prefixes().Qualified(rules.Name()), true,
                   value ? value->text : std::string(), note);
    }
}

std::vector<bool> TicketValidation::ReferencedParameters() const {
    std::vector<bool> referenced(m_capabilities.Parameters().size());
    const auto visitProperties = [&](const std::vector<SchemaProperty>& properties,
                                     const auto& again) -> void {
        for (const SchemaProperty& property : properties) {
            if (const std::size_t at = m_capabilities.FindParameter(property.parameter);
                at != CapabilitiesIndex::notFound)
                referenced[at] = true;
            again(property.scored, again);
        }
    };
    const auto visitFeatures = [&](const std::vector<CapabilitiesFeature>& features,
                                   const std::vector<FeatureChoice>& choices, const auto& again) -> void {
        for (std::size_t i = 0; i < choices.size(); ++i) {
            for (const FeatureChoice::Chosen& chosen : choices[i].options)
                visitProperties(features[i].options[chosen.option].schema->scored, visitProperties);
            again(features[i].features, choices[i].features, again);
        }
    };
    visitFeatures(m_capabilities.Features(), m_result.features, visitFeatures);
    return referenced;
}

void TicketValidation::KeepProperties(const MergedTicket& ticket) {
    for (const auto& entry : ticket.properties.All()) {
        const bool reported = IsReported(*entry.setting);
        if (reported) m_result.properties.push_back(entry.setting);
        Note note{entry.origin, {}, reported ? "" : "the printer does not know its namespace"};
        const std::string text = entry.setting->value ? entry.setting->value->text : std::string();
        if (!reported) note.requested = text;
        Report(m_capabilities.Prefixes().Qualified(entry.setting->name), true,
               reported ? text : std::string(), note);
    }
}

// A setting in a namespace that the printer does not have was meant for another printer; that it goes is no
// conflict.
void TicketValidation::NoteUnknown(const MergedTicket& ticket) {
    const NamespacePrefixes& prefixes = m_capabilities.Prefixes();
    const auto note = [&](const KeywordName& name, bool isParameter, SettingOrigin origin,
                          std::string requested) {
        Note gone{origin, std::move(requested), "the printer does not know its namespace"};
        if (prefixes.Has(name.space))
            Conflict(gone, std::move(gone.requested),
                     "the printer does not have this " + std::string(isParameter ? "parameter" : "feature"));
        Report(prefixes.Qualified(name), isParameter, {}, std::move(gone));
    };
    for (const auto& entry : ticket.features.All())
        if (m_capabilities.FindFeature(entry.setting->name) == CapabilitiesIndex::notFound)
            note(entry.setting->name, false, entry.origin,
                 entry.setting->options.empty() ? std::string()
                                                : TextOf(entry.setting->options.front(), prefixes));
    for (const auto& entry : ticket.parameters.All())
        if (m_capabilities.FindParameter(entry.setting->name) == CapabilitiesIndex::notFound)
            note(entry.setting->name, true, entry.origin, entry.setting->value.text);
}

std::vector<const SchemaProperty*>
TicketValidation::Reported(const std::vector<SchemaProperty>& properties) const {
    std::vector<const SchemaProperty*> reported;
    KeywordMap<bool> seen;
    for (const SchemaProperty& property : properties)
        if (seen.emplace(property.name, true).second && IsReported(property)) reported.push_back(&property);
    return reported;
}

bool TicketValidation::IsReported(const SchemaProperty& property) const {
    const NamespacePrefixes& prefixes = m_capabilities.Prefixes();
    const auto known = [&](const NamespaceUri& space) { return space.Empty() || prefixes.Has(space); };
    if (!prefixes.Has(property.name.space)) return false;
    if (property.value && !(known(property.value->type.space) && known(property.value->space))) return false;
    return std::all_of(property.properties.begin(), property.properties.end(),
                       [&](const SchemaProperty& nested) { return IsReported(nested); });
}

void TicketValidation::Conflict(Note& note, std::string requested, std::string reason) {
    m_result.conflictResolved = true;
    note.requested = std::move(requested);
    note.reason = std::move(reason);
}

void TicketValidation::Report(std::string name, bool isParameter, std::string value, Note note) {
    if (m_report == nullptr) return;
    m_report->settings.push_back({std::move(name), isParameter, std::move(value), note.origin,
                                  std::move(note.requested), std::move(note.reason)});
}

void TicketValidation::ReportFeature(const std::string& path, const CapabilitiesFeature& feature,
                                     const FeatureChoice& choice, const Note& note) {
    const std::string name = path + m_capabilities.Prefixes().Qualified(feature.Name());
    Report(name, false, TextOf(choice, feature, m_capabilities.Prefixes()), note);
    for (std::size_t i = 0; i < choice.features.size(); ++i)
        ReportFeature(name + "/", feature.features[i], choice.features[i], note.nested[i]);
}

void TicketValidation::ReportFeatures() {
    if (m_report == nullptr) return;
    for (std::size_t i = 0; i < m_result.features.size(); ++i)
        if (m_result.features[i].inScope)
            ReportFeature({}, m_capabilities.Features()[i], m_result.features[i], m_featureNotes[i]);
}

} // namespace OvPlatform
