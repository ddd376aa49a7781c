#pragma once

#include "Commands/PolicyReport.h"

#include <PrintTicket/QueueTickets.h>

#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// What a queue offers, by its documents and in their order: features with their options, parameters with
/// their bounds, what goes not together, and what its administrator demands. Names are as they are written,
/// texts UTF-8; what nobody says is empty.
struct OfferedSettings {
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
        const char* level = ""; // "job", "document" or "page"
        bool isPickMany = false;
        std::vector<Option> options;
        std::vector<Demand> demands;
        std::vector<Feature> features;
    };
    struct Parameter {
        std::string name;
        std::string displayName;
        const char* level = "";
        const char* need = ""; // "always", "withOption" (that refers to it) or "optional"
        std::string type;
        std::string unit;
        std::string minimum;
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

    static OfferedSettings Read(const OvPlatform::QueueTickets& tickets, const PolicyReport& policy);

    /// Leaves only the features and parameters of that name, and the rules about them: a name as tickets have
    /// it, with its prefix or without, or the displayed one, in upper or lower case. False if there is none.
    bool KeepOnly(const std::string& name);

    std::string printer;
    std::vector<Feature> features;
    std::vector<Parameter> parameters;
    std::vector<Rule> rules;
    std::vector<Setting> properties; // of the printer as a whole
    bool isPart = false;             // KeepOnly has left something out
};

/// A name without its prefix.
std::string LocalNameOf(const std::string& name);
/// What people read of something that may have no name for them.
std::string Titled(const std::string& displayName, const std::string& name);

} // namespace OvPipeline
