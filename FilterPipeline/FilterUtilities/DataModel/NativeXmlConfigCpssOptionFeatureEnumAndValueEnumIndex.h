#pragma once

#include "DataModel/FeatureOptionIndex.h"
#include "DataModel/NativeXmlConfigCpssOptionValueEntry.h"

/// Options by the numbers of feature and value.
class NativeXmlConfigCpssOptionFeatureEnumAndValueEnumIndex final
    : public FeatureOptionIndex<NativeXmlConfigCpssOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigCpssOptionValueEntry& entry, int) const override {
        return MakeKey(entry.feature, entry.value);
    }
};
