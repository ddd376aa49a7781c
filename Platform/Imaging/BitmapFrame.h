#pragma once

#include "Com/CountedObject.h"
#include "Imaging/Picture.h"

#include <wincodec.h>

#include <memory>

template <>
struct OvPlatform::ExtendedInterface<IWICBitmapFrameDecode> {
    using Type = IWICBitmapSource;
};

namespace OvPlatform {

/// A decoded picture as a source of pixels.
class BitmapFrame final : public CountedObject<IWICBitmapFrameDecode> {
public:
    explicit BitmapFrame(std::shared_ptr<const Picture> picture) : m_picture(std::move(picture)) {}

    HRESULT STDMETHODCALLTYPE GetSize(UINT* width, UINT* height) override;
    HRESULT STDMETHODCALLTYPE GetPixelFormat(WICPixelFormatGUID* pixelFormat) override;
    HRESULT STDMETHODCALLTYPE GetResolution(double* dpiX, double* dpiY) override;
    /// WINCODEC_ERR_PALETTEUNAVAILABLE: there is none once it is decoded.
    HRESULT STDMETHODCALLTYPE CopyPalette(IWICPalette* palette) override;
    HRESULT STDMETHODCALLTYPE CopyPixels(const WICRect* rectangle, UINT stride, UINT bufferSize,
                                         BYTE* buffer) override;
    HRESULT STDMETHODCALLTYPE GetMetadataQueryReader(IWICMetadataQueryReader** reader) override;
    HRESULT STDMETHODCALLTYPE GetColorContexts(UINT count, IWICColorContext** contexts,
                                               UINT* actualCount) override;
    HRESULT STDMETHODCALLTYPE GetThumbnail(IWICBitmapSource** thumbnail) override;

private:
    std::shared_ptr<const Picture> m_picture;
};

} // namespace OvPlatform
