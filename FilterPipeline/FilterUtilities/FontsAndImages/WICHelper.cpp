#include "FontsAndImages/WICHelper.h"

#include <utility>

namespace {

// The factory of the platform's second version, asked for by the interface of the first.
constexpr CLSID imagingFactoryClass = {
    0x317d06e8, 0x5f24, 0x433d, {0xbd, 0xf7, 0x79, 0xce, 0x68, 0xd8, 0xab, 0xc2}};
// The encoders that come with the platform.
constexpr GUID platformVendor = {
    0xf0e749ca, 0xedef, 0x4589, {0xa7, 0x3a, 0xee, 0x0e, 0x62, 0x6a, 0x2a, 0x2b}};

/// Whether a container of that format holds several pictures.
bool HoldsSeveral(const GUID& format) {
    return format == GUID_ContainerFormatGif || format == GUID_ContainerFormatTiff;
}

} // namespace

WICHelper::WICHelper(void* buffer, ULONG size) : m_buffer(buffer), m_bufferSize(size) {}

WICHelper::WICHelper(CXString file) : m_file(std::move(file)) {}

WICHelper::~WICHelper() = default;

bool WICHelper::InitializeData(void* buffer, ULONG size) {
    m_isInitialized = false;
    m_decoderFormat = {};
    m_buffer = buffer;
    m_bufferSize = size;
    return Initialize();
}

bool WICHelper::Initialize() {
    if (m_isInitialized) return true;
    m_isInitialized = Open();
    return false;
}

bool WICHelper::IsInitialized() { return m_isInitialized; }

bool WICHelper::Open() {
    if (!m_apartment.TryInitializeCom(COINIT_APARTMENTTHREADED, false)) return Keep(CO_E_NOTINITIALIZED);
    m_factory.Release();
    m_stream.Release();
    m_decoder.Release();
    return Keep(m_factory.CoCreateInstance(imagingFactoryClass, nullptr, CLSCTX_ALL)) &&
           Keep(m_factory->CreateStream(&m_stream)) &&
           Keep(m_buffer != nullptr ? m_stream->InitializeFromMemory(static_cast<BYTE*>(m_buffer),
                                                                     static_cast<DWORD>(m_bufferSize))
                                    : m_stream->InitializeFromFilename(m_file, GENERIC_READ)) &&
           Keep(m_factory->CreateDecoderFromStream(m_stream, nullptr, WICDecodeMetadataCacheOnDemand,
                                                   &m_decoder)) &&
           Keep(m_decoder->GetContainerFormat(&m_decoderFormat));
}

bool WICHelper::ConvertImage(const GUID& containerFormat) {
    if (!m_isInitialized) return false;
    m_targetFormat = containerFormat;
    m_encoder.Release();
    m_targetStream.Release();
    return Keep(CreateStreamOnHGlobal(nullptr, TRUE, &m_targetStream)) &&
           Keep(m_factory->CreateEncoder(m_targetFormat, &platformVendor, &m_encoder)) &&
           Keep(m_encoder->Initialize(m_targetStream, WICBitmapEncoderNoCache)) && ConvertFrames() &&
           Keep(m_encoder->Commit()) && Keep(m_targetStream->Seek({}, STREAM_SEEK_SET, nullptr));
}

bool WICHelper::ConvertFrames() {
    UINT count = 0;
    if (!Keep(m_decoder->GetFrameCount(&count))) return false;
    if (count > 1 && !HoldsSeveral(m_targetFormat)) count = 1;
    for (UINT index = 0; index < count; ++index)
        if (!ConvertFrame(index)) return false;
    return true;
}

bool WICHelper::ConvertFrame(UINT index) {
    CComPtr<IWICBitmapFrameDecode> source;
    CComPtr<IWICBitmapFrameEncode> target;
    UINT width = 0;
    UINT height = 0;
    double dpiX = 0;
    double dpiY = 0;
    WICPixelFormatGUID format{};
    return Keep(m_decoder->GetFrame(index, &source)) && Keep(m_encoder->CreateNewFrame(&target, nullptr)) &&
           Keep(target->Initialize(nullptr)) && Keep(source->GetSize(&width, &height)) &&
           Keep(target->SetSize(width, height)) && Keep(source->GetResolution(&dpiX, &dpiY)) &&
           Keep(target->SetResolution(dpiX, dpiY)) && Keep(source->GetPixelFormat(&format)) &&
           Keep(target->SetPixelFormat(&format)) && Keep(target->WriteSource(source, nullptr)) &&
           Keep(target->Commit());
}

GUID WICHelper::GetDecoderContainerFormatGUID() { return m_decoderFormat; }

bool WICHelper::GetTargetStream(IStream** stream) {
    if (stream == nullptr) return Keep(E_POINTER);
    *stream = m_targetStream;
    return true;
}

HRESULT WICHelper::GetLastError() { return m_lastError; }

bool WICHelper::Keep(HRESULT result) {
    m_lastError = result;
    return SUCCEEDED(result);
}
