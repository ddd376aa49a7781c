#pragma once

#include "Com/CountedObject.h"
#include "Imaging/Picture.h"

#include <wincodec.h>

#include <memory>
#include <vector>

namespace OvPlatform {

/// One container and its picture, which is decoded when its frame is first asked for.
class BitmapDecoder final : public CountedObject<IWICBitmapDecoder> {
public:
    /// E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE QueryCapability(IStream* stream, DWORD* capability) override;
    HRESULT STDMETHODCALLTYPE Initialize(IStream* stream, WICDecodeOptions cacheOptions) override;
    HRESULT STDMETHODCALLTYPE GetContainerFormat(GUID* containerFormat) override;
    HRESULT STDMETHODCALLTYPE GetDecoderInfo(IWICBitmapDecoderInfo** decoderInfo) override;
    HRESULT STDMETHODCALLTYPE CopyPalette(IWICPalette* palette) override;
    HRESULT STDMETHODCALLTYPE GetMetadataQueryReader(IWICMetadataQueryReader** reader) override;
    HRESULT STDMETHODCALLTYPE GetPreview(IWICBitmapSource** source) override;
    HRESULT STDMETHODCALLTYPE GetColorContexts(UINT count, IWICColorContext** contexts,
                                               UINT* actualCount) override;
    HRESULT STDMETHODCALLTYPE GetThumbnail(IWICBitmapSource** thumbnail) override;
    HRESULT STDMETHODCALLTYPE GetFrameCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetFrame(UINT index, IWICBitmapFrameDecode** frame) override;

private:
    HRESULT Decode();

    bool m_isInitialized = false;
    PictureHeader m_header;
    std::vector<BYTE> m_bytes; // until it is decoded
    std::shared_ptr<const Picture> m_picture;
};

} // namespace OvPlatform
