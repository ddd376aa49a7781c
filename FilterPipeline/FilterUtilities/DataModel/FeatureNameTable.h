#pragma once

#include "FeatureIds.h"

#include <span>

/// The name of an enumerator of tagFeatureEnum.
struct FeatureNameRow {
    DataModelIds::tagFeatureEnum feature;
    const char* enumerator;
};

/// The features that have a number but no names, so that the feature dictionary does not know them. By
/// ascending number.
[[nodiscard]] std::span<const FeatureNameRow> GetNamelessFeatureRows() noexcept;
