#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/NativeXmlConfigCpssOptionFeatureEnumAndValueEnumIndex.h"
#include "DataModel/NativeXmlConfigCpssOptionValueFeatureEnumAndCpssNameIndex.h"

#include <Dictionary/Dictionary.h>
#include <Dictionary/SingletonBase.h>

/// The options that have a CPSS name; a value may belong to several features here. Immutable; any thread.
/// Lookups allocate nothing unless they throw CPExceptionUnknownKeyRequest; names are compared byte for byte
/// and may be wide (UTF-16 units).
class OV_FILTER_UTILITIES_API NativeXmlConfigCpssOptionValueDictionary final
    : public SingletonBase<NativeXmlConfigCpssOptionValueDictionary> {
public:
    ~NativeXmlConfigCpssOptionValueDictionary() override;
    /// The one of the process, whoever asks: no other module builds one of its own.
    [[nodiscard]] static NativeXmlConfigCpssOptionValueDictionary* Instance();

    [[nodiscard]] const NativeXmlConfigCpssOptionValueEntry&
    GetEntry(DataModelIds::tagFeatureEnum feature, DataModelIds::tagValueEnum value) const {
        return m_valueIndex.GetOptionRef(feature, value);
    }
    [[nodiscard]] bool IsValuePresent(DataModelIds::tagFeatureEnum feature,
                                      DataModelIds::tagValueEnum value) const {
        return m_valueIndex.FindOption(feature, value) != nullptr;
    }
    [[nodiscard]] const NativeXmlConfigCpssOptionValueEntry&
    GetEntryByCpssName(DataModelIds::tagFeatureEnum feature, std::string_view cpssName) const {
        return m_cpssNameIndex.GetOptionRef(feature, cpssName);
    }
    [[nodiscard]] const NativeXmlConfigCpssOptionValueEntry&
    GetEntryByCpssName(DataModelIds::tagFeatureEnum feature, std::wstring_view cpssName) const {
        return m_cpssNameIndex.GetOptionRef(feature, cpssName);
    }
    [[nodiscard]] bool IsCpssNamePresent(DataModelIds::tagFeatureEnum feature,
                                         std::string_view cpssName) const {
        return m_cpssNameIndex.FindOption(feature, cpssName) != nullptr;
    }
    [[nodiscard]] bool IsCpssNamePresent(DataModelIds::tagFeatureEnum feature,
                                         std::wstring_view cpssName) const {
        return m_cpssNameIndex.FindOption(feature, cpssName) != nullptr;
    }
    /// In the order of the table, in place of what is in the vector.
    void GetAllEntries(std::vector<const NativeXmlConfigCpssOptionValueEntry*>& entries) const {
        m_valueIndex.GetAllEntries(entries);
    }

private:
    friend SingletonBase<NativeXmlConfigCpssOptionValueDictionary>;
    NativeXmlConfigCpssOptionValueDictionary();

    Dictionary<NativeXmlConfigCpssOptionValueEntry> m_dictionary;
    NativeXmlConfigCpssOptionFeatureEnumAndValueEnumIndex& m_valueIndex;
    NativeXmlConfigCpssOptionValueFeatureEnumAndCpssNameIndex& m_cpssNameIndex;
};
