#pragma once

#include "EnumeratorNames.h"
#include "FeatureIds.h"

#include <LowLevelFacilities/CPString.h>

#include <span>

/// Every enumerator of tagFeatureEnum, by ascending number.
[[nodiscard]] std::span<const EnumeratorName<DataModelIds::tagFeatureEnum>> GetFeatureNames() noexcept;
/// Null for a number that has no name.
[[nodiscard]] const char* FindFeatureName(DataModelIds::tagFeatureEnum feature) noexcept;
/// The qualified name; the feature must be one of the table's.
[[nodiscard]] CPString MakeFeatureEnumString(DataModelIds::tagFeatureEnum feature);
