#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/EnumeratorNames.h"
#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/Strings/CPString.h>

#include <span>

/// Every enumerator of tagValueEnum, by ascending number.
[[nodiscard]] OV_FILTER_UTILITIES_API std::span<const EnumeratorName<DataModelIds::tagValueEnum>>
GetValueNames() noexcept;
/// Null for a number that has no name.
[[nodiscard]] OV_FILTER_UTILITIES_API const char* FindValueName(DataModelIds::tagValueEnum value) noexcept;
/// The qualified name; the value must be one of the table's.
[[nodiscard]] CPString MakeValueEnumString(DataModelIds::tagValueEnum value);
