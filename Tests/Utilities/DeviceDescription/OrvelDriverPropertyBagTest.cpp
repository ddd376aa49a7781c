#include <DeviceDescription/OrvelDriverPropertyBag.h>

#include <gtest/gtest.h>

namespace {

/// A bag whose one stream property may be missing; counts how often it is read.
class OneStreamBag final : public IPrinterPropertyBagAccess {
public:
    CPString productData;
    mutable int reads = 0;

    bool IsPropertyBagNull() override { return false; }
    bool GetPrinterPropertyBagBool(const CXString&) const override { return false; }
    int GetPrinterPropertyBagInteger(const CXString&) const override { return 0; }
    void GetPrinterPropertyBagString(const CXString&, CXString& out) const override { out.Empty(); }
    void GetPrinterPropertyBagBytes(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamBuffer(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamAsCPString(const CXString& key, CPString& out) const override {
        ++reads;
        out = key == L"ProductData" ? productData : CPString();
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

TEST(OrvelDriverPropertyBag, KeepsTheProductDataOnceRead) {
    OneStreamBag bag;
    const OrvelDriverPropertyBag driver(bag);
    EXPECT_TRUE(driver.GetProductPdlDataXml().isEmpty());
    bag.productData = "<product>\xC3\xA9</product>"; // an empty document is read again
    const CPString& data = driver.GetProductPdlDataXml();
    EXPECT_EQ("<product>\xC3\xA9</product>", data);
    bag.productData = "other";
    EXPECT_EQ(&data, &static_cast<const IDriverCapabilities&>(driver).GetProductPdlDataXml());
    EXPECT_EQ("<product>\xC3\xA9</product>", data);
    EXPECT_EQ(2, bag.reads);
}

} // namespace
