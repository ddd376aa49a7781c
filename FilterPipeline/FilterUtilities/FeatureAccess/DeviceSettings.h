#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/FeatureAnswer.h"
#include "FeatureAccess/WantedFeature.h"

#include <vector>

class NativeXmlConfigCpssOptionValueDictionary;
class SimpleOcapParser;

/// What the device has, wants and does by itself, by feature. A view of the device's capabilities, which stay
/// the caller's; without them, the device has nothing.
class OV_FILTER_UTILITIES_API DeviceSettings {
public:
    explicit DeviceSettings(const SimpleOcapParser* capabilities);

    // By CPSS names; an empty one is that of no feature.
    [[nodiscard]] bool IsSupported(const CPString& feature) const;
    [[nodiscard]] bool IsSupported(const CPString& collection, const CPString& feature) const;
    [[nodiscard]] bool IsSupported(const CPString& outerCollection, const CPString& collection,
                                   const CPString& feature) const;
    /// The device needs a value for it.
    [[nodiscard]] bool IsRequired(const CPString& feature) const;

    // The factory default; whether the device has one. Only those that are specified count as specified. An
    // option's is a word of the dictionaries, whatever words are wanted.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<DataModelIds::tagValueEnum>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const;
    /// The device's integer, in hundredths of a millimeter.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<Dimension>& answer) const;

    /// Those of the device's values of a feature (of its sub-features, if the flag says so) that the
    /// dictionary knows as the feature's options, in the device's order.
    [[nodiscard]] std::vector<DataModelIds::tagValueEnum> GetSupportedValues(const WantedFeature& wanted,
                                                                             bool wantSubFeatures) const;

private:
    const SimpleOcapParser* m_capabilities;
    const NativeXmlConfigCpssOptionValueDictionary* m_options;
};
