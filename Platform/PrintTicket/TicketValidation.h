#pragma once

#include "PrintTicket/MergeReport.h"
#include "PrintTicket/MergedTicket.h"
#include "PrintTicket/OptionScore.h"
#include "PrintTicket/ValidatedTicket.h"

#include <string>
#include <vector>

namespace OvPlatform {

/// Turns what a merge asks for into what the printer can do. In this order:
///
/// 1. Features of the capabilities get the best option for what the ticket asks; those that it leaves out,
/// and
///    those whose option nothing matches or the device does not allow, get the queue's default.
/// 2. Options that exclude each other give way (ConstraintRules).
/// 3. Parameters get their value, or their default; those that chosen options refer to are added, conditional
/// ones
///    that no option refers to go.
/// 4. What the capabilities do not know goes.
///
/// Validating a validated ticket changes nothing.
class TicketValidation {
public:
    /// `defaults` is the queue's own ticket, validated; null while that one is. `report` may be null.
    TicketValidation(const CapabilitiesIndex& capabilities, const ValidatedTicket* defaults,
                     EPrintTicketScope scope, MergeReport* report)
        : m_capabilities(capabilities), m_defaults(defaults), m_scope(scope), m_report(report) {}

    ValidatedTicket Validate(const MergedTicket& ticket);

private:
    /// What is known of a setting besides its place in the result; kept only as long as the validation runs.
    struct Note {
        SettingOrigin origin = SettingOrigin::Queue;
        std::string requested;
        std::string reason;
        std::vector<Note> nested{}; // for the nested features of a feature
    };
    /// A parameter's value that an option brings with it.
    struct OptionValue {
        SchemaValue value;
        SettingOrigin origin;
    };

    /// `origin` is that of `asked`.
    FeatureChoice Choose(const CapabilitiesFeature& feature, const SchemaFeature* asked, SettingOrigin origin,
                         const FeatureChoice* fallback, const OptionScorer& scorer, Note& note);
    void ChooseOptions(FeatureChoice& choice, const CapabilitiesFeature& feature, const SchemaFeature& asked,
                       const OptionScorer& scorer, Note& note);
    std::vector<FeatureChoice::Chosen> DefaultOptions(const CapabilitiesFeature& feature,
                                                      const FeatureChoice* fallback) const;

    void ResolveConstraints();
    bool GiveWay(std::size_t feature, std::size_t constraint);

    void SetParameters(const MergedTicket& ticket);
    std::vector<bool> ReferencedParameters() const;

    void KeepProperties(const MergedTicket& ticket);
    void NoteUnknown(const MergedTicket& ticket);

    std::vector<const SchemaProperty*> Reported(const std::vector<SchemaProperty>& properties) const;
    bool IsReported(const SchemaProperty& property) const;

    void Conflict(Note& note, std::string requested, std::string reason);
    void Report(std::string name, bool isParameter, std::string value, Note note);
    void ReportFeature(const std::string& path, const CapabilitiesFeature& feature,
                       const FeatureChoice& choice, const Note& note);
    void ReportFeatures();

    const CapabilitiesIndex& m_capabilities;
    const ValidatedTicket* m_defaults;
    EPrintTicketScope m_scope;
    MergeReport* m_report;

    ValidatedTicket m_result;
    std::vector<Note> m_featureNotes;
    std::vector<std::optional<OptionValue>> m_optionParameters; // by the place of the definition
};

} // namespace OvPlatform
