#pragma once

#include "ValueIds.h"

#include <LowLevelFacilities/CPString.h>

#include <span>

/// The names of the enumerators that the option tables use, as data, by ascending value.
struct ValueNameRow {
    DataModelIds::tagValueEnum value;
    const char* enumerator;
};

[[nodiscard]] std::span<const ValueNameRow> GetValueNameRows() noexcept;
/// The qualified name; the value must be one of the table's.
[[nodiscard]] CPString MakeValueEnumString(DataModelIds::tagValueEnum value);
