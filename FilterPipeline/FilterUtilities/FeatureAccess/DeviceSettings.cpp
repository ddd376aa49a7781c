#include "FeatureAccess/DeviceSettings.h"

#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"

#include <DeviceDescription/SimpleOcapParser.h>

using namespace DataModelIds;

DeviceSettings::DeviceSettings(const SimpleOcapParser* capabilities)
    : m_capabilities(capabilities), m_options(NativeXmlConfigCpssOptionValueDictionary::Instance()) {}

bool DeviceSettings::IsSupported(const CPString& feature) const {
    return m_capabilities != nullptr && m_capabilities->IsCpssFeatureSupported(feature);
}

bool DeviceSettings::IsSupported(const CPString& collection, const CPString& feature) const {
    return m_capabilities != nullptr && m_capabilities->IsCpssFeatureSupported(collection, feature);
}

bool DeviceSettings::IsSupported(const CPString& outerCollection, const CPString& collection,
                                 const CPString& feature) const {
    return m_capabilities != nullptr &&
           m_capabilities->IsCpssFeatureSupported(outerCollection, collection, feature);
}

bool DeviceSettings::IsRequired(const CPString& feature) const {
    return m_capabilities != nullptr && m_capabilities->IsCpssFeatureRequired(feature);
}

bool DeviceSettings::Ask(const WantedFeature& wanted, FeatureAnswer<tagValueEnum>& answer) const {
    if (m_capabilities == nullptr) return false;
    bool isSpecified = false;
    const CPString name =
        m_capabilities->GetFactoryDefaultValueAsString(wanted.DeviceName(), isSpecified, false);
    if (!m_options->IsCpssNamePresent(wanted.Feature(), name.view())) return false;
    answer = {m_options->GetEntryByCpssName(wanted.Feature(), name.view()).value, isSpecified,
              FeatureValueSource::FactoryDefault};
    return true;
}

bool DeviceSettings::Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const {
    if (m_capabilities == nullptr) return false;
    answer.value =
        m_capabilities->GetFactoryDefaultValueAsInteger(wanted.DeviceName(), answer.isSpecified, false);
    if (!answer.HasValue()) return false;
    answer.source = FeatureValueSource::FactoryDefault;
    return true;
}

bool DeviceSettings::Ask(const WantedFeature& wanted, FeatureAnswer<Dimension>& answer) const {
    FeatureAnswer<int> length;
    const bool isThere = Ask(wanted, length);
    answer.value.SetValue(length.value, Dimension::HundredthOfMillimeter);
    answer.isSpecified = length.isSpecified;
    answer.source = length.source;
    return isThere;
}

std::vector<tagValueEnum> DeviceSettings::GetSupportedValues(const WantedFeature& wanted,
                                                             bool wantSubFeatures) const {
    std::vector<tagValueEnum> values;
    if (m_capabilities == nullptr) return values;
    for (const CPString& name :
         m_capabilities->GetSupportedFeatureOrValuesFromOcap(wanted.DeviceName(), wantSubFeatures)) {
        if (!m_options->IsCpssNamePresent(wanted.Feature(), name.view())) continue;
        const tagValueEnum value = m_options->GetEntryByCpssName(wanted.Feature(), name.view()).value;
        if (value != VAL_UNSPECIFIED) values.push_back(value);
    }
    return values;
}
