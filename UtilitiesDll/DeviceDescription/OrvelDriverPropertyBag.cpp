#include "DeviceDescription/OrvelDriverPropertyBag.h"

OrvelDriverPropertyBag::OrvelDriverPropertyBag(IPrinterPropertyBagAccess& bag) : m_bag(bag) {}

OrvelDriverPropertyBag::~OrvelDriverPropertyBag() = default;

const CPString& OrvelDriverPropertyBag::GetProductPdlDataXml() const {
    if (m_productPdlDataXml.isEmpty())
        m_bag.GetPrinterPropertyBagStreamAsCPString(productDataPropertyName, m_productPdlDataXml);
    return m_productPdlDataXml;
}
