#pragma once

#include "DataModel/NativeXmlConfigFeatureEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

/// Features by their names in the configuration.
class NativeXmlConfigFeatureNameIndex final
    : public DictionaryIndexWithUnique<CPString, NativeXmlConfigFeatureEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigFeatureEntry& entry, int) const override {
        return entry.xmlConfigFeatureName;
    }
};
