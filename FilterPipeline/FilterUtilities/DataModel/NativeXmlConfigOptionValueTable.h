#pragma once

#include "FeatureIds.h"
#include "ValueIds.h"

#include <span>

/// The options of features, with their names in the configuration and in the ticket, as data.
struct NativeXmlConfigOptionValueRow {
    DataModelIds::tagFeatureEnum feature;
    DataModelIds::tagValueEnum value;
    const char* xmlConfigName;
    const char* printTicketName;
};

[[nodiscard]] std::span<const NativeXmlConfigOptionValueRow> GetNativeXmlConfigOptionValueRows() noexcept;
