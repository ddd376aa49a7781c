#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <DataAccess/IPrinterPropertyBagAccess.h>
#include <DataAccess/IQueuePropertyBagAccess.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <printerextension.h>

#include <vector>

/// The stored state of a print queue, out of its property bag. Installable options are properties of their
/// own, "Config:" and the feature's name in the spelling of the bag; all else stands in one XML document in
/// the text "OrvelQueueProperties", which each call reads anew. What is absent is empty; so is what cannot be
/// read, which is reported. A queue without that document is the normal case, and no fault. On one thread at
/// a time, which must be in a COM apartment.
class OV_FILTER_UTILITIES_API NativeComQueuePropertyBagAccess : public IQueuePropertyBagAccess {
public:
    /// The features are the device's installable options by their CPSS names. The bag has to outlive this
    /// object.
    NativeComQueuePropertyBagAccess(const CXString& printerName,
                                    const std::vector<CXString>& installableFeatures,
                                    IPrinterPropertyBagAccess& bag);
    ~NativeComQueuePropertyBagAccess() override;

    /// The CPSS name of the value that the bag has for one option; empty where it has none, or is null.
    static CXString TryGetInstallableOption(IPrinterPropertyBag* bag, const CXString& cpssFeatureName);

    void GetPrinterName(CXString& out) const override;
    /// In the order of the device's list.
    bool GetInstallableOptions(InstallableOptions& out) const override;
    /// Deliberate: an option that is not among the given ones keeps its property; an empty text is written
    /// under its name without "Config:". Those that the device does not have are ignored.
    void SetInstallableOptions(const InstallableOptions& options) override;
    void GetOrvelDeviceSettings(CPString& out) const override;
    /// Takes the place of the settings in the queue's document and leaves the rest of that as it is. Without
    /// such a document, and with a text that no XML can hold, nothing changes, which is reported.
    void SetOrvelDeviceSettings(const CPString& xml) override;
    /// The administrator's configuration.
    void GetOrvelQueuePrePostConfiguration(CPString& out) const override;

    // Setters that say so do nothing: these values are not this object's to change.
    void SetRawIpOrHostNameAndDoSimpleCleanupOfStaleData(const CXString& name) override; // nothing
    void SetRawIpOrHostNameManuallyOverridden(bool overridden) override;                 // nothing
    void SetFullyQualifiedDomainName(const CXString& name) override;                     // nothing
    void GetRawIpOrHostName(CXString& out) override;
    void GetFullyQualifiedDomainName(CXString& out) override;
    void GetDeviceSerialNumber(CXString& out) override;
    /// Deliberate: the serial number, too.
    void GetAutoConfigRegData(CXString& out) override;
    void GetJobAccountingRequiredFromUiValue(CXString& out) override;
    void GetJobAccountingRequiredFromObdsValue(CXString& out) override;
    void SetDeviceSerialNumber(const CXString& number) override;               // nothing
    void SetSnmpReadCommunityName(const CXString& name) override;              // nothing
    void SetSnmpReadCommunityNameManuallyOverridden(bool overridden) override; // nothing
    void SetSnmpWriteCommunityName(const CXString& name) override;             // nothing
    void SetJobAccountingRequiredFromUiValue(const CXString& value) override;  // nothing
    void SetobAccountingRequiredFromObdsValue(const CXString& value) override; // nothing
    void GetPrintServerResidentTtfFonts(CXString& out) const override;
    void SetPrintServerResidentTtfFonts(const CXString& fonts) override; // nothing

private:
    /// An XML text that stands inside the queue's document.
    void GetXmlFromCdataSection(const wchar_t* name, CPString& out) const;
    /// Names of features and values as a bag spells them, which takes neither hyphens nor dots.
    static CXString ConvertCpssToModifiedCamelCase(const CXString& name);
    static CXString ConvertModifiedCamelCaseToCpss(const CXString& name);

    [[nodiscard]] CXString GetQueueProperties() const;
    [[nodiscard]] CXString GetQueueProperty(const wchar_t* name) const;
    void GetText(const wchar_t* name, CXString& out) const;

    CXString m_printerName;
    std::vector<CXString> m_installableFeatures;
    IPrinterPropertyBagAccess& m_bag;
};
