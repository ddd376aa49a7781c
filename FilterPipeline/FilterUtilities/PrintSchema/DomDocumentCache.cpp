#include "PrintSchema/DomDocumentCache.h"

#include "PrintSchema/Bstr.h"

namespace {

HRESULT LoadFromStart(IStream* stream, IXMLDOMDocument2** out) {
    CComPtr<IXMLDOMDocument2> document;
    HRESULT hr = document.CoCreateInstance(__uuidof(DOMDocument60), nullptr, CLSCTX_ALL);
    if (FAILED(hr)) return hr;
    hr = stream->Seek({}, STREAM_SEEK_SET, nullptr);
    if (FAILED(hr)) return hr;
    hr = document->put_validateOnParse(VARIANT_FALSE);
    if (FAILED(hr)) return hr;
    hr = document->put_async(VARIANT_FALSE); // load is to say whether it parsed
    if (FAILED(hr)) return hr;

    VARIANT source;
    ::VariantInit(&source);
    source.vt = VT_UNKNOWN;
    source.punkVal = stream;
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    hr = document->load(source, &isLoaded);
    if (FAILED(hr)) return hr;
    if (isLoaded != VARIANT_TRUE) return E_FAIL;
    *out = document.Detach();
    return S_OK;
}

} // namespace

HRESULT CreateCopyOfIXMLDOMDocument(IXMLDOMDocument2* source, IXMLDOMDocument2** out) {
    if (source == nullptr || out == nullptr) return E_POINTER;
    *out = nullptr;
    CComPtr<IStream> stream;
    const HRESULT hr = source->QueryInterface(__uuidof(IStream), reinterpret_cast<void**>(&stream));
    if (FAILED(hr)) return hr;
    return LoadFromStart(stream, out);
}

HRESULT CreateIXMLDOMDocumentFromIStream(IStream* stream, IXMLDOMDocument2** out) {
    if (stream == nullptr || out == nullptr) return E_POINTER;
    *out = nullptr;
    return LoadFromStart(stream, out);
}

DomDocumentCache::DomDocumentCache() = default;
DomDocumentCache::DomDocumentCache(const DomDocumentCache& other) = default;
DomDocumentCache& DomDocumentCache::operator=(const DomDocumentCache& other) = default;
DomDocumentCache::~DomDocumentCache() = default;

HRESULT DomDocumentCache::TryGetPrintSchemaDomFromCache(const CXString& key, IXMLDOMDocument2** out) {
    if (out == nullptr) return E_INVALIDARG;
    *out = nullptr;
    const auto found = m_documents.find(key);
    if (found == m_documents.end()) return E_FAIL;
    // Deliberate: a copy that fails is a hit without content, not a miss.
    CreateCopyOfIXMLDOMDocument(found->second, out);
    return S_OK;
}

HRESULT DomDocumentCache::AddPrintSchemaDomToCache(const CXString& key, IXMLDOMDocument2* document) {
    if (document == nullptr) return E_INVALIDARG;
    CComPtr<IXMLDOMDocument2> copy;
    const HRESULT hr = CreateCopyOfIXMLDOMDocument(document, &copy);
    if (FAILED(hr)) return hr;
    m_documents.emplace(key, copy);
    return S_OK;
}

HRESULT DomDocumentCache::ClearCache() {
    m_documents.clear();
    return S_OK;
}
