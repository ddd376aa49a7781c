#pragma once

#include "DataModel/FeatureOptionIndex.h"
#include "DataModel/NativeXmlConfigOptionValueEntry.h"

/// Options by feature and name in the ticket.
class NativeXmlConfigOptionValueFeatureEnumAndPrintTicketNameIndex final
    : public FeatureOptionIndex<NativeXmlConfigOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigOptionValueEntry& entry, int) const override {
        return MakeKey(entry.feature, entry.printTicketOptionName.view());
    }
};
