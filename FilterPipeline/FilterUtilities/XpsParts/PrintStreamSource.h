#pragma once

#include <windows.h>
#include <atlcomcli.h>
#include <filterpipeline.h>

/// A part's stream as readers of markup take it: they read on as they go, so that a page is never in memory
/// as a whole. Not counted: it lives on its owner's stack, for the time of one parse.
class PrintStreamSource final : public ISequentialStream {
public:
    explicit PrintStreamSource(IPrintReadStream* stream) : m_stream(stream) {}
    PrintStreamSource(const PrintStreamSource&) = delete;
    PrintStreamSource& operator=(const PrintStreamSource&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool isKnown = riid == __uuidof(IUnknown) || riid == __uuidof(ISequentialStream);
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
        ULONG got = 0;
        BOOL isAtEnd = FALSE;
        const HRESULT hr = m_stream->ReadBytes(buffer, count, &got, &isAtEnd);
        if (read != nullptr) *read = got;
        return hr;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }

private:
    CComPtr<IPrintReadStream> m_stream;
};
