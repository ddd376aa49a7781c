#pragma once

#include "DataModel/NativeXmlConfigFeatureEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

template <>
struct DictionaryTypeName<DataModelIds::tagFeatureEnum> {
    static constexpr const char* value = "enum DataModelIds::tagFeatureEnum";
};

/// Features by their numbers.
class NativeXmlConfigFeatureEnumIndex final
    : public DictionaryIndexWithUnique<DataModelIds::tagFeatureEnum, NativeXmlConfigFeatureEntry> {
public:
    [[nodiscard]] DataModelIds::tagFeatureEnum GetKey(const NativeXmlConfigFeatureEntry& entry,
                                                      int) const override {
        return entry.feature;
    }
};
