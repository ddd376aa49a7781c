#include "Support/DeviceBag.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <gtest/gtest.h>

namespace {

class DriverOfADevice : public InApartment<> {
protected:
    void Describe(const std::string& features) {
        m_bag.deviceCapabilities =
            CPString("<DeviceCapabilities version='1.0'>" + features + "</DeviceCapabilities>");
    }

    DeviceBag m_bag;
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
