#pragma once

#include "ComSupport/CUnknown.h"
#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <filterpipeline.h>
#include <msxml6.h>

/// Base of the handlers that rewrite markup as it streams through. Every event does nothing and succeeds, so
/// that a handler overrides those that it needs.
class OV_FILTER_UTILITIES_API CSaxHandler : public CUnknown<ISAXContentHandler> {
public:
    CSaxHandler();

    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator* locator) override;
    HRESULT STDMETHODCALLTYPE startDocument() override;
    HRESULT STDMETHODCALLTYPE endDocument() override;
    HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t* prefix, int prefixLength, const wchar_t* uri,
                                                 int uriLength) override;
    HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t* prefix, int prefixLength) override;
    HRESULT STDMETHODCALLTYPE startElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                           int localNameLength, const wchar_t* qualifiedName,
                                           int qualifiedNameLength, ISAXAttributes* attributes) override;
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                         int localNameLength, const wchar_t* qualifiedName,
                                         int qualifiedNameLength) override;
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override;
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t* text, int length) override;
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t* target, int targetLength,
                                                    const wchar_t* data, int dataLength) override;
    HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t* name, int length) override;

protected:
    /// Replaces the BSTR by one in which the five characters that markup reserves are entities. A null string
    /// stays.
    HRESULT EscapeEntity(BSTR* text);

    // Write the text as UTF-8. An empty text is E_FAIL. A short write is not looked at.
    HRESULT WriteToPrintStream(CXString* text, IPrintWriteStream* stream);
    HRESULT WriteToPrintStream(CXString* text, ISequentialStream* stream);
};
