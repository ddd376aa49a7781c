#pragma once

#include "DataModel/ValueIds.h"
#include "FeatureAccess/FeatureQuestion.h"
#include "FeatureAccess/FeatureValueSource.h"

#include <LowLevelFacilities/Numbers/Dimension.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <utility>
#include <variant>

/// A question that a feature access was asked, with its answer.
struct RecordedAnswer {
    using Size = std::pair<Dimension, Dimension>;
    using Value = std::variant<std::monostate, DataModelIds::tagValueEnum, int, unsigned int, bool, CXString,
                               Dimension, Size>;

    FeatureQuestion question;
    Value value = {}; // none where it is secret, and of times and bytes
    bool isSpecified = false;
    bool isSecret = false;
    FeatureValueSource source = FeatureValueSource::None;
};
