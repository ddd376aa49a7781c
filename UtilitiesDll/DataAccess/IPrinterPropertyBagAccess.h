#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

/// Reads and writes the values of a property bag. A missing value reads as false, 0 or empty; so does one
/// that cannot be read. The order of the operations is part of the interface.
class IPrinterPropertyBagAccess {
public:
    virtual ~IPrinterPropertyBagAccess() = default;

private:
    virtual bool IsPropertyBagNull() = 0;

public:
    [[nodiscard]] virtual bool GetPrinterPropertyBagBool(const CXString& key) const = 0;
    [[nodiscard]] virtual int GetPrinterPropertyBagInteger(const CXString& key) const = 0;
    virtual void GetPrinterPropertyBagString(const CXString& key, CXString& out) const = 0;
    virtual void GetPrinterPropertyBagBytes(const CXString& key, ByteBuffer& out) const = 0;
    virtual void GetPrinterPropertyBagStreamBuffer(const CXString& key, ByteBuffer& out) const = 0;
    /// Takes the bytes of the stream as UTF-8.
    virtual void GetPrinterPropertyBagStreamAsCPString(const CXString& key, CPString& out) const = 0;
    /// The bytes as stored; the caller decompresses.
    virtual void GetPrinterPropertyBagCompressedStreamBuffer(const CXString& key, ByteBuffer& out) const = 0;
    virtual void SetPrinterPropertyBagBool(const CXString& key, bool value) = 0;
    virtual void SetPrinterPropertyBagInteger(const CXString& key, int value) = 0;
    virtual void SetPrinterPropertyBagString(const CXString& key, const CXString& value) = 0;
    virtual void SetPrinterPropertyBagBytes(const CXString& key, const ByteBuffer& value) = 0;
    virtual void SetPrinterPropertyBagStreamBuffer(const CXString& key, const ByteBuffer& value) = 0;
};
