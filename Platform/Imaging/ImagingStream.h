#pragma once

#include "Com/CountedObject.h"

#include <atlcomcli.h>
#include <wincodec.h>

template <>
struct OvPlatform::ExtendedInterface<IWICStream> {
    using Type = IStream;
};

namespace OvPlatform {

/// Hands everything on to the stream that it was initialised with.
class ImagingStream final : public CountedObject<IWICStream> {
public:
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* got) override;
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override;
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

    HRESULT STDMETHODCALLTYPE InitializeFromIStream(IStream* stream) override;
    /// To read only: E_NOTIMPL for any other access.
    HRESULT STDMETHODCALLTYPE InitializeFromFilename(LPCWSTR fileName, DWORD accessMode) override;
    HRESULT STDMETHODCALLTYPE InitializeFromMemory(BYTE* buffer, DWORD bufferSize) override;
    /// E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE InitializeFromIStreamRegion(IStream* stream, ULARGE_INTEGER offset,
                                                          ULARGE_INTEGER size) override;

private:
    CComPtr<IStream> m_stream;
};

} // namespace OvPlatform
