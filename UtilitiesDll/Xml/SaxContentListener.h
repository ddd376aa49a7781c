#pragma once

#include <windows.h>
#include <msxml6.h>

/// A content handler that takes every event and does nothing, for derived classes that listen to some of
/// them. Not counted: it lives on its owner's stack, and the owner outlives the reader that refers to it.
class SaxContentListener : public ISAXContentHandler {
public:
    SaxContentListener() = default;
    SaxContentListener(const SaxContentListener&) = delete;
    SaxContentListener& operator=(const SaxContentListener&) = delete;

    /// Answers for IUnknown and ISAXContentHandler.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool isKnown = interfaceId == __uuidof(IUnknown) || interfaceId == __uuidof(ISAXContentHandler);
        *object = isKnown ? static_cast<ISAXContentHandler*>(this) : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE endDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*, int,
                                           ISAXAttributes*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                                         int) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t*, int) override { return S_OK; }

protected:
    virtual ~SaxContentListener() = default;
};
