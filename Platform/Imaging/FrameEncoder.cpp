#include "Imaging/FrameEncoder.h"

#include "Com/Guarded.h"

#include <cmath>
#include <cstring>

namespace OvPlatform {

HRESULT FrameEncoder::Initialize(IPropertyBag2*) {
    return Guarded([&] {
        if (m_state != State::New) return WINCODEC_ERR_WRONGSTATE;
        m_state = State::Initialized;
        return S_OK;
    });
}

HRESULT FrameEncoder::CheckSettable() const {
    if (m_state == State::New) return WINCODEC_ERR_NOTINITIALIZED;
    return m_state == State::Initialized ? S_OK : WINCODEC_ERR_WRONGSTATE;
}

HRESULT FrameEncoder::SetSize(UINT width, UINT height) {
    return Guarded([&] {
        if (const HRESULT result = CheckSettable(); FAILED(result)) return result;
        if (width == 0 || height == 0) return E_INVALIDARG;
        if (ULONGLONG{width} * height > mostPicturePixels) return WINCODEC_ERR_IMAGESIZEOUTOFRANGE;
        m_width = width;
        m_height = height;
        return S_OK;
    });
}

HRESULT FrameEncoder::SetResolution(double dpiX, double dpiY) {
    return Guarded([&] {
        if (const HRESULT result = CheckSettable(); FAILED(result)) return result;
        if (!std::isfinite(dpiX) || !std::isfinite(dpiY) || dpiX < 0 || dpiY < 0) return E_INVALIDARG;
        m_dpiX = dpiX;
        m_dpiY = dpiY;
        return S_OK;
    });
}

HRESULT FrameEncoder::SetPixelFormat(WICPixelFormatGUID* pixelFormat) {
    if (pixelFormat == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (const HRESULT result = CheckSettable(); FAILED(result)) return result;
        const bool hasAlpha =
            *pixelFormat == GUID_WICPixelFormat32bppRGBA || *pixelFormat == GUID_WICPixelFormat32bppBGRA;
        m_format = hasAlpha ? GUID_WICPixelFormat32bppRGBA : GUID_WICPixelFormat24bppRGB;
        *pixelFormat = m_format;
        return S_OK;
    });
}

HRESULT FrameEncoder::SetColorContexts(UINT, IWICColorContext**) { return E_NOTIMPL; }
HRESULT FrameEncoder::SetPalette(IWICPalette*) { return E_NOTIMPL; }
HRESULT FrameEncoder::SetThumbnail(IWICBitmapSource*) { return WINCODEC_ERR_UNSUPPORTEDOPERATION; }

HRESULT FrameEncoder::Begin() {
    if (m_state == State::Writing) return S_OK;
    if (const HRESULT result = CheckSettable(); FAILED(result)) return result;
    if (m_width == 0 || m_format == GUID_WICPixelFormatDontCare) return WINCODEC_ERR_WRONGSTATE;
    m_pixels = NewPixels(m_width, m_height, HasAlpha());
    if (!m_pixels) return E_OUTOFMEMORY;
    m_state = State::Writing;
    return S_OK;
}

HRESULT FrameEncoder::WritePixels(UINT lineCount, UINT stride, UINT bufferSize, BYTE* pixels) {
    if (pixels == nullptr || lineCount == 0) return E_INVALIDARG;
    return Guarded([&] {
        if (const HRESULT result = Begin(); FAILED(result)) return result;
        const std::size_t rowBytes = std::size_t{m_width} * (HasAlpha() ? 4 : 3);
        if (stride < rowBytes) return E_INVALIDARG;
        if (std::size_t{stride} * (lineCount - 1) + rowBytes > bufferSize)
            return WINCODEC_ERR_INSUFFICIENTBUFFER;
        if (lineCount > m_height - m_rowsWritten) return WINCODEC_ERR_CODECTOOMANYSCANLINES;
        const auto step = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(m_pixels.get()));
        guchar* row = gdk_pixbuf_get_pixels(m_pixels.get()) + step * m_rowsWritten;
        for (UINT line = 0; line < lineCount; ++line, row += step)
            std::memcpy(row, pixels + std::size_t{stride} * line, rowBytes);
        m_rowsWritten += lineCount;
        return S_OK;
    });
}

HRESULT FrameEncoder::SizeFrom(IWICBitmapSource& source, const WICRect& rectangle) {
    if (m_state == State::Initialized && m_width == 0)
        if (const HRESULT result =
                SetSize(static_cast<UINT>(rectangle.Width), static_cast<UINT>(rectangle.Height));
            FAILED(result))
            return result;
    WICPixelFormatGUID format{};
    if (const HRESULT result = source.GetPixelFormat(&format); FAILED(result)) return result;
    const WICPixelFormatGUID own = format;
    if (m_state == State::Initialized && m_format == GUID_WICPixelFormatDontCare)
        if (const HRESULT result = SetPixelFormat(&format); FAILED(result)) return result;
    return own == m_format ? S_OK : WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT;
}

HRESULT FrameEncoder::WriteSource(IWICBitmapSource* source, WICRect* rectangle) {
    if (source == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        UINT width = 0;
        UINT height = 0;
        if (const HRESULT result = source->GetSize(&width, &height); FAILED(result)) return result;
        const WICRect part = rectangle != nullptr
                                 ? *rectangle
                                 : WICRect{0, 0, static_cast<INT>(width), static_cast<INT>(height)};
        if (part.Width <= 0 || part.Height <= 0) return E_INVALIDARG;
        if (const HRESULT result = SizeFrom(*source, part); FAILED(result)) return result;
        if (const HRESULT result = Begin(); FAILED(result)) return result;
        if (static_cast<UINT>(part.Width) != m_width) return WINCODEC_ERR_SOURCERECTDOESNOTMATCHDIMENSIONS;
        const auto rows = static_cast<UINT>(part.Height);
        if (rows > m_height - m_rowsWritten) return WINCODEC_ERR_SOURCERECTDOESNOTMATCHDIMENSIONS;
        // Straight to where they are written from. The last row may be shorter than the way to the next.
        const auto step = static_cast<UINT>(gdk_pixbuf_get_rowstride(m_pixels.get()));
        guchar* const row = gdk_pixbuf_get_pixels(m_pixels.get()) + std::size_t{step} * m_rowsWritten;
        const std::size_t room = std::size_t{step} * (rows - 1) + std::size_t{m_width} * (HasAlpha() ? 4 : 3);
        const HRESULT result = source->CopyPixels(&part, step, static_cast<UINT>(room), row);
        if (SUCCEEDED(result)) m_rowsWritten += rows;
        return result;
    });
}

HRESULT FrameEncoder::Commit() {
    return Guarded([&] {
        if (m_state == State::New) return WINCODEC_ERR_NOTINITIALIZED;
        if (m_state != State::Writing || m_rowsWritten < m_height) return WINCODEC_ERR_WRONGSTATE;
        const HRESULT result = EncodePng(m_pixels.get(), m_dpiX, m_dpiY, m_target);
        if (FAILED(result)) return result;
        m_state = State::Committed;
        m_pixels.reset();
        return S_OK;
    });
}

HRESULT FrameEncoder::GetMetadataQueryWriter(IWICMetadataQueryWriter**) { return E_NOTIMPL; }

} // namespace OvPlatform
