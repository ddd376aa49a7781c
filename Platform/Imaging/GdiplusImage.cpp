#include "Com/Guarded.h"
#include "Imaging/GdiplusRuntime.h"
#include "Imaging/Picture.h"
#include "Imaging/PictureStream.h"

#include <atlcomcli.h>
#include <gdiplus.h>
#include <wincodec.h>

#include <utility>
#include <vector>

namespace Gdiplus {
namespace {

Status StatusOf(HRESULT result) {
    if (SUCCEEDED(result)) return Ok;
    switch (result) {
    case E_OUTOFMEMORY:
    case WINCODEC_ERR_IMAGESIZEOUTOFRANGE:
        return OutOfMemory;
    case WINCODEC_ERR_COMPONENTNOTFOUND:
        return UnknownImageFormat;
    case HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND):
    case HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND):
        return FileNotFound;
    case E_ACCESSDENIED:
        return AccessDenied;
    default:
        return GenericError;
    }
}

/// Decodes it, to find whether it is whole.
HRESULT Measure(IStream* stream, OvPlatform::PictureHeader& header) {
    std::vector<BYTE> bytes;
    OvPlatform::Pixels pixels;
    HRESULT result = OvPlatform::ReadPictureStream(stream, bytes);
    if (SUCCEEDED(result)) result = OvPlatform::CheckPicture(bytes, header);
    if (SUCCEEDED(result)) result = OvPlatform::DecodePicture(bytes, header, pixels);
    return result;
}

} // namespace

void Image::Load(const WCHAR* filename, IStream* stream) {
    if (!OvPlatform::IsGdiplusRunning()) {
        m_status = GdiplusNotInitialized;
        return;
    }
    OvPlatform::PictureHeader header;
    m_status = StatusOf(OvPlatform::Guarded([&] {
        CComPtr<IStream> opened(stream);
        HRESULT result = S_OK;
        if (filename != nullptr) result = OvPlatform::OpenPictureFile(filename, &opened);
        return SUCCEEDED(result) ? Measure(opened, header) : result;
    }));
    if (m_status != Ok) return;
    m_width = header.width;
    m_height = header.height;
    m_horizontalResolution = static_cast<REAL>(header.dpiX);
    m_verticalResolution = static_cast<REAL>(header.dpiY);
}

Image::Image(const WCHAR* filename, BOOL) : m_status(InvalidParameter) {
    if (filename != nullptr) Load(filename, nullptr);
}

Image::Image(IStream* stream, BOOL) : m_status(InvalidParameter) {
    if (stream != nullptr) Load(nullptr, stream);
}

Status Image::GetLastStatus() const { return std::exchange(m_status, Ok); }

UINT Image::GetWidth() { return m_width; }
UINT Image::GetHeight() { return m_height; }
REAL Image::GetHorizontalResolution() { return m_horizontalResolution; }
REAL Image::GetVerticalResolution() { return m_verticalResolution; }

} // namespace Gdiplus
