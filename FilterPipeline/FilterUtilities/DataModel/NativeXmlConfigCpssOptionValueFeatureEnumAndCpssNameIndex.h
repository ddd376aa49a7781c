#pragma once

#include "DataModel/FeatureOptionIndex.h"
#include "DataModel/NativeXmlConfigCpssOptionValueEntry.h"

/// Options by feature and CPSS name.
class NativeXmlConfigCpssOptionValueFeatureEnumAndCpssNameIndex final
    : public FeatureOptionIndex<NativeXmlConfigCpssOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigCpssOptionValueEntry& entry, int) const override {
        return MakeKey(entry.feature, entry.cpssOptionName.view());
    }
};
