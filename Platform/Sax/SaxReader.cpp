#include "Sax/SaxReader.h"

#include "Com/ClassTable.h"
#include "Com/Guarded.h"
#include "Xml/DocumentBytes.h"
#include "Xml/TextConversion.h"

#include <new>
#include <utility>

namespace OvPlatform {

namespace {

const ClassRegistration registration(CLSID_SAXXMLReader60, &SaxReader::Create);

constexpr std::wstring_view namespacePrefixesName = L"http://xml.org/sax/features/namespace-prefixes";
constexpr std::wstring_view lexicalHandlerName = L"http://xml.org/sax/properties/lexical-handler";
constexpr std::wstring_view maxElementDepthName = L"max-element-depth";

struct FixedFeature {
    std::wstring_view name;
    bool value;
};
constexpr FixedFeature fixedFeatures[] = {
    {L"http://xml.org/sax/features/namespaces", true},
    {L"http://xml.org/sax/features/external-general-entities", false},
    {L"http://xml.org/sax/features/external-parameter-entities", false},
    {L"http://xml.org/sax/features/lexical-handler/parameter-entities", false},
    {L"prohibit-dtd", true},
    {L"schema-validation", false},
    {L"exhaustive-errors", false},
    {L"server-http-request", false},
    {L"use-inline-schema", false},
    {L"preserve-system-identifiers", false},
};

const FixedFeature* Find(std::wstring_view name) noexcept {
    for (const FixedFeature& feature : fixedFeatures)
        if (feature.name == name) return &feature;
    return nullptr;
}

std::wstring_view NameOf(const wchar_t* name) noexcept {
    return name != nullptr ? std::wstring_view(name) : std::wstring_view();
}

VARIANT_BOOL Flag(bool value) noexcept { return value ? VARIANT_TRUE : VARIANT_FALSE; }

template <class T>
HRESULT Give(const CComPtr<T>& handler, T** place) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = handler;
    if (*place == nullptr) return S_FALSE;
    (*place)->AddRef();
    return S_OK;
}

template <class T>
HRESULT GiveNothing(T** place) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    return S_FALSE;
}

} // namespace

HRESULT SaxReader::Create(REFIID riid, void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    auto* reader = new (std::nothrow) SaxReader;
    if (reader == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = reader->QueryInterface(riid, object);
    reader->Release();
    return result;
}

HRESULT STDMETHODCALLTYPE SaxReader::getFeature(const wchar_t* name, VARIANT_BOOL* value) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (value == nullptr) return E_POINTER;
    if (NameOf(name) == namespacePrefixesName) {
        *value = Flag(m_handlers.namespacePrefixes);
        return S_OK;
    }
    const FixedFeature* feature = Find(NameOf(name));
    if (feature == nullptr) return E_INVALIDARG;
    *value = Flag(feature->value);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxReader::putFeature(const wchar_t* name, VARIANT_BOOL value) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    const bool wanted = value != VARIANT_FALSE;
    if (NameOf(name) == namespacePrefixesName) {
        m_handlers.namespacePrefixes = wanted;
        return S_OK;
    }
    const FixedFeature* feature = Find(NameOf(name));
    if (feature == nullptr) return E_INVALIDARG;
    return feature->value == wanted ? S_OK : E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE SaxReader::getProperty(const wchar_t* name, VARIANT* value) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (value == nullptr) return E_POINTER;
    ::VariantInit(value);
    if (NameOf(name) == maxElementDepthName) {
        value->vt = VT_I4;
        value->lVal = m_handlers.maxElementDepth;
        return S_OK;
    }
    if (NameOf(name) != lexicalHandlerName) return E_INVALIDARG;
    value->vt = VT_UNKNOWN;
    value->punkVal = m_handlers.lexical;
    if (value->punkVal != nullptr) value->punkVal->AddRef();
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxReader::putProperty(const wchar_t* name, VARIANT value) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    const VARIANT& given = DocumentBytes::Value(value);
    if (NameOf(name) == maxElementDepthName) {
        if (given.vt != VT_I4 || given.lVal < 0) return E_INVALIDARG;
        m_handlers.maxElementDepth = given.lVal;
        return S_OK;
    }
    if (NameOf(name) != lexicalHandlerName) return E_INVALIDARG;
    CComPtr<ISAXLexicalHandler> handler;
    if (given.vt != VT_EMPTY && given.vt != VT_NULL) {
        if (given.vt != VT_UNKNOWN && given.vt != VT_DISPATCH) return E_INVALIDARG;
        if (given.punkVal != nullptr && FAILED(given.punkVal->QueryInterface(&handler))) return E_NOINTERFACE;
    }
    m_handlers.lexical = handler;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxReader::getEntityResolver(ISAXEntityResolver** resolver) {
    return GiveNothing(resolver);
}

/// There are no entities to be resolved.
HRESULT STDMETHODCALLTYPE SaxReader::putEntityResolver(ISAXEntityResolver* resolver) {
    return resolver == nullptr ? S_OK : E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE SaxReader::getContentHandler(ISAXContentHandler** handler) {
    return Give(m_handlers.content, handler);
}

HRESULT STDMETHODCALLTYPE SaxReader::putContentHandler(ISAXContentHandler* handler) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    m_handlers.content = handler;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxReader::getDTDHandler(ISAXDTDHandler** handler) { return GiveNothing(handler); }

/// There are no document type declarations to be told of.
HRESULT STDMETHODCALLTYPE SaxReader::putDTDHandler(ISAXDTDHandler* handler) {
    return handler == nullptr ? S_OK : E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE SaxReader::getErrorHandler(ISAXErrorHandler** handler) {
    return Give(m_handlers.errors, handler);
}

HRESULT STDMETHODCALLTYPE SaxReader::putErrorHandler(ISAXErrorHandler* handler) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    m_handlers.errors = handler;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxReader::getBaseURL(const wchar_t** url) { return GiveNothing(url); }
HRESULT STDMETHODCALLTYPE SaxReader::putBaseURL(const wchar_t*) { return E_NOTIMPL; }
HRESULT STDMETHODCALLTYPE SaxReader::getSecureBaseURL(const wchar_t** url) { return GiveNothing(url); }
HRESULT STDMETHODCALLTYPE SaxReader::putSecureBaseURL(const wchar_t*) { return E_NOTIMPL; }

/// One parse at a time: a handler must not start another on its own reader.
template <class Work>
HRESULT SaxReader::Parsing(Work&& work) noexcept {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (std::exchange(m_isParsing, true)) return E_FAIL;
    const CComPtr<ISAXXMLReader> stays(this);
    const HRESULT result = OrOutOfMemory([&] {
        SaxParse parse(m_handlers);
        return work(parse);
    });
    m_isParsing = false;
    return result;
}

HRESULT STDMETHODCALLTYPE SaxReader::parse(VARIANT input) {
    return Parsing([&](SaxParse& parse) -> HRESULT {
        const VARIANT& value = DocumentBytes::Value(input);
        std::string text;
        if (value.vt == VT_BSTR) {
            if (AppendUtf8(text, ViewOf(value.bstrVal))) return parse.FromText(text);
            XmlFailure failure;
            failure.code = XML_E_INVALID_UNICODE;
            failure.reason = "The text holds half of a surrogate pair";
            return parse.Fail(failure);
        }
        CComPtr<ISequentialStream> stream;
        HRESULT result = DocumentBytes::FindStream(value, stream);
        if (SUCCEEDED(result) && stream) return parse.FromStream(std::move(stream));
        if (SUCCEEDED(result)) result = DocumentBytes::Read(value, text);
        return FAILED(result) ? result : parse.FromBytes(text);
    });
}

HRESULT STDMETHODCALLTYPE SaxReader::parseURL(const wchar_t* url) {
    return Parsing([&](SaxParse& parse) -> HRESULT {
        if (url == nullptr) return E_INVALIDARG;
        const CComBSTR path(url);
        std::string bytes;
        XmlFailure failure;
        failure.code = DocumentBytes::ReadFile(path, bytes, failure.reason);
        return FAILED(failure.code) ? parse.Fail(failure) : parse.FromBytes(bytes);
    });
}

} // namespace OvPlatform
