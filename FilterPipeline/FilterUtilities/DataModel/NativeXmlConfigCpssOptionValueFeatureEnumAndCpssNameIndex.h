#pragma once

#include "FeatureOptionKey.h"
#include "NativeXmlConfigCpssOptionValueEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

/// Options by feature and CPSS name.
class NativeXmlConfigCpssOptionValueFeatureEnumAndCpssNameIndex final
    : public DictionaryIndexWithUnique<CPString, NativeXmlConfigCpssOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigCpssOptionValueEntry& entry, int) const override {
        return FeatureOptionKey(entry.feature, entry.cpssOptionName.view()).MakeString();
    }
};
