#pragma once

// Documents as the files of this target make them.

#include <atlcomcli.h>
#include <msxml6.h>

#include <cstdlib>
#include <string_view>

/// With the prefix p for queries.
inline CComPtr<IXMLDOMDocument3> NewDocument() {
    CComPtr<IXMLDOMDocument3> document;
    if (FAILED(document.CoCreateInstance(__uuidof(DOMDocument60)))) std::abort();
    document->setProperty(CComBSTR(L"SelectionNamespaces"), CComVariant(L"xmlns:p='urn:p'"));
    // Edits may nest more deeply than a text may.
    document->setProperty(CComBSTR(L"MaxElementDepth"), CComVariant(100000));
    return document;
}

inline CComPtr<IStream> StreamOf(std::string_view bytes) {
    CComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr)) ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        std::abort();
    return stream;
}

inline bool Load(IXMLDOMDocument* document, IUnknown* source) {
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    return document->load(CComVariant(source), &isLoaded) == S_OK && isLoaded == VARIANT_TRUE;
}
