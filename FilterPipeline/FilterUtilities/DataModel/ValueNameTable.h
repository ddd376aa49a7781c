#pragma once

#include "EnumeratorNames.h"
#include "ValueIds.h"

#include <LowLevelFacilities/CPString.h>

#include <span>

/// Every enumerator of tagValueEnum, by ascending number.
[[nodiscard]] std::span<const EnumeratorName<DataModelIds::tagValueEnum>> GetValueNames() noexcept;
/// Null for a number that has no name.
[[nodiscard]] const char* FindValueName(DataModelIds::tagValueEnum value) noexcept;
/// The qualified name; the value must be one of the table's.
[[nodiscard]] CPString MakeValueEnumString(DataModelIds::tagValueEnum value);
