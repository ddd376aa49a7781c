#pragma once

#include <Configuration/NativeXmlConfigurationFeatureSet.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>
#include <Spooler/QueueFolder.h>

#include <atlcomcli.h>

#include <string>

namespace OvPipeline {

/// A queue's settings by name, as the driver reads them. The thread must be in a COM apartment, and the
/// folder must live as long.
class QueueSettings {
public:
    explicit QueueSettings(const OvPlatform::QueueFolder& queue);
    QueueSettings(const QueueSettings&) = delete;
    QueueSettings& operator=(const QueueSettings&) = delete;

    NativeComQueuePropertyBagAccess& Access() { return m_settings; }

private:
    CComPtr<IPrinterPropertyBag> m_bag;
    NativeComPrinterPropertyBagAccess m_access;
    NativeComQueuePropertyBagAccess m_settings;
};

/// The text of the administrator's configuration; empty if there is none. Throws std::runtime_error where the
/// queue's settings cannot be read, which hides whether it has one.
CPString ReadConfigurationText(const OvPlatform::QueueFolder& queue);

/// The configuration itself, as filters have it, and what is wrong with it in words; empty where nothing is.
struct QueueConfiguration {
    /// The thread must be in a COM apartment.
    explicit QueueConfiguration(const OvPlatform::QueueFolder& queue);

    std::string trouble;
    NativeXmlConfigurationFeatureSet features;
};

} // namespace OvPipeline
