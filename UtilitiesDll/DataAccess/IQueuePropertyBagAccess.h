#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <utility>
#include <vector>

/// The stored state of a print queue, by name. An absent item reads as empty. The order of the operations is
/// part of the interface.
class IQueuePropertyBagAccess {
public:
    /// Pairs of a feature's CPSS name and its value's.
    using InstallableOptions = std::vector<std::pair<CXString, CXString>>;

    virtual ~IQueuePropertyBagAccess() = default;
    virtual void GetPrinterName(CXString& out) const = 0;
    /// False if an option of the device has no stored value; the others are in `out` nevertheless.
    virtual bool GetInstallableOptions(InstallableOptions& out) const = 0;
    virtual void SetInstallableOptions(const InstallableOptions& options) = 0;
    virtual void GetOrvelDeviceSettings(CPString& out) const = 0;
    virtual void SetOrvelDeviceSettings(const CPString& xml) = 0;
    virtual void GetOrvelQueuePrePostConfiguration(CPString& out) const = 0;
    virtual void SetRawIpOrHostNameAndDoSimpleCleanupOfStaleData(const CXString& name) = 0;
    virtual void SetRawIpOrHostNameManuallyOverridden(bool overridden) = 0;
    virtual void SetFullyQualifiedDomainName(const CXString& name) = 0;
    virtual void GetRawIpOrHostName(CXString& out) = 0;
    virtual void GetFullyQualifiedDomainName(CXString& out) = 0;
    virtual void GetDeviceSerialNumber(CXString& out) = 0;
    virtual void GetAutoConfigRegData(CXString& out) = 0;
    virtual void GetJobAccountingRequiredFromUiValue(CXString& out) = 0;
    virtual void GetJobAccountingRequiredFromObdsValue(CXString& out) = 0;
    virtual void SetDeviceSerialNumber(const CXString& number) = 0;
    virtual void SetSnmpReadCommunityName(const CXString& name) = 0;
    virtual void SetSnmpReadCommunityNameManuallyOverridden(bool overridden) = 0;
    virtual void SetSnmpWriteCommunityName(const CXString& name) = 0;
    virtual void SetJobAccountingRequiredFromUiValue(const CXString& value) = 0;
    /// Spelt so.
    virtual void SetobAccountingRequiredFromObdsValue(const CXString& value) = 0;
    virtual void GetPrintServerResidentTtfFonts(CXString& out) const = 0;
    virtual void SetPrintServerResidentTtfFonts(const CXString& fonts) = 0;
};
