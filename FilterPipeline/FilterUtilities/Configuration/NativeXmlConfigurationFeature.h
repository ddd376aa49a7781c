#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/NativeXmlConfigFeatureDictionary.h"
#include "DataModel/NativeXmlConfigOptionValueDictionary.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <Xml/XmlDomNode.h>

#include <cstdint>
#include <optional>
#include <vector>

/// What an administrator's configuration says of one feature: a value, and how firmly it applies. Questions
/// that need the feature's row in the dictionary throw CPExceptionUnknownKeyRequest where it has none;
/// members of a feature set all have one. Does not change, so any thread may ask.
class OV_FILTER_UTILITIES_API NativeXmlConfigurationFeature {
public:
    /// How firmly: a value to start from, one that the job may replace by its equal, or one for every job.
    /// NoBehavior is that of a feature without setting, and enforces nothing.
    enum BehaviorEnum : std::int32_t {
        NoBehavior = 0,
        Default = 1,
        EnforcedDefault = 2,
        EnforcedSetting = 3
    };
    using ModeEnum = NativeXmlConfigFeatureEntry::ModeEnum;
    using SyntaxEnum = NativeXmlConfigFeatureEntry::SyntaxEnum;

    /// Reads the <Feature> element of that name. Throws CPExceptionXMLConfigurationFileParseFailed for one
    /// that is not as it should be, and CPComException.
    NativeXmlConfigurationFeature(XmlDomNode& element, const CPString& name);

    [[nodiscard]] const CPString& GetXmlConfigFeature() const noexcept { return m_xmlConfigFeature; }
    [[nodiscard]] const CPString& GetXmlConfigValue() const noexcept { return m_xmlConfigValue; }
    /// As it stands in the configuration; "EnforcedSetting" where it has none.
    [[nodiscard]] const CPString& GetBehaviorString() const noexcept { return m_behaviorString; }
    [[nodiscard]] BehaviorEnum GetBehaviorEnum() const noexcept { return m_behavior; }

    [[nodiscard]] bool IsSupportedFeature() const;
    [[nodiscard]] ModeEnum GetModeEnum() const;
    [[nodiscard]] SyntaxEnum GetSyntaxEnum() const;
    [[nodiscard]] CPString GetModeString() const;
    [[nodiscard]] CPString GetSyntaxString() const;
    [[nodiscard]] DataModelIds::tagFeatureEnum GetFeatureEnum() const;
    [[nodiscard]] const CPString& GetFeatureEnumString() const;
    [[nodiscard]] const CPString& GetCpssFeatName() const;
    /// Of an option. Both throw for a value that has no row, too.
    [[nodiscard]] DataModelIds::tagValueEnum GetValueEnum() const;
    [[nodiscard]] const CPString& GetValueEnumString() const;
    /// The same; nothing where feature or value has no row.
    [[nodiscard]] std::optional<DataModelIds::tagValueEnum> TryGetValueEnum() const;
    /// Of the value's words for yes, in upper or lower case; anything else is no.
    [[nodiscard]] bool GetBooleanValue() const;
    [[nodiscard]] bool HasParentFeatures() const;
    [[nodiscard]] const std::vector<DataModelIds::tagFeatureEnum>& GetParentFeatures() const;
    /// In one line. The value of an option that has no row stands as it is.
    [[nodiscard]] CPString GetDebugDisplayString() const;

private:
    static BehaviorEnum ConvertBehaviorString(const CPString& behavior);

    [[nodiscard]] const NativeXmlConfigFeatureEntry& GetEntry() const;
    [[nodiscard]] const NativeXmlConfigOptionValueEntry* FindValueEntry() const;
    [[nodiscard]] CPString GetValueText() const;

    CPString m_xmlConfigFeature;
    CPString m_xmlConfigValue;
    CPString m_behaviorString;
    BehaviorEnum m_behavior = NoBehavior;
    const NativeXmlConfigFeatureDictionary* m_features;
    const NativeXmlConfigOptionValueDictionary* m_values;
};
