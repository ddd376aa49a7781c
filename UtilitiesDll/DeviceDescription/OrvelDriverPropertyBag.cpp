#include "DeviceDescription/OrvelDriverPropertyBag.h"

namespace {

constexpr const char* secretOfSecurePrint = "job-password";
constexpr const char* covers[] = {"cover-front", "cover-back"};

} // namespace

OrvelDriverPropertyBag::OrvelDriverPropertyBag(IPrinterPropertyBagAccess& bag) : m_bag(bag) {}

OrvelDriverPropertyBag::~OrvelDriverPropertyBag() = default;

const CPString& OrvelDriverPropertyBag::GetProductPdlDataXml() const {
    if (m_productPdlDataXml.isEmpty())
        m_bag.GetPrinterPropertyBagStreamAsCPString(productDataPropertyName, m_productPdlDataXml);
    return m_productPdlDataXml;
}

OvlSharedPtr<SimpleOcapParser> OrvelDriverPropertyBag::GetSimpleOcapParser() const {
    if (m_deviceCapabilities) return m_deviceCapabilities;
    CPString xml;
    m_bag.GetPrinterPropertyBagStreamAsCPString(deviceCapabilitiesPropertyName, xml);
    auto capabilities = OvlSharedPtr<SimpleOcapParser>::make(xml);
    if (!xml.isEmpty()) m_deviceCapabilities = capabilities;
    return capabilities;
}

bool OrvelDriverPropertyBag::IsCpssFeatureSupportedAndOutputInOpif(const CPString& feature) const {
    return GetSimpleOcapParser()->IsCpssFeatureOutputInOpif(feature);
}

bool OrvelDriverPropertyBag::AreCoversSupportedAndOutputInOpif() const {
    const OvlSharedPtr<SimpleOcapParser> capabilities = GetSimpleOcapParser();
    bool areSupported = false;
    for (const char* const cover : covers) {
        if (!capabilities->IsCpssFeatureSupported(cover)) continue;
        // A cover that did not travel there would be lost, for the page description would leave it out.
        if (!capabilities->IsCpssFeatureOutputInOpif(cover)) return false;
        areSupported = true;
    }
    return areSupported;
}

bool OrvelDriverPropertyBag::GetSecurePrintPasscodeLengthCapabilities(unsigned& shortest,
                                                                      unsigned& longest) const {
    return GetSimpleOcapParser()->GetTextLengthRange(secretOfSecurePrint, shortest, longest);
}
