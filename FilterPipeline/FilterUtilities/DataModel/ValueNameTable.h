#pragma once

#include "ValueIds.h"

#include <LowLevelFacilities/CPString.h>

#include <span>

/// The name of an enumerator of tagValueEnum.
struct ValueNameRow {
    DataModelIds::tagValueEnum value;
    const char* enumerator;
};

/// By ascending value.
[[nodiscard]] std::span<const ValueNameRow> GetValueNameRows() noexcept;
/// Null for a number that has no name.
[[nodiscard]] const char* FindValueName(DataModelIds::tagValueEnum value) noexcept;
/// The qualified name; the value must be one of the table's.
[[nodiscard]] CPString MakeValueEnumString(DataModelIds::tagValueEnum value);
