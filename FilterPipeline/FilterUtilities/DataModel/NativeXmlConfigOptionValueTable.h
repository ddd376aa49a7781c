#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <span>

/// The options of features, with their names in the configuration and in the ticket, as data. A name that is
/// null is the other one between underscores.
struct NativeXmlConfigOptionValueRow {
    DataModelIds::tagFeatureEnum feature;
    DataModelIds::tagValueEnum value;
    const char* xmlConfigName;
    const wchar_t* printTicketName = nullptr;
};

[[nodiscard]] std::span<const NativeXmlConfigOptionValueRow> GetNativeXmlConfigOptionValueRows() noexcept;
