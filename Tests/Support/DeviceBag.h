#pragma once

#include <DataAccess/IPrinterPropertyBagAccess.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>

/// A bag with the two documents that a device brings with it, each of which may be missing; counts how often
/// it is read.
class DeviceBag final : public IPrinterPropertyBagAccess {
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
        if (key == OrvelDriverPropertyBag::productDataPropertyName) out = productData;
        if (key == OrvelDriverPropertyBag::deviceCapabilitiesPropertyName) out = deviceCapabilities;
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
