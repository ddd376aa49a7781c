#include "Imaging/BitmapFrame.h"

#include "Com/Guarded.h"

#include <cstring>

namespace OvPlatform {
namespace {

/// Of what says nothing of its resolution, as published.
constexpr double usualDpi = 96;

bool Lies(const WICRect& rectangle, const PictureHeader& header) {
    return rectangle.X >= 0 && rectangle.Y >= 0 && rectangle.Width > 0 && rectangle.Height > 0 &&
           LONGLONG{rectangle.X} + rectangle.Width <= LONGLONG{header.width} &&
           LONGLONG{rectangle.Y} + rectangle.Height <= LONGLONG{header.height};
}

} // namespace

HRESULT BitmapFrame::GetSize(UINT* width, UINT* height) {
    if (width == nullptr || height == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        *width = m_picture->header.width;
        *height = m_picture->header.height;
        return S_OK;
    });
}

HRESULT BitmapFrame::GetPixelFormat(WICPixelFormatGUID* pixelFormat) {
    if (pixelFormat == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        *pixelFormat = m_picture->HasAlpha() ? GUID_WICPixelFormat32bppRGBA : GUID_WICPixelFormat24bppRGB;
        return S_OK;
    });
}

HRESULT BitmapFrame::GetResolution(double* dpiX, double* dpiY) {
    if (dpiX == nullptr || dpiY == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        const PictureHeader& header = m_picture->header;
        const bool isKnown = header.dpiX > 0 && header.dpiY > 0;
        *dpiX = isKnown ? header.dpiX : usualDpi;
        *dpiY = isKnown ? header.dpiY : usualDpi;
        return S_OK;
    });
}

HRESULT BitmapFrame::CopyPalette(IWICPalette*) { return WINCODEC_ERR_PALETTEUNAVAILABLE; }

HRESULT BitmapFrame::CopyPixels(const WICRect* rectangle, UINT stride, UINT bufferSize, BYTE* buffer) {
    if (buffer == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        const PictureHeader& header = m_picture->header;
        const WICRect whole = {0, 0, static_cast<INT>(header.width), static_cast<INT>(header.height)};
        const WICRect part = rectangle != nullptr ? *rectangle : whole;
        if (!Lies(part, header)) return E_INVALIDARG;
        const std::size_t pixelBytes = m_picture->HasAlpha() ? 4 : 3;
        const std::size_t rowBytes = pixelBytes * static_cast<std::size_t>(part.Width);
        const std::size_t needed = std::size_t{stride} * static_cast<std::size_t>(part.Height - 1) + rowBytes;
        if (stride < rowBytes) return E_INVALIDARG;
        if (needed > bufferSize) return WINCODEC_ERR_INSUFFICIENTBUFFER;
        const GdkPixbuf* const pixels = m_picture->pixels.get();
        const auto step = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(pixels));
        const guchar* from = gdk_pixbuf_read_pixels(pixels) + step * static_cast<std::size_t>(part.Y) +
                             pixelBytes * static_cast<std::size_t>(part.X);
        for (INT row = 0; row < part.Height; ++row, from += step)
            std::memcpy(buffer + std::size_t{stride} * static_cast<std::size_t>(row), from, rowBytes);
        return S_OK;
    });
}

HRESULT BitmapFrame::GetMetadataQueryReader(IWICMetadataQueryReader**) { return E_NOTIMPL; }
HRESULT BitmapFrame::GetColorContexts(UINT, IWICColorContext**, UINT*) { return E_NOTIMPL; }
HRESULT BitmapFrame::GetThumbnail(IWICBitmapSource**) { return WINCODEC_ERR_CODECNOTHUMBNAIL; }

} // namespace OvPlatform
