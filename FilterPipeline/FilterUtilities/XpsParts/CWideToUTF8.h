#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <filterpipeline.h>

#include <memory>

/// The UTF-8 bytes of a wide string, for a stream.
class OV_FILTER_UTILITIES_API CWideToUTF8 {
public:
    /// The string is not copied and has to outlive this object. Throws CPComException with E_POINTER for
    /// null.
    explicit CWideToUTF8(CXString* text);
    virtual ~CWideToUTF8();
    CWideToUTF8(const CWideToUTF8&) = delete;
    CWideToUTF8& operator=(const CWideToUTF8&) = delete;

    /// Converts the string as it stands now. The bytes are not terminated and live until the next call or the
    /// end of this object. An empty string is E_FAIL.
    HRESULT GetBuffer(void** bytes, ULONG* count);

    /// Converts and writes. A short write is not looked at.
    HRESULT WriteToPrintStream(IPrintWriteStream* stream);
    static HRESULT WriteToPrintStream(CXString* text, IPrintWriteStream* stream);

private:
    void FreeBuffer();

    CXString* m_text;
    std::unique_ptr<char[]> m_buffer;
};
