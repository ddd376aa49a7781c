#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <Dictionary/DictionaryTypeName.h>
#include <LowLevelFacilities/Strings/CPString.h>

/// What an option of a feature is called in the administrator's configuration and in the ticket.
struct NativeXmlConfigOptionValueEntry {
    CPString xmlConfigOptionName;
    CPString printTicketOptionName; // without a prefix
    DataModelIds::tagFeatureEnum feature;
    CPString featureEnumString; // the qualified names of the enumerators
    DataModelIds::tagValueEnum value;
    CPString valueEnumString;
};

template <>
struct DictionaryTypeName<NativeXmlConfigOptionValueEntry> {
    static constexpr const char* value = "class NativeXmlConfigOptionValueEntry";
};
