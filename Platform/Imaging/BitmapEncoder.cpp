#include "Imaging/BitmapEncoder.h"

#include "Com/Guarded.h"

namespace OvPlatform {

HRESULT BitmapEncoder::Initialize(IStream* stream, WICBitmapEncoderCacheOption) {
    if (stream == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (m_stream) return WINCODEC_ERR_WRONGSTATE;
        m_stream = stream;
        return S_OK;
    });
}

HRESULT BitmapEncoder::GetContainerFormat(GUID* containerFormat) {
    if (containerFormat == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        *containerFormat = GUID_ContainerFormatPng;
        return S_OK;
    });
}

HRESULT BitmapEncoder::GetEncoderInfo(IWICBitmapEncoderInfo**) { return E_NOTIMPL; }
HRESULT BitmapEncoder::SetColorContexts(UINT, IWICColorContext**) { return E_NOTIMPL; }
HRESULT BitmapEncoder::SetPalette(IWICPalette*) { return E_NOTIMPL; }
HRESULT BitmapEncoder::SetThumbnail(IWICBitmapSource*) { return WINCODEC_ERR_UNSUPPORTEDOPERATION; }
HRESULT BitmapEncoder::SetPreview(IWICBitmapSource*) { return WINCODEC_ERR_UNSUPPORTEDOPERATION; }

HRESULT BitmapEncoder::CreateNewFrame(IWICBitmapFrameEncode** frame, IPropertyBag2** options) {
    if (frame == nullptr) return E_INVALIDARG;
    *frame = nullptr;
    if (options != nullptr) *options = nullptr;
    return Guarded([&] {
        if (!m_stream) return WINCODEC_ERR_NOTINITIALIZED;
        if (m_isCommitted) return WINCODEC_ERR_WRONGSTATE;
        if (m_frame) return WINCODEC_ERR_UNSUPPORTEDOPERATION;
        m_frame.Attach(new FrameEncoder(m_stream));
        *frame = m_frame;
        (*frame)->AddRef();
        return S_OK;
    });
}

HRESULT BitmapEncoder::Commit() {
    return Guarded([&] {
        if (!m_stream) return WINCODEC_ERR_NOTINITIALIZED;
        if (m_isCommitted || (m_frame && !m_frame->IsCommitted())) return WINCODEC_ERR_WRONGSTATE;
        m_isCommitted = true;
        return S_OK;
    });
}

HRESULT BitmapEncoder::GetMetadataQueryWriter(IWICMetadataQueryWriter**) { return E_NOTIMPL; }

} // namespace OvPlatform
