#pragma once

#include "FeatureOptionKey.h"
#include "NativeXmlConfigOptionValueEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

/// Options by feature and name in the ticket.
class NativeXmlConfigOptionValueFeatureEnumAndPrintTicketNameIndex final
    : public DictionaryIndexWithUnique<CPString, NativeXmlConfigOptionValueEntry> {
public:
    [[nodiscard]] CPString GetKey(const NativeXmlConfigOptionValueEntry& entry, int) const override {
        return FeatureOptionKey(entry.feature, entry.printTicketOptionName.view()).MakeString();
    }
};
