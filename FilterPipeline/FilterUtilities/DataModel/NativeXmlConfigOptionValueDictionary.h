#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/NativeXmlConfigOptionValueEnumIndex.h"
#include "DataModel/NativeXmlConfigOptionValueFeatureEnumAndPrintTicketNameIndex.h"
#include "DataModel/NativeXmlConfigOptionValueFeatureEnumAndXmlConfigNameIndex.h"

#include <Dictionary/Dictionary.h>
#include <Dictionary/SingletonBase.h>

/// The options that have names in the configuration and in the ticket; a value belongs to one feature here.
/// Immutable; any thread. Lookups allocate nothing unless they throw CPExceptionUnknownKeyRequest; names are
/// compared byte for byte. A name of the ticket goes without its prefix, and may be wide (UTF-16 units).
class OV_FILTER_UTILITIES_API NativeXmlConfigOptionValueDictionary final
    : public SingletonBase<NativeXmlConfigOptionValueDictionary> {
public:
    ~NativeXmlConfigOptionValueDictionary() override;
    /// The one of the process, whoever asks: no other module builds one of its own.
    [[nodiscard]] static NativeXmlConfigOptionValueDictionary* Instance();

    [[nodiscard]] const NativeXmlConfigOptionValueEntry& GetEntry(DataModelIds::tagValueEnum value) const {
        return m_valueIndex.GetEntryRef(value);
    }
    [[nodiscard]] bool IsValuePresent(DataModelIds::tagValueEnum value) const noexcept {
        return m_valueIndex.IsKeyPresent(value);
    }
    /// Knows the names of older configuration files as well.
    [[nodiscard]] const NativeXmlConfigOptionValueEntry&
    GetEntryByXmlConfigName(DataModelIds::tagFeatureEnum feature, std::string_view xmlConfigName) const {
        // No option bears an older name, so only what is not found needs a look at them.
        const NativeXmlConfigOptionValueEntry* const entry =
            m_xmlConfigNameIndex.FindOption(feature, xmlConfigName);
        return entry != nullptr ? *entry : GetEntryByOlderName(feature, xmlConfigName);
    }
    /// The same, null for a name that is not known.
    [[nodiscard]] const NativeXmlConfigOptionValueEntry*
    FindEntryByXmlConfigName(DataModelIds::tagFeatureEnum feature, std::string_view xmlConfigName) const {
        const NativeXmlConfigOptionValueEntry* const entry =
            m_xmlConfigNameIndex.FindOption(feature, xmlConfigName);
        return entry != nullptr ? entry : FindEntryByOlderName(feature, xmlConfigName);
    }
    /// Does not know the older names.
    [[nodiscard]] bool IsXmlConfigNamePresent(DataModelIds::tagFeatureEnum feature,
                                              std::string_view xmlConfigName) const {
        return m_xmlConfigNameIndex.FindOption(feature, xmlConfigName) != nullptr;
    }
    [[nodiscard]] const NativeXmlConfigOptionValueEntry&
    GetEntryByPrintTicketName(DataModelIds::tagFeatureEnum feature, std::string_view printTicketName) const {
        return m_printTicketNameIndex.GetOptionRef(feature, printTicketName);
    }
    [[nodiscard]] const NativeXmlConfigOptionValueEntry&
    GetEntryByPrintTicketName(DataModelIds::tagFeatureEnum feature, std::wstring_view printTicketName) const {
        return m_printTicketNameIndex.GetOptionRef(feature, printTicketName);
    }
    [[nodiscard]] bool IsPrintTicketNamePresent(DataModelIds::tagFeatureEnum feature,
                                                std::string_view printTicketName) const {
        return m_printTicketNameIndex.FindOption(feature, printTicketName) != nullptr;
    }
    [[nodiscard]] bool IsPrintTicketNamePresent(DataModelIds::tagFeatureEnum feature,
                                                std::wstring_view printTicketName) const {
        return m_printTicketNameIndex.FindOption(feature, printTicketName) != nullptr;
    }
    /// In the order of the table, in place of what is in the vector.
    void GetAllEntries(std::vector<const NativeXmlConfigOptionValueEntry*>& entries) const {
        m_valueIndex.GetAllEntries(entries);
    }

private:
    friend SingletonBase<NativeXmlConfigOptionValueDictionary>;
    NativeXmlConfigOptionValueDictionary();

    const NativeXmlConfigOptionValueEntry* FindEntryByOlderName(DataModelIds::tagFeatureEnum feature,
                                                                std::string_view name) const;
    const NativeXmlConfigOptionValueEntry& GetEntryByOlderName(DataModelIds::tagFeatureEnum feature,
                                                               std::string_view name) const;

    Dictionary<NativeXmlConfigOptionValueEntry> m_dictionary;
    NativeXmlConfigOptionValueEnumIndex& m_valueIndex;
    NativeXmlConfigOptionValueFeatureEnumAndXmlConfigNameIndex& m_xmlConfigNameIndex;
    NativeXmlConfigOptionValueFeatureEnumAndPrintTicketNameIndex& m_printTicketNameIndex;
};
