#pragma once

#include "DeviceDescription/IDriverCapabilities.h"
#include "DeviceDescription/IPrinterPropertyBagAccess.h"
#include "LowLevelFacilities/UtilitiesExport.h"

/// The device's description as the driver's property bag holds it. What has been read is kept, so a change of
/// the bag is not seen. Belongs to one thread.
class OV_UTILITIES_API OrvelDriverPropertyBag : public IDriverCapabilities {
public:
    /// The bag's stream property that holds the product's data, as UTF-8.
    static constexpr const wchar_t* productDataPropertyName = L"ProductData";

    /// Does not own the bag, which must outlive this object.
    explicit OrvelDriverPropertyBag(IPrinterPropertyBagAccess& bag);
    OrvelDriverPropertyBag(const OrvelDriverPropertyBag&) = delete;
    OrvelDriverPropertyBag& operator=(const OrvelDriverPropertyBag&) = delete;
    ~OrvelDriverPropertyBag() override;

    /// Reads the bag until it has given a text, and then never again.
    [[nodiscard]] const CPString& GetProductPdlDataXml() const override;

private:
    IPrinterPropertyBagAccess& m_bag;
    mutable CPString m_productPdlDataXml;
};
