#include "Imaging/BitmapDecoder.h"

#include "Com/Guarded.h"
#include "Imaging/BitmapFrame.h"

namespace OvPlatform {
namespace {

GUID ContainerFormat(PictureKind kind) {
    switch (kind) {
    case PictureKind::Png:
        return GUID_ContainerFormatPng;
    case PictureKind::Jpeg:
        return GUID_ContainerFormatJpeg;
    case PictureKind::Gif:
        return GUID_ContainerFormatGif;
    case PictureKind::Bmp:
        return GUID_ContainerFormatBmp;
    case PictureKind::Tiff:
        return GUID_ContainerFormatTiff;
    }
    return {};
}

} // namespace

HRESULT BitmapDecoder::QueryCapability(IStream*, DWORD*) { return E_NOTIMPL; }

HRESULT BitmapDecoder::Initialize(IStream* stream, WICDecodeOptions) {
    if (stream == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (m_isInitialized) return WINCODEC_ERR_WRONGSTATE;
        HRESULT result = ReadPictureStream(stream, m_bytes);
        if (SUCCEEDED(result)) result = CheckPicture(m_bytes, m_header);
        m_isInitialized = SUCCEEDED(result);
        return result;
    });
}

HRESULT BitmapDecoder::GetContainerFormat(GUID* containerFormat) {
    if (containerFormat == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        if (!m_isInitialized) return WINCODEC_ERR_NOTINITIALIZED;
        *containerFormat = ContainerFormat(m_header.kind);
        return S_OK;
    });
}

HRESULT BitmapDecoder::GetDecoderInfo(IWICBitmapDecoderInfo**) { return E_NOTIMPL; }
HRESULT BitmapDecoder::CopyPalette(IWICPalette*) { return WINCODEC_ERR_PALETTEUNAVAILABLE; }
HRESULT BitmapDecoder::GetMetadataQueryReader(IWICMetadataQueryReader**) { return E_NOTIMPL; }
HRESULT BitmapDecoder::GetPreview(IWICBitmapSource**) { return WINCODEC_ERR_UNSUPPORTEDOPERATION; }
HRESULT BitmapDecoder::GetColorContexts(UINT, IWICColorContext**, UINT*) { return E_NOTIMPL; }
HRESULT BitmapDecoder::GetThumbnail(IWICBitmapSource**) { return WINCODEC_ERR_CODECNOTHUMBNAIL; }

HRESULT BitmapDecoder::GetFrameCount(UINT* count) {
    if (count == nullptr) return E_INVALIDARG;
    return Guarded([&] {
        *count = m_isInitialized ? 1 : 0;
        return S_OK;
    });
}

HRESULT BitmapDecoder::GetFrame(UINT index, IWICBitmapFrameDecode** frame) {
    if (frame == nullptr) return E_INVALIDARG;
    *frame = nullptr;
    return Guarded([&] {
        if (!m_isInitialized) return WINCODEC_ERR_NOTINITIALIZED;
        if (index != 0) return WINCODEC_ERR_FRAMEMISSING;
        if (const HRESULT result = Decode(); FAILED(result)) return result;
        *frame = new BitmapFrame(m_picture);
        return S_OK;
    });
}

HRESULT BitmapDecoder::Decode() {
    if (m_picture) return S_OK;
    auto picture = std::make_shared<Picture>();
    picture->header = m_header;
    if (const HRESULT result = DecodePicture(m_bytes, m_header, picture->pixels); FAILED(result))
        return result;
    m_picture = std::move(picture);
    std::vector<BYTE>().swap(m_bytes);
    return S_OK;
}

} // namespace OvPlatform
