#pragma once

#include "Com/CountedObject.h"
#include "Sax/SaxParse.h"

#include <atlcomcli.h>
#include <msxml6.h>

namespace OvPlatform {

/// Reads a text and calls handlers. No document type declarations and no network, as for documents.
class SaxReader final : public CountedObject<ISAXXMLReader> {
public:
    SaxReader() = default;

    /// For CoCreateInstance.
    static HRESULT Create(REFIID riid, void** object) noexcept;

    /// E_INVALIDARG for an unknown name; E_NOTIMPL to switch on what is not supported.
    HRESULT STDMETHODCALLTYPE getFeature(const wchar_t* name, VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE putFeature(const wchar_t* name, VARIANT_BOOL value) override;
    /// The lexical handler, and max-element-depth.
    HRESULT STDMETHODCALLTYPE getProperty(const wchar_t* name, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE putProperty(const wchar_t* name, VARIANT value) override;
    HRESULT STDMETHODCALLTYPE getEntityResolver(ISAXEntityResolver** resolver) override;
    HRESULT STDMETHODCALLTYPE putEntityResolver(ISAXEntityResolver* resolver) override;
    HRESULT STDMETHODCALLTYPE getContentHandler(ISAXContentHandler** handler) override;
    HRESULT STDMETHODCALLTYPE putContentHandler(ISAXContentHandler* handler) override;
    HRESULT STDMETHODCALLTYPE getDTDHandler(ISAXDTDHandler** handler) override;
    HRESULT STDMETHODCALLTYPE putDTDHandler(ISAXDTDHandler* handler) override;
    HRESULT STDMETHODCALLTYPE getErrorHandler(ISAXErrorHandler** handler) override;
    HRESULT STDMETHODCALLTYPE putErrorHandler(ISAXErrorHandler* handler) override;
    HRESULT STDMETHODCALLTYPE getBaseURL(const wchar_t** url) override;
    HRESULT STDMETHODCALLTYPE putBaseURL(const wchar_t* url) override;
    HRESULT STDMETHODCALLTYPE getSecureBaseURL(const wchar_t** url) override;
    HRESULT STDMETHODCALLTYPE putSecureBaseURL(const wchar_t* url) override;
    /// A text (string), bytes, a stream or a document. A handler's failure ends the parse and is the result.
    HRESULT STDMETHODCALLTYPE parse(VARIANT input) override;
    HRESULT STDMETHODCALLTYPE parseURL(const wchar_t* url) override;

private:
    ~SaxReader() override = default;
    template <class Work>
    HRESULT Parsing(Work&& work) noexcept;

    SaxHandlers m_handlers;
    bool m_isParsing = false;
};

} // namespace OvPlatform
