#pragma once

#include "Com/CountedObject.h"
#include "Imaging/Picture.h"

#include <atlcomcli.h>
#include <wincodec.h>

namespace OvPlatform {

/// Takes the rows of one picture, and writes it as PNG when it is committed. Size and format are those of the
/// first source where they are not set. Rows come in the format that SetPixelFormat answered.
class FrameEncoder final : public CountedObject<IWICBitmapFrameEncode> {
public:
    explicit FrameEncoder(IStream* target) : m_target(target) {}

    bool IsCommitted() const { return m_state == State::Committed; }

    HRESULT STDMETHODCALLTYPE Initialize(IPropertyBag2* options) override;
    HRESULT STDMETHODCALLTYPE SetSize(UINT width, UINT height) override;
    HRESULT STDMETHODCALLTYPE SetResolution(double dpiX, double dpiY) override;
    HRESULT STDMETHODCALLTYPE SetPixelFormat(WICPixelFormatGUID* pixelFormat) override;
    HRESULT STDMETHODCALLTYPE SetColorContexts(UINT count, IWICColorContext** contexts) override;
    HRESULT STDMETHODCALLTYPE SetPalette(IWICPalette* palette) override;
    HRESULT STDMETHODCALLTYPE SetThumbnail(IWICBitmapSource* thumbnail) override;
    HRESULT STDMETHODCALLTYPE WritePixels(UINT lineCount, UINT stride, UINT bufferSize,
                                          BYTE* pixels) override;
    /// WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT for a source of another format than the one set.
    HRESULT STDMETHODCALLTYPE WriteSource(IWICBitmapSource* source, WICRect* rectangle) override;
    HRESULT STDMETHODCALLTYPE Commit() override;
    HRESULT STDMETHODCALLTYPE GetMetadataQueryWriter(IWICMetadataQueryWriter** writer) override;

private:
    enum class State { New, Initialized, Writing, Committed };

    HRESULT CheckSettable() const;
    /// Makes room for the rows.
    HRESULT Begin();
    HRESULT SizeFrom(IWICBitmapSource& source, const WICRect& rectangle);
    bool HasAlpha() const { return m_format == GUID_WICPixelFormat32bppRGBA; }

    CComPtr<IStream> m_target;
    State m_state = State::New;
    UINT m_width = 0;
    UINT m_height = 0;
    double m_dpiX = 0;
    double m_dpiY = 0;
    GUID m_format = GUID_WICPixelFormatDontCare;
    Pixels m_pixels;
    UINT m_rowsWritten = 0;
};

} // namespace OvPlatform
