#pragma once

#include "Commands/LevelMerge.h"
#include "Report/FilterWords.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <FeatureAccess/JobSettings.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// Asks the first question, which shows whether the driver's settings are damaged. Throws InputError, with
/// words, about the file that they came from.
void CheckAttributeBytes(const PrintTicketAttributeBytesReaderWriter& attributeBytes,
                         const std::string& input);

/// Throws OvPlatform::QueueFolderError, with words, where the queue's device capabilities are damaged.
void CheckDevice(const OrvelDriverPropertyBag& driver, const OvPlatform::QueueFolder& queue);

/// A level of a job, merged on a queue, with the queue's device: what a filter of the driver has of both. The
/// thread must be in a COM apartment, and stays the same.
class JobAtDevice {
public:
    /// Makes the queue known to the spooler, and warns as MergeLevel does. Throws InputError and
    /// OvPlatform::QueueFolderError, with words, where a ticket, its settings or the device's description are
    /// to blame, else HostError.
    JobAtDevice(const std::string& job, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                const LevelParts& parts, const Warner& warn);
    JobAtDevice(const JobAtDevice&) = delete;
    JobAtDevice& operator=(const JobAtDevice&) = delete;

    JobSettings& Settings() { return *m_settings; }
    /// The merge of the level, to go on with to levels below it: the settings stay those of the level.
    LevelMerge& Merge() { return *m_merge; }
    /// What questions have got over since the merge, in words.
    std::vector<std::string> Troubles() const { return m_words->Heard(); }
    OrvelDriverPropertyBag& Driver() { return *m_driver; }
    const NativeComPrinterPropertyBagAccess& Properties() const { return *m_access; }

private:
    PrintTicketManager m_manager;
    std::optional<LevelMerge> m_merge;
    std::optional<FilterWords> m_words;
    CComPtr<IPrinterPropertyBag> m_properties;
    std::unique_ptr<NativeComPrinterPropertyBagAccess> m_access;
    std::unique_ptr<OrvelDriverPropertyBag> m_driver;
    std::unique_ptr<JobSettings> m_settings;
};

} // namespace OvPipeline
