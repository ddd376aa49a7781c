#pragma once

#include "DataModel/SimpleOptionValue.h"
#include "FeatureAccess/FeatureValueSource.h"

#include <LowLevelFacilities/Numbers/Dimension.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

/// All that a collection itself can answer.
enum class CollectionState { NotSpecified, Specified };

/// A value that says nothing: what a feature has that no place knows.
template <typename Value>
[[nodiscard]] Value NoFeatureValue() {
    return Value();
}
template <>
[[nodiscard]] inline DataModelIds::tagValueEnum NoFeatureValue() {
    return DataModelIds::VAL_UNSPECIFIED;
}

template <typename Value>
[[nodiscard]] bool IsNoFeatureValue(const Value& value) {
    return value == NoFeatureValue<Value>();
}
template <>
[[nodiscard]] inline bool IsNoFeatureValue(const Dimension& value) {
    return value.GetValue() == Number(0); // in whatever unit
}

/// What a job asks for of one feature, and which place decided it. A value can be known that nobody chose: it
/// is not specified then.
template <typename Value>
struct FeatureAnswer {
    Value value = NoFeatureValue<Value>();
    bool isSpecified = false;
    FeatureValueSource source = FeatureValueSource::None;

    /// Whether the place has something to say.
    [[nodiscard]] bool HasValue() const { return isSpecified || !IsNoFeatureValue(value); }
};

/// An option is specified unless it is VAL_UNSPECIFIED.
[[nodiscard]] inline FeatureAnswer<DataModelIds::tagValueEnum> ChosenOption(DataModelIds::tagValueEnum value,
                                                                            FeatureValueSource source) {
    return {value, value != DataModelIds::VAL_UNSPECIFIED, source};
}

[[nodiscard]] inline SimpleOptionValue ToOption(const FeatureAnswer<DataModelIds::tagValueEnum>& answer) {
    return {answer.isSpecified, answer.value};
}
