#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <Dictionary/DictionaryTypeName.h>
#include <LowLevelFacilities/Strings/CPString.h>

/// What an option of a feature is called in the device's own vocabulary (CPSS), which its capabilities and
/// the public document settings use.
struct NativeXmlConfigCpssOptionValueEntry {
    CPString cpssOptionName;
    DataModelIds::tagFeatureEnum feature;
    CPString featureEnumString; // the qualified names of the enumerators
    DataModelIds::tagValueEnum value;
    CPString valueEnumString;
};

template <>
struct DictionaryTypeName<NativeXmlConfigCpssOptionValueEntry> {
    static constexpr const char* value = "class NativeXmlConfigCpssOptionValueEntry";
};
