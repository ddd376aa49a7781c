#pragma once

#include "Support/DeviceBag.h"

#include <Configuration/NativeXmlConfigurationFeatureSet.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>

#include <string>

struct HeldDeviceBag {
    DeviceBag deviceBag;
};

/// A queue with that configuration and nothing else.
class ConfiguredQueue final : private HeldDeviceBag, public NativeComQueuePropertyBagAccess {
public:
    explicit ConfiguredQueue(const std::string& configuration)
        : NativeComQueuePropertyBagAccess(L"", {}, deviceBag), m_configuration(configuration.c_str()) {}
    void GetOrvelQueuePrePostConfiguration(CPString& out) const override { out = m_configuration; }

private:
    CPString m_configuration;
};

/// The set of a configuration with these children. The thread must be in an apartment.
inline NativeXmlConfigurationFeatureSet ConfiguredFeatures(const std::string& children) {
    ConfiguredQueue queue("<c>" + children + "</c>");
    return NativeXmlConfigurationFeatureSet(queue);
}

/// One feature of a configuration; the behaviour is left out where it is null.
inline std::string ConfiguredFeature(const std::string& name, const std::string& value,
                                     const char* behavior = nullptr) {
    return "<Feature Name=\"" + name + "\"><Setting Name=\"" + value + "\"" +
           (behavior ? std::string(" Behavior=\"") + behavior + "\"" : std::string()) + "/></Feature>";
}
