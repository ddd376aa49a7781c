#include "Imaging/ImagingStream.h"

#include "Com/Guarded.h"
#include "Imaging/PictureStream.h"

namespace OvPlatform {

HRESULT ImagingStream::Read(void* buffer, ULONG count, ULONG* got) {
    return m_stream ? m_stream->Read(buffer, count, got) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Write(const void* bytes, ULONG count, ULONG* written) {
    return m_stream ? m_stream->Write(bytes, count, written) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) {
    return m_stream ? m_stream->Seek(move, origin, newPosition) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::SetSize(ULARGE_INTEGER size) {
    return m_stream ? m_stream->SetSize(size) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                              ULARGE_INTEGER* written) {
    return m_stream ? m_stream->CopyTo(target, count, read, written) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Commit(DWORD flags) {
    return m_stream ? m_stream->Commit(flags) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Revert() { return m_stream ? m_stream->Revert() : WINCODEC_ERR_NOTINITIALIZED; }
HRESULT ImagingStream::LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) {
    return m_stream ? m_stream->LockRegion(offset, count, type) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) {
    return m_stream ? m_stream->UnlockRegion(offset, count, type) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Stat(STATSTG* statistics, DWORD flags) {
    return m_stream ? m_stream->Stat(statistics, flags) : WINCODEC_ERR_NOTINITIALIZED;
}
HRESULT ImagingStream::Clone(IStream** clone) {
    return m_stream ? m_stream->Clone(clone) : WINCODEC_ERR_NOTINITIALIZED;
}

HRESULT ImagingStream::InitializeFromIStream(IStream* stream) {
    if (stream == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (m_stream) return WINCODEC_ERR_WRONGSTATE;
        m_stream = stream;
        return S_OK;
    });
}

HRESULT ImagingStream::InitializeFromFilename(LPCWSTR fileName, DWORD accessMode) {
    if (fileName == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (m_stream) return WINCODEC_ERR_WRONGSTATE;
        return accessMode == GENERIC_READ ? OpenPictureFile(fileName, &m_stream) : E_NOTIMPL;
    });
}

HRESULT ImagingStream::InitializeFromMemory(BYTE* buffer, DWORD bufferSize) {
    if (buffer == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        return m_stream ? WINCODEC_ERR_WRONGSTATE : OpenPictureMemory(buffer, bufferSize, &m_stream);
    });
}

HRESULT ImagingStream::InitializeFromIStreamRegion(IStream*, ULARGE_INTEGER, ULARGE_INTEGER) {
    return E_NOTIMPL;
}

} // namespace OvPlatform
