#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <span>

/// The options of features, with their CPSS names, as data.
struct NativeXmlConfigCpssOptionValueRow {
    DataModelIds::tagFeatureEnum feature;
    DataModelIds::tagValueEnum value;
    const char* cpssName;
};

[[nodiscard]] std::span<const NativeXmlConfigCpssOptionValueRow>
GetNativeXmlConfigCpssOptionValueRows() noexcept;
