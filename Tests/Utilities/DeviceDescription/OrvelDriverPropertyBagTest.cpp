#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <gtest/gtest.h>

namespace {

/// A bag whose two stream properties may be missing; counts how often it is read.
class StreamBag final : public IPrinterPropertyBagAccess {
public:
    CPString productData;
    CPString deviceCapabilities;
    mutable int reads = 0;

    bool IsPropertyBagNull() override { return false; }
    bool GetPrinterPropertyBagBool(const CXString&) const override { return false; }
    int GetPrinterPropertyBagInteger(const CXString&) const override { return 0; }
    void GetPrinterPropertyBagString(const CXString&, CXString& out) const override { out.Empty(); }
    void GetPrinterPropertyBagBytes(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamBuffer(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamAsCPString(const CXString& key, CPString& out) const override {
        ++reads;
        out.clear();
        if (key == L"ProductData") out = productData;
        if (key == L"DeviceCapabilities") out = deviceCapabilities;
    }
    void GetPrinterPropertyBagCompressedStreamBuffer(const CXString&, ByteBuffer& out) const override {
        out.clear();
    }
    void SetPrinterPropertyBagBool(const CXString&, bool) override {}
    void SetPrinterPropertyBagInteger(const CXString&, int) override {}
    void SetPrinterPropertyBagString(const CXString&, const CXString&) override {}
    void SetPrinterPropertyBagBytes(const CXString&, const ByteBuffer&) override {}
    void SetPrinterPropertyBagStreamBuffer(const CXString&, const ByteBuffer&) override {}
};

class DriverOfADevice : public InApartment<> {
protected:
    void Describe(const std::string& features) {
        m_bag.deviceCapabilities =
            CPString("<DeviceCapabilities version='1.0'>" + features + "</DeviceCapabilities>");
    }

    StreamBag m_bag;
    OrvelDriverPropertyBag m_driver{m_bag};
};

TEST_F(DriverOfADevice, ReadsEachDocumentOnceAndSharesIt) {
    // Neither an empty document nor a broken one is kept.
    EXPECT_TRUE(m_driver.GetProductPdlDataXml().isEmpty());
    EXPECT_FALSE(m_driver.GetSimpleOcapParser()->IsCpssFeatureSupported("a"));
    m_bag.deviceCapabilities = "<broken";
    EXPECT_THROW(static_cast<void>(m_driver.GetSimpleOcapParser()), CPComException);

    m_bag.productData = "<product>\xC3\xA9</product>";
    Describe("<Text name='a'/>");
    const CPString& data = m_driver.GetProductPdlDataXml();
    const OvlSharedPtr<SimpleOcapParser> device = m_driver.GetSimpleOcapParser();
    m_bag.reads = 0;
    m_bag.productData = "other";
    m_bag.deviceCapabilities.clear();
    EXPECT_EQ(&data, &m_driver.GetProductPdlDataXml());
    EXPECT_EQ("<product>\xC3\xA9</product>", data);
    EXPECT_EQ(device, m_driver.GetSimpleOcapParser());
    EXPECT_TRUE(device->IsCpssFeatureSupported("a"));
    EXPECT_EQ(0, m_bag.reads);
}

TEST_F(DriverOfADevice, TellsWhatTravelsInTheOpifTicket) {
    const Rows<const char*, bool> rows{
        {"", false},
        {"<Collection name='cover-front'/><Collection name='cover-back'/>", false},
        {"<Collection name='cover-front' opif='1'/><Collection name='cover-back' opif='1'/>", true},
        {"<Collection name='cover-back' opif='1'/>", true},
        {"<Collection name='cover-front' opif='1'/><Collection name='cover-back'/>", false},
    };
    for (const auto& [features, covers] : rows) {
        Describe(features);
        EXPECT_EQ(covers, OrvelDriverPropertyBag(m_bag).AreCoversSupportedAndOutputInOpif()) << features;
    }
    Describe("<Text name='a' opif='1'/><Text name='b'/>");
    EXPECT_TRUE(m_driver.IsCpssFeatureSupportedAndOutputInOpif("a"));
    EXPECT_FALSE(m_driver.IsCpssFeatureSupportedAndOutputInOpif("b"));
}

TEST_F(DriverOfADevice, KnowsHowLongASecurePrintPasscodeIs) {
    unsigned shortest = 1, longest = 2;
    Describe("<Text name='job-password' minLength='4' maxLength='10'/>");
    EXPECT_TRUE(m_driver.GetSecurePrintPasscodeLengthCapabilities(shortest, longest));
    EXPECT_TRUE(shortest == 4 && longest == 10);
}

} // namespace
