#pragma once

#include <filterpipeline.h>

/// Writes all of the bytes, in as many writes as the stream asks for. E_FAIL if it succeeds without taking
/// any.
inline HRESULT WriteAll(IPrintWriteStream& stream, const void* bytes, ULONG count) {
    const BYTE* rest = static_cast<const BYTE*>(bytes);
    while (count > 0) {
        ULONG written = 0;
        const HRESULT hr = stream.WriteBytes(rest, count, &written);
        if (FAILED(hr)) return hr;
        if (written == 0 || written > count) return E_FAIL;
        rest += written;
        count -= written;
    }
    return S_OK;
}
