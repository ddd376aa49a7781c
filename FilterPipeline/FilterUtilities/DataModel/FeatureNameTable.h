#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/EnumeratorNames.h"
#include "DataModel/FeatureIds.h"

#include <LowLevelFacilities/Strings/CPString.h>

#include <span>

/// Every enumerator of tagFeatureEnum, by ascending number.
[[nodiscard]] OV_FILTER_UTILITIES_API std::span<const EnumeratorName<DataModelIds::tagFeatureEnum>>
GetFeatureNames() noexcept;
/// Null for a number that has no name.
[[nodiscard]] OV_FILTER_UTILITIES_API const char*
FindFeatureName(DataModelIds::tagFeatureEnum feature) noexcept;
/// The qualified name; the feature must be one of the table's.
[[nodiscard]] CPString MakeFeatureEnumString(DataModelIds::tagFeatureEnum feature);
