#pragma once

#include "DataAccess/IDriverCapabilities.h"
#include "DataAccess/IPrinterPropertyBagAccess.h"
#include "DeviceDescription/SimpleOcapParser.h"
#include "LowLevelFacilities/Ownership/OvlSharedPtr.h"
#include "LowLevelFacilities/UtilitiesExport.h"

/// The device's description as the driver's property bag holds it. What has been read is kept, so a change of
/// the bag is not seen. Belongs to one thread.
class OV_UTILITIES_API OrvelDriverPropertyBag : public IDriverCapabilities {
public:
    /// The bag's stream property that holds the product's data, as UTF-8.
    static constexpr const wchar_t* productDataPropertyName = L"ProductData";
    /// The bag's stream property that holds the device capabilities document, as UTF-8.
    static constexpr const wchar_t* deviceCapabilitiesPropertyName = L"DeviceCapabilities";

    /// Does not own the bag, which must outlive this object.
    explicit OrvelDriverPropertyBag(IPrinterPropertyBagAccess& bag);
    OrvelDriverPropertyBag(const OrvelDriverPropertyBag&) = delete;
    OrvelDriverPropertyBag& operator=(const OrvelDriverPropertyBag&) = delete;
    ~OrvelDriverPropertyBag() override;

    /// Reads the bag until it has given a text, and then never again.
    [[nodiscard]] const CPString& GetProductPdlDataXml() const override;

    /// The device's capabilities, parsed at the first call and then shared; never null. A bag without the
    /// document gives a device that supports nothing, and is asked again at the next call. This and the
    /// questions below throw CPComException for a document that is not valid, and need a COM apartment at the
    /// first call.
    [[nodiscard]] OvlSharedPtr<SimpleOcapParser> GetSimpleOcapParser() const;

    /// Whether the device has the feature and takes it in the OPIF ticket.
    [[nodiscard]] bool IsCpssFeatureSupportedAndOutputInOpif(const CPString& feature) const;
    /// Whether the device has covers, and takes all that it has in the OPIF ticket.
    [[nodiscard]] bool AreCoversSupportedAndOutputInOpif() const;
    /// How many characters a secure print passcode has at least and at most. False, with both unchanged, if
    /// the device does not say.
    bool GetSecurePrintPasscodeLengthCapabilities(unsigned& shortest, unsigned& longest) const;

private:
    IPrinterPropertyBagAccess& m_bag;
    mutable CPString m_productPdlDataXml;
    mutable OvlSharedPtr<SimpleOcapParser> m_deviceCapabilities;
};
