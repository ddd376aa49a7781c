#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <DataAccess/IPrinterPropertyBagAccess.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <atlcomcli.h>
#include <printerextension.h>

/// The library's view of a printer property bag of the platform. A value that is missing and a value that
/// cannot be read look alike: false, 0, or empty; but the latter is reported, as is one that cannot be set,
/// and which then stays as it was. Throws only when memory is out. As safe between threads as the bag is.
class OV_FILTER_UTILITIES_API NativeComPrinterPropertyBagAccess : public IPrinterPropertyBagAccess {
public:
    /// What the maker of the object says of the bag. Stored only.
    enum tagNativeComPrinterPropertyBagAccessAssertionPolicy {
        AssertionPolicyNone = 0,
        AssertionPolicyBagIsHeldElsewhere = 1
    };

    /// Neither takes a reference on the bag nor releases it: the bag has to outlive this object.
    NativeComPrinterPropertyBagAccess(IPrinterPropertyBag& bag,
                                      tagNativeComPrinterPropertyBagAccessAssertionPolicy policy);
    ~NativeComPrinterPropertyBagAccess() override;

private:
    bool IsPropertyBagNull() override;

public:
    bool GetPrinterPropertyBagBool(const CXString& key) const override;
    int GetPrinterPropertyBagInteger(const CXString& key) const override;
    void GetPrinterPropertyBagString(const CXString& key, CXString& out) const override;
    void GetPrinterPropertyBagBytes(const CXString& key, ByteBuffer& out) const override;
    void GetPrinterPropertyBagStreamBuffer(const CXString& key, ByteBuffer& out) const override;
    /// Takes the bytes as UTF-8.
    void GetPrinterPropertyBagStreamAsCPString(const CXString& key, CPString& out) const override;
    /// The bytes as they are stored; to decompress them is up to the caller.
    void GetPrinterPropertyBagCompressedStreamBuffer(const CXString& key, ByteBuffer& out) const override;

    void SetPrinterPropertyBagBool(const CXString& key, bool value) override;
    void SetPrinterPropertyBagInteger(const CXString& key, int value) override;
    void SetPrinterPropertyBagString(const CXString& key, const CXString& value) override;
    void SetPrinterPropertyBagBytes(const CXString& key, const ByteBuffer& value) override;
    /// Replaces the whole stored value.
    void SetPrinterPropertyBagStreamBuffer(const CXString& key, const ByteBuffer& value) override;

private:
    static ByteBuffer ConvertStreamToByteBuffer(CComPtr<IStream>& stream);
    static CPString ConvertStreamToCPString(CComPtr<IStream>& stream);

    IPrinterPropertyBag* m_bag;
    [[maybe_unused]] tagNativeComPrinterPropertyBagAccessAssertionPolicy m_policy;
};
