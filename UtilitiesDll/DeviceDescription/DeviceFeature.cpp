#include "DeviceDescription/DeviceFeature.h"

DeviceFeature::DeviceFeature() = default;

DeviceFeature::~DeviceFeature() = default;

void DeviceFeatureList::Add(std::unique_ptr<DeviceFeature> feature) {
    m_features.push_back(std::move(feature));
    const DeviceFeature* const added = m_features.back().get();
    m_byName.emplace(added->name.view(), added);
}

const DeviceFeature* DeviceFeatureList::Find(std::string_view name) const {
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second;
}

const DeviceFeatureList* DeviceFeatureList::FindMembers(std::string_view name) const {
    const DeviceFeature* const collection = Find(name);
    return collection == nullptr ? nullptr : collection->members.get();
}

const DeviceFeature* DeviceFeatureList::FindAnywhere(std::string_view name) const {
    if (const DeviceFeature* const feature = Find(name)) return feature;
    for (const auto& feature : m_features) {
        if (feature->members == nullptr) continue;
        if (const DeviceFeature* const member = feature->members->FindAnywhere(name)) return member;
    }
    return nullptr;
}
