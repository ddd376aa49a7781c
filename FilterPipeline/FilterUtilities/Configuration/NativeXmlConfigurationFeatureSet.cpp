#include "Configuration/NativeXmlConfigurationFeatureSet.h"

#include "ComSupport/FilterUtilitiesLibraryHost.h"
#include "Configuration/JobTypeConfiguration.h"
#include "Configuration/XmlConfigurationReading.h"

#include <LowLevelFacilities/Failures/DebugUtilities.h>

#include <algorithm>
#include <iterator>

using namespace DataModelIds;

namespace {

constexpr tagFeatureEnum noFeature{1};

XmlConfigurationReading::Features ReadFeatures(SourceDataIntegratorInterfaces* integrator,
                                               const IQueuePropertyBagAccess& queue) {
    CPString xml;
    queue.GetOrvelQueuePrePostConfiguration(xml);
    XmlConfigurationReading reading(xml, integrator);
    if (const auto& fault = reading.GetFault()) {
        DebugUtilities::reportErrorForLowLevelUtilities(fault->isInContent ? fault->message.utf8Bytes()
                                                                           : "Unknown exception occurred",
                                                        "Error Parsing XML Configuration Data");
    }
    return reading.TakeFeatures();
}

bool Has(const std::vector<tagValueEnum>& values, tagValueEnum value) {
    return std::ranges::find(values, value) != values.end();
}

// The wanted type, or its twin on a device that has only that.
tagValueEnum OfDevice(const std::vector<tagValueEnum>& ofDevice, tagValueEnum wanted) {
    for (const JobTypeConfiguration::Twin& twin : JobTypeConfiguration::twins) {
        if (twin.wanted == wanted && !Has(ofDevice, wanted) && Has(ofDevice, twin.instead))
            return twin.instead;
    }
    return wanted;
}

} // namespace

NativeXmlConfigurationFeatureSet::NativeXmlConfigurationFeatureSet() = default;

NativeXmlConfigurationFeatureSet::NativeXmlConfigurationFeatureSet(IQueuePropertyBagAccess& queue)
    : NativeXmlConfigurationFeatureSet(nullptr, queue) {}

NativeXmlConfigurationFeatureSet::NativeXmlConfigurationFeatureSet(SourceDataIntegratorInterfaces& integrator,
                                                                   IQueuePropertyBagAccess& queue)
    : NativeXmlConfigurationFeatureSet(&integrator, queue) {}

NativeXmlConfigurationFeatureSet::NativeXmlConfigurationFeatureSet(SourceDataIntegratorInterfaces* integrator,
                                                                   IQueuePropertyBagAccess& queue)
    : m_features(ReadFeatures(integrator, queue)) {}

const NativeXmlConfigurationFeature& NativeXmlConfigurationFeatureSet::GetFeature(unsigned int i) const {
    return std::next(m_features.begin(), static_cast<std::ptrdiff_t>(i))->second;
}

const NativeXmlConfigurationFeature*
NativeXmlConfigurationFeatureSet::TryGetFeature(const CPString& name) const {
    const auto found = m_features.find(name);
    return found == m_features.end() ? nullptr : &found->second;
}

const NativeXmlConfigurationFeature*
NativeXmlConfigurationFeatureSet::TryGetFeature(tagFeatureEnum feature) const {
    const auto found = Find(feature);
    return found == m_features.end() ? nullptr : &found->second;
}

bool NativeXmlConfigurationFeatureSet::RemoveIfPresent(tagFeatureEnum feature) {
    const auto found = Find(feature);
    if (found == m_features.end()) return false;
    m_features.erase(found);
    return true;
}

NativeXmlConfigurationFeatureSet NativeXmlConfigurationFeatureSet::GetDocumentFeatures() const {
    return GetFeaturesWithThisMode(NativeXmlConfigFeatureEntry::DOCUMENT);
}

NativeXmlConfigurationFeatureSet NativeXmlConfigurationFeatureSet::GetDeviceFeatures() const {
    return GetFeaturesWithThisMode(NativeXmlConfigFeatureEntry::DEVICE);
}

bool NativeXmlConfigurationFeatureSet::IsJobTypeValueDisallowedByXmlConfig(tagValueEnum jobType) const {
    const auto* const guard = TryGetFeature(GetConfigurationFeatureCorrespondingToJobTypeValue(jobType));
    if (guard == nullptr || guard->GetBehaviorEnum() == NativeXmlConfigurationFeature::NoBehavior)
        return false;
    return guard->GetSyntaxEnum() == NativeXmlConfigFeatureEntry::BOOLEAN && !guard->GetBooleanValue();
}

bool NativeXmlConfigurationFeatureSet::IsJobTypeValueSupportedByPrinterPriorToConstraints(
    const JobTypes& ofDevice, tagValueEnum jobType) const {
    return jobType != VAL_JOB_TYPE_PRINT_WITH && Has(ofDevice, jobType);
}

tagValueEnum NativeXmlConfigurationFeatureSet::GetAllowableJobTypeFallbackValue(const JobTypes& ofDevice,
                                                                                tagValueEnum current) const {
    for (const tagValueEnum fallback : JobTypeConfiguration::fallbacks) {
        if (fallback != current && IsJobTypeValueAllowed(ofDevice, fallback)) return fallback;
    }
    return VAL_JOB_TYPE_NONE;
}

tagValueEnum NativeXmlConfigurationFeatureSet::GetNewJobTypeValueByEnforcingXmlConfig(
    const JobTypes& ofDevice, tagValueEnum current, tagValueEnum& enforced) {
    enforced = VAL_UNSPECIFIED;
    if (WantedValue(FEAT_DEV_SECURE_PRINT_ONLY) == VAL_SECURE_PRINT_ONLY_ENABLED) {
        enforced = VAL_JOB_TYPE_SECURE_PRINT;
        return enforced;
    }
    if (const tagValueEnum wanted = WantedValue(FEAT_JOB_TYPE); wanted != VAL_UNSPECIFIED) {
        enforced = OfDevice(ofDevice, wanted);
        current = enforced;
    }
    if (current == VAL_UNSPECIFIED) {
        enforced = GetAllowableJobTypeFallbackValue(ofDevice, current);
        return enforced;
    }
    return IsJobTypeValueAllowed(ofDevice, current) ? current
                                                    : GetAllowableJobTypeFallbackValue(ofDevice, current);
}

NativeXmlConfigurationFeatureSet NativeXmlConfigurationFeatureSet::GetFeaturesWithThisMode(
    NativeXmlConfigurationFeature::ModeEnum mode) const {
    NativeXmlConfigurationFeatureSet result;
    std::ranges::copy_if(m_features, std::inserter(result.m_features, result.m_features.end()),
                         [mode](const auto& entry) { return entry.second.GetModeEnum() == mode; });
    return result;
}

bool NativeXmlConfigurationFeatureSet::IsJobTypeValueAllowed(const JobTypes& ofDevice,
                                                             tagValueEnum jobType) const {
    if (jobType == VAL_JOB_TYPE_FAX_DEPRECATED || jobType == VAL_JOB_TYPE_PRINT_WITH) return false;
    return !IsJobTypeValueDisallowedByXmlConfig(jobType) && Has(ofDevice, jobType);
}

tagFeatureEnum
NativeXmlConfigurationFeatureSet::GetConfigurationFeatureCorrespondingToJobTypeValue(tagValueEnum jobType) {
    const auto* const found =
        std::ranges::find(JobTypeConfiguration::guards, jobType, &JobTypeConfiguration::Guard::jobType);
    return found == std::end(JobTypeConfiguration::guards) ? noFeature : found->feature;
}

bool NativeXmlConfigurationFeatureSet::ShouldPopMessageBoxOnException() const {
    return FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException();
}

NativeXmlConfigurationFeatureSet::Features::const_iterator
NativeXmlConfigurationFeatureSet::Find(tagFeatureEnum feature) const {
    return std::ranges::find_if(
        m_features, [feature](const auto& entry) { return entry.second.GetFeatureEnum() == feature; });
}

tagValueEnum NativeXmlConfigurationFeatureSet::WantedValue(tagFeatureEnum feature) const {
    const NativeXmlConfigurationFeature* const wanted = TryGetFeature(feature);
    return wanted == nullptr ? VAL_UNSPECIFIED : wanted->TryGetValueEnum().value_or(VAL_UNSPECIFIED);
}
