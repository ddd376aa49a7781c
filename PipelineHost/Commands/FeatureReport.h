#pragma once

#include "Commands/ShownAnswer.h"
#include "Report/JsonText.h"

#include <FeatureAccess/JobSettings.h>

#include <string>
#include <vector>

namespace OvPipeline {

/// What a job asks for, feature by feature, for people and for programs.
class FeatureReport {
public:
    using Answer = ShownAnswer;
    struct Feature {
        int number = 0;
        std::string enumerator;
        std::string cpssName;
        std::string configurationName;
        std::string ticketName;
        const char* syntax = "";
        bool isSupported = false;
        bool isRequired = false;
        Answer answer;
    };
    struct Effective {
        const char* name;
        Answer answer;
    };

    /// Asks for every feature of the dictionary, by the kind and the path of its rule, and for the effective
    /// values. Throws what the questions throw.
    explicit FeatureReport(JobSettings& settings);

    const std::vector<Feature>& Features() const { return m_features; } // by ascending number
    const std::vector<Effective>& EffectiveValues() const { return m_effective; }

    /// Aligned columns, and below them the effective values. width: as AlignedTable takes it.
    std::string AsTable(std::size_t width = 0) const;
    /// An object with "features" and "effective". A value that is not there is null, as is one that is
    /// secret, which says so.
    JsonText AsJson() const;

private:
    std::vector<Feature> m_features;
    std::vector<Effective> m_effective;
};

} // namespace OvPipeline
