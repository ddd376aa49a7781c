#pragma once

#include "DataModel/NativeXmlConfigOptionValueEntry.h"

#include <Dictionary/DictionaryIndexWithUnique.h>

template <>
struct DictionaryTypeName<DataModelIds::tagValueEnum> {
    static constexpr const char* value = "enum DataModelIds::tagValueEnum";
};

/// Options by the numbers of their values, of which each belongs to one feature here.
class NativeXmlConfigOptionValueEnumIndex final
    : public DictionaryIndexWithUnique<DataModelIds::tagValueEnum, NativeXmlConfigOptionValueEntry> {
public:
    [[nodiscard]] DataModelIds::tagValueEnum GetKey(const NativeXmlConfigOptionValueEntry& entry,
                                                    int) const override {
        return entry.value;
    }
};
