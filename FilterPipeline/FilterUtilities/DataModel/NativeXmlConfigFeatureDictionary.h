#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/NativeXmlConfigFeatureEnumIndex.h"
#include "DataModel/NativeXmlConfigFeatureNameIndex.h"

#include <Dictionary/Dictionary.h>
#include <Dictionary/SingletonBase.h>

/// The features that have names. Immutable; any thread. Lookups allocate nothing unless they throw
/// CPExceptionUnknownKeyRequest; names are compared byte for byte.
class OV_FILTER_UTILITIES_API NativeXmlConfigFeatureDictionary final
    : public SingletonBase<NativeXmlConfigFeatureDictionary> {
public:
    ~NativeXmlConfigFeatureDictionary() override;
    /// The one of the process, whoever asks: no other module builds one of its own.
    [[nodiscard]] static NativeXmlConfigFeatureDictionary* Instance();

    [[nodiscard]] const NativeXmlConfigFeatureEntry& GetEntry(DataModelIds::tagFeatureEnum feature) const {
        return m_enumIndex.GetEntryRef(feature);
    }
    [[nodiscard]] bool IsFeaturePresent(DataModelIds::tagFeatureEnum feature) const noexcept {
        return m_enumIndex.IsKeyPresent(feature);
    }
    [[nodiscard]] const NativeXmlConfigFeatureEntry&
    GetEntryByXmlConfigName(std::string_view xmlConfigName) const {
        return m_nameIndex.GetEntryRef(xmlConfigName);
    }
    [[nodiscard]] bool IsXmlConfigNamePresent(std::string_view xmlConfigName) const noexcept {
        return m_nameIndex.IsKeyPresent(xmlConfigName);
    }
    /// In the order of the table, in place of what is in the vector.
    void GetAllEntries(std::vector<const NativeXmlConfigFeatureEntry*>& entries) const {
        m_nameIndex.GetAllEntries(entries);
    }

private:
    friend SingletonBase<NativeXmlConfigFeatureDictionary>;
    NativeXmlConfigFeatureDictionary();

    Dictionary<NativeXmlConfigFeatureEntry> m_dictionary;
    NativeXmlConfigFeatureNameIndex& m_nameIndex;
    NativeXmlConfigFeatureEnumIndex& m_enumIndex;
};
