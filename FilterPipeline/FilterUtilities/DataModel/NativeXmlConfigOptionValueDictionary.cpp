#include "DataModel/NativeXmlConfigOptionValueDictionary.h"

#include "DataModel/NativeXmlConfigFeatureDictionary.h"
#include "DataModel/NativeXmlConfigOptionValueTable.h"
#include "DataModel/ValueNameTable.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <memory>

using DataModelIds::tagFeatureEnum;

namespace {

struct Alias {
    std::string_view olderName;
    std::string_view name;
};

// Only who reads a configuration meets the older names; no other lookup knows them, on purpose.
constexpr Alias aliases[] = {
    {"Envelope4_375x5_75", "Envelope5_5"},
    {"12_6x18_5", "SR12_6x18_5"},
};

std::string_view ResolveAlias(std::string_view name) noexcept {
    for (const Alias& alias : aliases) {
        if (alias.olderName == name) return alias.name;
    }
    return name;
}

CPString BetweenUnderscores(const CPString& name) { return FormatCPString("_%s_", name.view()); }

} // namespace

NativeXmlConfigOptionValueDictionary::NativeXmlConfigOptionValueDictionary()
    : m_valueIndex(m_dictionary.AddIndex(std::make_unique<NativeXmlConfigOptionValueEnumIndex>())),
      m_xmlConfigNameIndex(m_dictionary.AddIndex(
          std::make_unique<NativeXmlConfigOptionValueFeatureEnumAndXmlConfigNameIndex>())),
      m_printTicketNameIndex(m_dictionary.AddIndex(
          std::make_unique<NativeXmlConfigOptionValueFeatureEnumAndPrintTicketNameIndex>())) {
    const NativeXmlConfigFeatureDictionary& features = *NativeXmlConfigFeatureDictionary::Instance();
    for (const NativeXmlConfigOptionValueRow& row : GetNativeXmlConfigOptionValueRows()) {
        m_dictionary.AddEntry(
            std::make_unique<NativeXmlConfigOptionValueEntry>(NativeXmlConfigOptionValueEntry{
                row.xmlConfigName ? CPString(row.xmlConfigName) : BetweenUnderscores(row.printTicketName),
                row.printTicketName ? CPString(row.printTicketName) : BetweenUnderscores(row.xmlConfigName),
                row.feature, features.GetEntry(row.feature).featureEnumString, row.value,
                MakeValueEnumString(row.value)}));
    }
}

NativeXmlConfigOptionValueDictionary::~NativeXmlConfigOptionValueDictionary() = default;

NativeXmlConfigOptionValueDictionary* NativeXmlConfigOptionValueDictionary::Instance() {
    return SingletonBase::Instance();
}

const NativeXmlConfigOptionValueEntry*
NativeXmlConfigOptionValueDictionary::FindEntryByOlderName(tagFeatureEnum feature,
                                                           std::string_view name) const {
    return m_xmlConfigNameIndex.FindOption(feature, ResolveAlias(name));
}

const NativeXmlConfigOptionValueEntry&
NativeXmlConfigOptionValueDictionary::GetEntryByOlderName(tagFeatureEnum feature,
                                                          std::string_view name) const {
    return m_xmlConfigNameIndex.GetOptionRef(feature, ResolveAlias(name));
}
