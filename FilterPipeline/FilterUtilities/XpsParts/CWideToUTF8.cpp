#include "XpsParts/CWideToUTF8.h"

#include "ComSupport/ThrowHresult.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <cstddef>
#include <new>

CWideToUTF8::CWideToUTF8(CXString* text) : m_text(text) {
    const OperationScope operation("CWideToUTF8::CWideToUTF8");
    if (text == nullptr) ThrowComException(E_POINTER);
}

CWideToUTF8::~CWideToUTF8() = default;

HRESULT CWideToUTF8::GetBuffer(void** bytes, ULONG* count) {
    if (bytes == nullptr || count == nullptr) return E_POINTER;
    FreeBuffer();
    try {
        const wchar_t* const text = *m_text;
        const int length = m_text->GetLength();
        const int size = WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
        if (size < 1) return E_FAIL;
        m_buffer.reset(new (std::nothrow) char[static_cast<std::size_t>(size)]);
        if (!m_buffer) return E_OUTOFMEMORY;
        const int written =
            WideCharToMultiByte(CP_UTF8, 0, text, length, m_buffer.get(), size, nullptr, nullptr);
        if (written < 1) return E_FAIL;
        *bytes = m_buffer.get();
        *count = static_cast<ULONG>(written);
        return S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

HRESULT CWideToUTF8::WriteToPrintStream(IPrintWriteStream* stream) {
    if (stream == nullptr) return E_POINTER;
    void* bytes = nullptr;
    ULONG count = 0;
    const HRESULT hr = GetBuffer(&bytes, &count);
    if (FAILED(hr)) return hr;
    ULONG written = 0;
    return stream->WriteBytes(bytes, count, &written);
}

HRESULT CWideToUTF8::WriteToPrintStream(CXString* text, IPrintWriteStream* stream) {
    if (text == nullptr || stream == nullptr) return E_POINTER;
    return CWideToUTF8(text).WriteToPrintStream(stream);
}

void CWideToUTF8::FreeBuffer() { m_buffer.reset(); }
