#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/SafeCoInitialize.h>

#include <windows.h>
#include <atlcomcli.h>
#include <wincodec.h>

/// Writes a picture again in another container, for pages that cannot hold the one that it is in. An object
/// belongs to the thread that made it, which it keeps in a single-threaded apartment. No operation throws but
/// for memory that is out; each failure is kept as the last error.
class OV_FILTER_UTILITIES_API WICHelper {
public:
    /// Without a source until InitializeData.
    WICHelper() = default;
    /// The bytes stay the caller's, and stay where they are as long as this object.
    WICHelper(void* buffer, ULONG size);
    explicit WICHelper(CXString file);
    ~WICHelper();
    WICHelper(const WICHelper&) = delete;
    WICHelper& operator=(const WICHelper&) = delete;

    /// Another source, in memory, and Initialize for it.
    bool InitializeData(void* buffer, ULONG size);

    /// Opens the source. Deliberate: false the first time, also on success, and true afterwards;
    /// IsInitialized tells.
    bool Initialize();
    bool IsInitialized();

    /// Writes the source's pictures to a new stream in memory; for a container that holds one (all but GIF
    /// and TIFF) the first of them. False unless initialised.
    bool ConvertImage(const GUID& containerFormat);

    /// Of the source; GUID_NULL before it is opened.
    GUID GetDecoderContainerFormatGUID();

    /// What was written, from its beginning; null before. Deliberate: no reference is added, so the stream
    /// goes with this object or with the next conversion. False for null.
    bool GetTargetStream(IStream** stream);

    HRESULT GetLastError();

private:
    /// Keeps the result, and says whether it is a success.
    bool Keep(HRESULT result);
    bool Open();
    bool ConvertFrames();
    bool ConvertFrame(UINT index);

    SafeCoInitialize m_apartment;
    HRESULT m_lastError = S_OK;
    CXString m_file;
    void* m_buffer = nullptr;
    ULONG m_bufferSize = 0;
    bool m_isInitialized = false;
    CComPtr<IWICImagingFactory> m_factory;
    CComPtr<IWICStream> m_stream;
    CComPtr<IStream> m_targetStream;
    CComPtr<IWICBitmapDecoder> m_decoder;
    GUID m_decoderFormat{};
    CComPtr<IWICBitmapEncoder> m_encoder;
    GUID m_targetFormat{};
};
