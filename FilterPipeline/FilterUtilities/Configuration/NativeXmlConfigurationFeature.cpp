#include "Configuration/NativeXmlConfigurationFeature.h"

#include "Configuration/ConfigurationElements.h"

#include <LowLevelFacilities/Failures/CPExceptionXMLConfigurationFileParseFailed.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <string>

using DataModelIds::tagFeatureEnum;
using DataModelIds::tagValueEnum;

namespace {

[[noreturn]] void Refuse(const std::string& reason) {
    ThrowFailure<CPExceptionXMLConfigurationFileParseFailed>([&reason] { return reason; });
}

} // namespace

NativeXmlConfigurationFeature::NativeXmlConfigurationFeature(XmlDomNode& element, const CPString& name)
    : m_xmlConfigFeature(name), m_features(NativeXmlConfigFeatureDictionary::Instance()),
      m_values(NativeXmlConfigOptionValueDictionary::Instance()) {
    const OperationScope operation("NativeXmlConfigurationFeature::NativeXmlConfigurationFeature");
    const XmlDomNode::Pointer setting = ConfigurationElements::First(element);
    if (!setting) Refuse("Missing <Setting> element.");
    const CXString settingName = setting->GetNodeName();
    if (ConfigurationElements::IsPassedOver(settingName)) return;
    if (!(settingName == L"Setting"))
        Refuse(FormatStdString("Expected a <Setting> element but found <%s>", settingName));
    CXString text;
    if (!setting->GetAttribute(L"Name", text))
        Refuse("Encountered a <Setting> element without a Name attribute");
    m_xmlConfigValue = CPString(text);
    m_behaviorString =
        setting->GetAttribute(L"Behavior", text) ? CPString(text) : CPString("EnforcedSetting");
    m_behavior = ConvertBehaviorString(m_behaviorString);
}

NativeXmlConfigurationFeature::BehaviorEnum
NativeXmlConfigurationFeature::ConvertBehaviorString(const CPString& behavior) {
    if (behavior == "Default") return Default;
    if (behavior == "EnforcedDefault") return EnforcedDefault;
    if (behavior == "EnforcedSetting" || behavior.isEmpty()) return EnforcedSetting;
    Refuse(FormatStdString("Invalid Behavior attribute value '%s'", behavior));
}

bool NativeXmlConfigurationFeature::IsSupportedFeature() const {
    return m_features->IsXmlConfigNamePresent(m_xmlConfigFeature.view());
}

NativeXmlConfigurationFeature::ModeEnum NativeXmlConfigurationFeature::GetModeEnum() const {
    return GetEntry().mode;
}

NativeXmlConfigurationFeature::SyntaxEnum NativeXmlConfigurationFeature::GetSyntaxEnum() const {
    return GetEntry().syntax;
}

CPString NativeXmlConfigurationFeature::GetModeString() const {
    switch (GetModeEnum()) {
    case NativeXmlConfigFeatureEntry::DEVICE:
        return "DEVICE";
    case NativeXmlConfigFeatureEntry::DOCUMENT:
        return "DOCUMENT";
    }
    return "UNKNOWN";
}

CPString NativeXmlConfigurationFeature::GetSyntaxString() const {
    switch (GetSyntaxEnum()) {
    case NativeXmlConfigFeatureEntry::BOOLEAN:
        return "BOOLEAN";
    case NativeXmlConfigFeatureEntry::OPTION:
        return "OPTION";
    case NativeXmlConfigFeatureEntry::STRING:
        return "STRING";
    case NativeXmlConfigFeatureEntry::INTEGER:
        return "INTEGER";
    case NativeXmlConfigFeatureEntry::PARENT:
        return "PARENT";
    }
    return "UNKNOWN";
}

tagFeatureEnum NativeXmlConfigurationFeature::GetFeatureEnum() const { return GetEntry().feature; }

const CPString& NativeXmlConfigurationFeature::GetFeatureEnumString() const {
    return GetEntry().featureEnumString;
}

const CPString& NativeXmlConfigurationFeature::GetCpssFeatName() const { return GetEntry().cpssFeatureName; }

tagValueEnum NativeXmlConfigurationFeature::GetValueEnum() const {
    return m_values->GetEntryByXmlConfigName(GetFeatureEnum(), m_xmlConfigValue.view()).value;
}

const CPString& NativeXmlConfigurationFeature::GetValueEnumString() const {
    return m_values->GetEntryByXmlConfigName(GetFeatureEnum(), m_xmlConfigValue.view()).valueEnumString;
}

std::optional<tagValueEnum> NativeXmlConfigurationFeature::TryGetValueEnum() const {
    if (!IsSupportedFeature()) return std::nullopt;
    const NativeXmlConfigOptionValueEntry* const entry = FindValueEntry();
    return entry == nullptr ? std::nullopt : std::optional(entry->value);
}

bool NativeXmlConfigurationFeature::GetBooleanValue() const {
    CPString value = m_xmlConfigValue;
    value.toLowerAscii();
    return value == "enabled" || value == "true" || value == "on" || value == "t";
}

bool NativeXmlConfigurationFeature::HasParentFeatures() const { return !GetParentFeatures().empty(); }

const std::vector<tagFeatureEnum>& NativeXmlConfigurationFeature::GetParentFeatures() const {
    return GetEntry().parentFeatures;
}

CPString NativeXmlConfigurationFeature::GetDebugDisplayString() const {
    CPString parents;
    if (HasParentFeatures()) {
        parents = " (parents:";
        for (const tagFeatureEnum parent : GetParentFeatures())
            parents += FormatCPString(" %d", static_cast<int>(parent));
        parents += ")";
    }
    return FormatCPString("%s: %s (%s) is %s for %s/%s/%s%s", GetModeString(), GetValueText(),
                          GetSyntaxString(), m_behaviorString, m_xmlConfigFeature, GetFeatureEnumString(),
                          GetCpssFeatName(), parents);
}

const NativeXmlConfigFeatureEntry& NativeXmlConfigurationFeature::GetEntry() const {
    return m_features->GetEntryByXmlConfigName(m_xmlConfigFeature.view());
}

const NativeXmlConfigOptionValueEntry* NativeXmlConfigurationFeature::FindValueEntry() const {
    return m_values->FindEntryByXmlConfigName(GetFeatureEnum(), m_xmlConfigValue.view());
}

CPString NativeXmlConfigurationFeature::GetValueText() const {
    const SyntaxEnum syntax = GetSyntaxEnum();
    if (syntax == NativeXmlConfigFeatureEntry::BOOLEAN) return GetBooleanValue() ? "true" : "false";
    if (syntax == NativeXmlConfigFeatureEntry::PARENT) return "<parent>";
    const NativeXmlConfigOptionValueEntry* const option =
        syntax == NativeXmlConfigFeatureEntry::OPTION ? FindValueEntry() : nullptr;
    return option != nullptr ? option->valueEnumString : m_xmlConfigValue;
}
