#pragma once

#include <Configuration/NativeXmlConfigurationFeatureSet.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>
#include <Spooler/QueueFolder.h>

#include <atlcomcli.h>

namespace OvPipeline {

/// The values as a bag of the platform, for reading. Throws HostError.
CComPtr<IPrinterPropertyBag> BagOf(const OvPlatform::QueueValues& values);

/// A queue's settings by name, as the driver reads them. The thread must be in a COM apartment, and the
/// folder must live as long.
class QueueSettings {
public:
    explicit QueueSettings(const OvPlatform::QueueFolder& queue);
    QueueSettings(const QueueSettings&) = delete;
    QueueSettings& operator=(const QueueSettings&) = delete;

    /// As the bag has them.
    const NativeComPrinterPropertyBagAccess& Properties() const { return m_access; }
    NativeComQueuePropertyBagAccess& Access() { return m_settings; }

private:
    CComPtr<IPrinterPropertyBag> m_bag;
    NativeComPrinterPropertyBagAccess m_access;
    NativeComQueuePropertyBagAccess m_settings;
};

/// The text of the administrator's configuration; empty if there is none. Throws std::runtime_error where the
/// queue's settings cannot be read, which hides whether it has one.
CPString ReadConfigurationText(const OvPlatform::QueueFolder& queue);

/// The configuration itself, as filters have it. A fault in it is reported, as filters report it. The thread
/// must be in a COM apartment.
NativeXmlConfigurationFeatureSet ReadConfiguration(const OvPlatform::QueueFolder& queue);

} // namespace OvPipeline
