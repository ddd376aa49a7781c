#pragma once

#include "FeatureOptionKey.h"
#include "NativeXmlConfigCpssOptionValueEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

/// Options by the numbers of feature and value.
class NativeXmlConfigCpssOptionFeatureEnumAndValueEnumIndex final
    : public DictionaryIndexWithUnique<CPString, NativeXmlConfigCpssOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigCpssOptionValueEntry& entry, int) const override {
        return FeatureOptionKey(entry.feature, entry.value).MakeString();
    }
};
