#include "DeviceDescription/SimpleOcapParser.h"

#include "DeviceDescription/DeviceCapabilitiesReader.h"
#include "DeviceDescription/DeviceFeature.h"

namespace {

const DeviceFeature* find(const DeviceFeatureList& features, const CPString& name, bool alsoInCollections) {
    return alsoInCollections ? features.FindAnywhere(name.view()) : features.Find(name.view());
}

} // namespace

SimpleOcapParser::SimpleOcapParser(const CPString& xml)
    : m_features(DeviceCapabilitiesReader::Read(xml.view())) {}

SimpleOcapParser::~SimpleOcapParser() = default;

bool SimpleOcapParser::IsCpssFeatureSupported(const CPString& feature) const {
    return m_features->Find(feature.view()) != nullptr;
}

bool SimpleOcapParser::IsCpssFeatureSupported(const CPString& parent, const CPString& feature) const {
    const DeviceFeatureList* const members = m_features->FindMembers(parent.view());
    return members != nullptr && members->Find(feature.view()) != nullptr;
}

bool SimpleOcapParser::IsCpssFeatureSupported(const CPString& grandparent, const CPString& parent,
                                              const CPString& feature) const {
    const DeviceFeatureList* members = m_features->FindMembers(grandparent.view());
    if (members != nullptr) members = members->FindMembers(parent.view());
    return members != nullptr && members->Find(feature.view()) != nullptr;
}

bool SimpleOcapParser::IsCpssFeatureRequired(const CPString& feature) const {
    const DeviceFeature* const found = m_features->Find(feature.view());
    return found != nullptr && found->isRequired;
}

bool SimpleOcapParser::IsCpssFeatureOutputInOpif(const CPString& feature) const {
    const DeviceFeature* const found = m_features->Find(feature.view());
    return found != nullptr && found->isOutputInOpif;
}

CPString SimpleOcapParser::GetFactoryDefaultValueAsString(const CPString& feature, bool& found,
                                                          bool alsoInCollections) const {
    const DeviceFeature* const asked = find(*m_features, feature, alsoInCollections);
    found = asked != nullptr && asked->hasDefault && asked->isDefaultSpecified;
    return asked == nullptr ? CPString() : asked->factoryDefault;
}

int SimpleOcapParser::GetFactoryDefaultValueAsInteger(const CPString& feature, bool& found,
                                                      bool alsoInCollections) const {
    const DeviceFeature* const asked = find(*m_features, feature, alsoInCollections);
    const bool isInteger = asked != nullptr && asked->kind == DeviceFeature::Kind::Integer;
    found = isInteger && asked->hasDefault && asked->isDefaultSpecified;
    return isInteger ? asked->integerDefault : 0;
}

std::vector<CPString> SimpleOcapParser::GetSupportedFeatureOrValuesFromOcap(const CPString& feature,
                                                                            bool wantSubFeatures,
                                                                            CXString* factoryDefault) const {
    if (factoryDefault != nullptr) factoryDefault->Empty();
    const DeviceFeature* const found = m_features->Find(feature.view());
    if (found == nullptr) return {};
    if (factoryDefault != nullptr) *factoryDefault = CXString(found->factoryDefault);
    if (!wantSubFeatures) return found->values;
    std::vector<CPString> names;
    if (found->members != nullptr)
        for (const auto& member : found->members->InOrder())
            names.push_back(member->name);
    return names;
}

std::vector<CXString> SimpleOcapParser::GetSupportedInstallableOptionFeaturesFromOcap() const {
    std::vector<CXString> names;
    for (const auto& feature : m_features->InOrder())
        if (feature->isInstallable) names.emplace_back(feature->name);
    return names;
}

bool SimpleOcapParser::GetTextLengthRange(const CPString& feature, unsigned& shortest,
                                          unsigned& longest) const {
    const DeviceFeature* const found = m_features->Find(feature.view());
    if (found == nullptr || !found->hasLengthRange) return false;
    shortest = found->shortest;
    longest = found->longest;
    return true;
}
