#include "XpsParts/CSaxHandler.h"

#include "XpsParts/CWideToUTF8.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <array>

namespace {

struct Entity {
    const wchar_t* character;
    const wchar_t* entity;
};

// The ampersand comes first, or those of the other entities would be escaped again.
constexpr std::array<Entity, 5> entities{{
    {L"&", L"&amp;"},
    {L"<", L"&lt;"},
    {L">", L"&gt;"},
    {L"\"", L"&quot;"},
    {L"'", L"&apos;"},
}};

} // namespace

CSaxHandler::CSaxHandler() : CUnknown<ISAXContentHandler>(__uuidof(ISAXContentHandler)) {}

HRESULT CSaxHandler::putDocumentLocator(ISAXLocator*) { return S_OK; }

HRESULT CSaxHandler::startDocument() { return S_OK; }

HRESULT CSaxHandler::endDocument() { return S_OK; }

HRESULT CSaxHandler::startPrefixMapping(const wchar_t*, int, const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::endPrefixMapping(const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*, int,
                                  ISAXAttributes*) {
    return S_OK;
}

HRESULT CSaxHandler::endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*, int) {
    return S_OK;
}

HRESULT CSaxHandler::characters(const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::ignorableWhitespace(const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::processingInstruction(const wchar_t*, int, const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::skippedEntity(const wchar_t*, int) { return S_OK; }

HRESULT CSaxHandler::EscapeEntity(BSTR* text) {
    if (text == nullptr) return E_POINTER;
    if (SysStringLen(*text) == 0) return S_OK;
    try {
        CXString escaped(*text);
        for (const Entity& row : entities)
            escaped.Replace(row.character, row.entity);
        SysFreeString(*text);
        *text = SysAllocString(escaped);
        return *text ? S_OK : E_OUTOFMEMORY;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

HRESULT CSaxHandler::WriteToPrintStream(CXString* text, IPrintWriteStream* stream) {
    if (text == nullptr || stream == nullptr) return E_POINTER;
    return CWideToUTF8::WriteToPrintStream(text, stream);
}

HRESULT CSaxHandler::WriteToPrintStream(CXString* text, ISequentialStream* stream) {
    if (text == nullptr || stream == nullptr) return E_POINTER;
    CWideToUTF8 converter(text);
    void* bytes = nullptr;
    ULONG count = 0;
    const HRESULT hr = converter.GetBuffer(&bytes, &count);
    if (FAILED(hr)) return hr;
    ULONG written = 0;
    return stream->Write(bytes, count, &written);
}
