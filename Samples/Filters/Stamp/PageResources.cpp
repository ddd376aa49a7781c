#include "PageResources.h"

#include "WriteAll.h"

#include <FontsAndImages/GDIPlus.h>
#include <FontsAndImages/WICHelper.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <SystemServices/WindowsDesktopUtilities.h>

#include <atlcomcli.h>
#include <gdiplus.h>
#include <wincodec.h>

#include <algorithm>
#include <array>

namespace {

[[noreturn]] void Refuse(const char* what, const CXString& name) {
    ThrowFailure<CPExceptionInvalidArgument>([&] { return what + CPStringUtils::narrowToStdString(name); });
}

HRESULT Give(BSTR* target, const wchar_t* text) {
    *target = SysAllocString(text);
    return *target != nullptr ? S_OK : E_OUTOFMEMORY;
}

/// The containers that a page can hold.
struct PageFormat {
    const GUID* container;
    const wchar_t* contentType;
    const wchar_t* extension;
};
const std::array<PageFormat, 3>& PageFormats() {
    static const std::array<PageFormat, 3> formats{{{&GUID_ContainerFormatPng, L"image/png", L".png"},
                                                    {&GUID_ContainerFormatJpeg, L"image/jpeg", L".jpg"},
                                                    {&GUID_ContainerFormatTiff, L"image/tiff", L".tif"}}};
    return formats;
}

std::string ReadAll(IStream& stream) {
    STATSTG statistics = {};
    ThrowIfFailed(stream.Stat(&statistics, STATFLAG_NONAME));
    std::string bytes(static_cast<std::size_t>(statistics.cbSize.QuadPart), '\0');
    ULONG read = 0;
    ThrowIfFailed(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read));
    bytes.resize(read);
    return bytes;
}

/// False for a file that cannot be read, and for one that is too large to be a picture of a page.
bool ReadWhole(const CXString& name, std::string& bytes) {
    constexpr LONGLONG most = LONGLONG{256} << 20;
    const HANDLE file = CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    LARGE_INTEGER size = {};
    DWORD read = 0;
    bool isRead = GetFileSizeEx(file, &size) && size.QuadPart <= most;
    if (isRead) {
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
        isRead = ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) &&
                 read == bytes.size();
    }
    CloseHandle(file);
    return isRead;
}

} // namespace

// ---- Fonts

FontResource::FontResource(GdiDeviceContext& context, const PageAnnotation& annotation)
    : m_context(context), m_annotation(annotation) {}

HRESULT FontResource::WriteResource(IUnknown* newPart, IPrintWriteStream* stream) {
    const CComQIPtr<IPartFont> font(newPart);
    if (!font) return E_NOINTERFACE;
    ThrowIfFailed(font->SetFontContent(L"application/vnd.ms-package.obfuscated-opentype"));
    ThrowIfFailed(font->SetFontOptions(Font_Obfusticate));
    const AnnotationElementSettings& element = m_annotation.element;
    CXString characters = m_annotation.characters;
    const ByteBuffer subset =
        m_context.GetFontSubset(element.faceName, element.charset, element.sizeInPoints, characters);
    if (subset.empty())
        Refuse("The font of an annotation may not be embedded, or is damaged: ", element.faceName);
    return WriteAll(*stream, subset.data(), static_cast<ULONG>(subset.size()));
}

HRESULT FontResource::GetKey(BSTR* key) { return Give(key, m_annotation.fontPartName); }
HRESULT FontResource::GetUri(BSTR* uri) { return Give(uri, m_annotation.fontPartName); }
IID FontResource::GetPartIid() { return __uuidof(IPartFont); }

// ---- Pictures

PictureResource::PictureResource(const CXString& file, const CXString& partNameWithoutExtension) {
    if (!ReadWhole(file, m_bytes)) Refuse("The picture of an annotation cannot be read: ", file);
    WICHelper picture(m_bytes.data(), static_cast<ULONG>(m_bytes.size()));
    picture.Initialize();
    if (!picture.IsInitialized()) Refuse("The picture of an annotation is none: ", file);
    const GUID container = picture.GetDecoderContainerFormatGUID();
    const auto& formats = PageFormats();
    const PageFormat* format = std::find_if(formats.begin(), formats.end(), [&](const PageFormat& known) {
        return *known.container == container;
    });
    if (format == formats.end()) {
        format = formats.begin();
        IStream* converted = nullptr;
        if (!picture.ConvertImage(*format->container) || !picture.GetTargetStream(&converted))
            Refuse("The picture of an annotation is damaged: ", file);
        m_bytes = ReadAll(*converted);
    }
    m_contentType = format->contentType;
    m_picture.partName = std::wstring(partNameWithoutExtension.View()) + format->extension;
    ReadSize(file);
}

// Pages take a picture that does not tell its resolution for one of 96 dots to the inch.
void PictureResource::ReadSize(const CXString& file) {
    const GDIPlus runtime;
    CComPtr<IStream> stream;
    ThrowIfFailed(
        WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, m_bytes.data(), m_bytes.size()));
    Gdiplus::Bitmap bitmap(stream);
    if (bitmap.GetLastStatus() != Gdiplus::Ok) Refuse("The picture of an annotation is damaged: ", file);
    const auto length = [](UINT pixels, float resolution) {
        return static_cast<float>(pixels) * 96 / (resolution > 0 ? resolution : 96);
    };
    m_picture.size = {length(bitmap.GetWidth(), bitmap.GetHorizontalResolution()),
                      length(bitmap.GetHeight(), bitmap.GetVerticalResolution())};
}

HRESULT PictureResource::WriteResource(IUnknown* newPart, IPrintWriteStream* stream) {
    const CComQIPtr<IPartImage> image(newPart);
    if (!image) return E_NOINTERFACE;
    ThrowIfFailed(image->SetImageContent(m_contentType));
    const HRESULT hr = WriteAll(*stream, m_bytes.data(), static_cast<ULONG>(m_bytes.size()));
    if (SUCCEEDED(hr)) std::string().swap(m_bytes); // the cache asks once
    return hr;
}

HRESULT PictureResource::GetKey(BSTR* key) { return Give(key, m_picture.partName.c_str()); }
HRESULT PictureResource::GetUri(BSTR* uri) { return Give(uri, m_picture.partName.c_str()); }
IID PictureResource::GetPartIid() { return __uuidof(IPartImage); }
