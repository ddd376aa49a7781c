#pragma once

#include "Commands/PolicyReport.h"
#include "Report/JsonText.h"

#include <PrintTicket/QueueTickets.h>

#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// What a queue offers: features with their options, parameters with their bounds, what goes not together,
/// and what its administrator demands. For people and for programs.
class CapabilitiesReport {
public:
    CapabilitiesReport(const OvPlatform::QueueTickets& tickets, const PolicyReport& policy);

    /// Leaves only the features and parameters of that name, and the rules about them: a name as tickets have
    /// it, with its prefix or without, or the displayed one, in upper or lower case. False if there is none.
    bool KeepOnly(const std::string& name);

    /// width: as AlignedTable takes it.
    std::string AsText(std::size_t width = 0) const;
    JsonText AsJson() const;

private:
    struct Setting {
        std::string name;
        std::string value;
        bool isParameter = false; // the value is the name of one
    };
    struct Size {
        long long width; // in microns, as is the height
        long long height;
    };
    struct Option {
        std::string name; // empty for one that is known by its properties alone
        std::string displayName;
        std::vector<Setting> scored;
        std::optional<Size> size;
        std::string constrained; // by what; empty for an option that may be chosen
        bool isDefault = false;
    };
    struct Demand {
        std::string behavior;
        std::string words;
    };
    struct Feature {
        std::string name;
        std::string displayName;
        const char* level = "";
        bool isPickMany = false;
        std::vector<Option> options;
        std::vector<Demand> demands;
        std::vector<Feature> features;
    };
    struct Parameter {
        std::string name;
        std::string displayName;
        const char* level = "";
        const char* need = "";
        std::string type;
        std::string unit;
        std::string minimum; // this and the next ones: empty where nobody says it
        std::string maximum;
        std::string multiple;
        std::string minLength;
        std::string maxLength;
        std::string fallback; // what the queue's default ticket has, or else the definition
    };
    struct Choice {
        std::string feature;
        std::vector<std::string> options;
        std::vector<std::string> displayNames; // of the options
        std::string displayName;
    };
    struct Rule {
        std::vector<Choice> choices;
        std::string givesWay; // the feature that does so first
    };

    Feature ReadFeature(const OvPlatform::CapabilitiesFeature& feature,
                        const OvPlatform::FeatureChoice* standard) const;
    Option ReadOption(const OvPlatform::CapabilitiesOption& option) const;
    std::vector<Setting> ReadScored(const std::vector<OvPlatform::SchemaProperty>& properties) const;
    void AddParameters(const OvPlatform::QueueTickets& tickets);
    void AddRules();
    void AddProperties();
    void AddDemands(const PolicyReport& policy);

    std::string NameOf(const OvPlatform::KeywordName& name) const;
    std::string ValueOf(const OvPlatform::SchemaProperty& property) const;
    std::string DisplayNameOf(const std::vector<OvPlatform::SchemaProperty>& properties) const;
    std::string DetailsOf(const Option& option) const;

    std::string FeatureText(const Feature& feature, std::size_t width, const std::string& indent) const;
    std::string ParametersText(std::size_t width) const;
    std::string RulesText() const;
    void WriteFeatures(JsonText& json, const std::vector<Feature>& features) const;
    void WriteParameters(JsonText& json) const;
    void WriteRules(JsonText& json) const;

    const OvPlatform::CapabilitiesIndex& m_capabilities;
    std::string m_printer;
    std::vector<Feature> m_features;
    std::vector<Parameter> m_parameters;
    std::vector<Rule> m_rules;
    std::vector<Setting> m_properties; // of the printer as a whole
    bool m_isPart = false;             // KeepOnly has left something out
};

} // namespace OvPipeline
