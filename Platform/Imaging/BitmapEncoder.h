#pragma once

#include "Com/CountedObject.h"
#include "Imaging/FrameEncoder.h"

#include <atlcomcli.h>
#include <wincodec.h>

namespace OvPlatform {

/// Writes one PNG file.
class BitmapEncoder final : public CountedObject<IWICBitmapEncoder> {
public:
    HRESULT STDMETHODCALLTYPE Initialize(IStream* stream, WICBitmapEncoderCacheOption cacheOption) override;
    HRESULT STDMETHODCALLTYPE GetContainerFormat(GUID* containerFormat) override;
    HRESULT STDMETHODCALLTYPE GetEncoderInfo(IWICBitmapEncoderInfo** encoderInfo) override;
    HRESULT STDMETHODCALLTYPE SetColorContexts(UINT count, IWICColorContext** contexts) override;
    HRESULT STDMETHODCALLTYPE SetPalette(IWICPalette* palette) override;
    HRESULT STDMETHODCALLTYPE SetThumbnail(IWICBitmapSource* thumbnail) override;
    HRESULT STDMETHODCALLTYPE SetPreview(IWICBitmapSource* preview) override;
    /// There are no options: null.
    HRESULT STDMETHODCALLTYPE CreateNewFrame(IWICBitmapFrameEncode** frame, IPropertyBag2** options) override;
    /// Nothing is written without a frame. WINCODEC_ERR_WRONGSTATE while its frame is not committed.
    HRESULT STDMETHODCALLTYPE Commit() override;
    HRESULT STDMETHODCALLTYPE GetMetadataQueryWriter(IWICMetadataQueryWriter** writer) override;

private:
    CComPtr<IStream> m_stream;
    CComPtr<FrameEncoder> m_frame;
    bool m_isCommitted = false;
};

} // namespace OvPlatform
