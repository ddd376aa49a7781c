#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "Configuration/NativeXmlConfigurationFeature.h"
#include "Configuration/SourceDataIntegratorInterfaces.h"

#include <DataAccess/IQueuePropertyBagAccess.h>
#include <LowLevelFacilities/Strings/CPString.h>

#include <cstdint>
#include <map>
#include <vector>

/// An administrator's configuration in memory: its features by their names in the configuration, each one
/// that the dictionary knows; of several with one name the first. One thread at a time while it is changed.
class OV_FILTER_UTILITIES_API NativeXmlConfigurationFeatureSet {
public:
    using JobTypes = std::vector<DataModelIds::tagValueEnum>;

    /// Parses the queue's configuration, once; none is an empty set. The thread must be in a COM apartment.
    /// Does not throw for what the configuration holds: a fault is reported, and the features before it are
    /// the set. The integrator gets the text.
    explicit NativeXmlConfigurationFeatureSet(IQueuePropertyBagAccess& queue);
    NativeXmlConfigurationFeatureSet(SourceDataIntegratorInterfaces& integrator,
                                     IQueuePropertyBagAccess& queue);

    [[nodiscard]] std::uint64_t NumberOfFeatures() const noexcept { return m_features.size(); }
    /// In the order of the names; i must be less than NumberOfFeatures.
    [[nodiscard]] const NativeXmlConfigurationFeature& GetFeature(unsigned int i) const;
    /// Null if the set does not have it. Valid until the set changes.
    [[nodiscard]] const NativeXmlConfigurationFeature* TryGetFeature(const CPString& name) const;
    [[nodiscard]] const NativeXmlConfigurationFeature*
    TryGetFeature(DataModelIds::tagFeatureEnum feature) const;
    /// Whether it was there.
    bool RemoveIfPresent(DataModelIds::tagFeatureEnum feature);
    [[nodiscard]] NativeXmlConfigurationFeatureSet GetDocumentFeatures() const;
    [[nodiscard]] NativeXmlConfigurationFeatureSet GetDeviceFeatures() const;

    // Job types. The device's are given by the caller.

    /// Only by a feature that says no; one without setting says nothing.
    [[nodiscard]] bool IsJobTypeValueDisallowedByXmlConfig(DataModelIds::tagValueEnum jobType) const;
    /// Never "print with", which is not a type of jobs by itself.
    [[nodiscard]] bool
    IsJobTypeValueSupportedByPrinterPriorToConstraints(const JobTypes& ofDevice,
                                                       DataModelIds::tagValueEnum jobType) const;
    /// VAL_JOB_TYPE_NONE if there is none.
    [[nodiscard]] DataModelIds::tagValueEnum
    GetAllowableJobTypeFallbackValue(const JobTypes& ofDevice, DataModelIds::tagValueEnum current) const;
    /// The type that a job gets which asks for `current` (VAL_UNSPECIFIED if for none). `enforced` becomes
    /// the type that the configuration wants, VAL_UNSPECIFIED if it does not care. A value that the
    /// dictionary does not have wants nothing.
    DataModelIds::tagValueEnum GetNewJobTypeValueByEnforcingXmlConfig(const JobTypes& ofDevice,
                                                                      DataModelIds::tagValueEnum current,
                                                                      DataModelIds::tagValueEnum& enforced);

private:
    friend class NativeXmlConfigurationFilterUtilities;
    using Features = std::map<CPString, NativeXmlConfigurationFeature>;

    NativeXmlConfigurationFeatureSet();
    NativeXmlConfigurationFeatureSet(SourceDataIntegratorInterfaces* integrator,
                                     IQueuePropertyBagAccess& queue);

    [[nodiscard]] NativeXmlConfigurationFeatureSet
    GetFeaturesWithThisMode(NativeXmlConfigurationFeature::ModeEnum mode) const;
    [[nodiscard]] bool IsJobTypeValueAllowed(const JobTypes& ofDevice,
                                             DataModelIds::tagValueEnum jobType) const;
    /// 1 for a value that is no job type, or one that no feature guards.
    static DataModelIds::tagFeatureEnum
    GetConfigurationFeatureCorrespondingToJobTypeValue(DataModelIds::tagValueEnum jobType);
    /// For callers that show a fault to the user. Nothing here does.
    [[nodiscard]] bool ShouldPopMessageBoxOnException() const;

    [[nodiscard]] Features::const_iterator Find(DataModelIds::tagFeatureEnum feature) const;
    /// VAL_UNSPECIFIED where the set does not have the feature, or no value of it.
    [[nodiscard]] DataModelIds::tagValueEnum WantedValue(DataModelIds::tagFeatureEnum feature) const;

    Features m_features;
};
