#pragma once

#include <FeatureAccess/RecordedAnswer.h>

#include <string>

namespace OvPipeline {

/// As flags are shown.
const char* YesOrNo(bool value);

/// What a feature access said of a feature, as it is shown.
struct ShownAnswer {
    std::string value = {};     // a number, a flag or a text; empty if there is none, or if it is secret
    std::string valueName = {}; // of an option; how many entries a collection has
    bool isSpecified = false;
    bool isNumber = false;
    bool isFlag = false;
    bool isSecret = false;
    FeatureValueSource source = FeatureValueSource::None;

    static ShownAnswer Of(const RecordedAnswer& recorded);

    /// Value and name; "(hidden)" for a secret that is set.
    std::string Text() const;
    /// Empty where no place has a value.
    const char* SourceName() const;
};

} // namespace OvPipeline
