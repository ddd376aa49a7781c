#include "Dom/DomParseError.h"

#include "Com/FaultInjection.h"
#include "Xml/TextConversion.h"

namespace OvPlatform {

namespace {

HRESULT GiveOrNothing(BSTR* place, const std::string& text) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    *place = nullptr;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    return text.empty() ? S_FALSE : GiveText(place, text);
}

HRESULT GiveNumber(LONG* place, LONG number) noexcept {
    if (place == nullptr) return E_INVALIDARG;
    *place = number;
    return S_OK;
}

} // namespace

HRESULT STDMETHODCALLTYPE DomParseError::InterfaceSupportsErrorInfo(REFIID riid) {
    return riid == __uuidof(IXMLDOMParseError) ? S_OK : S_FALSE;
}

HRESULT STDMETHODCALLTYPE DomParseError::get_errorCode(LONG* errorCode) {
    const HRESULT result = GiveNumber(errorCode, m_failure.code);
    return result == S_OK && m_failure.code == S_OK ? S_FALSE : result;
}

HRESULT STDMETHODCALLTYPE DomParseError::get_url(BSTR* url) { return GiveOrNothing(url, m_failure.url); }

HRESULT STDMETHODCALLTYPE DomParseError::get_reason(BSTR* reason) {
    return GiveOrNothing(reason, m_failure.reason);
}

HRESULT STDMETHODCALLTYPE DomParseError::get_srcText(BSTR* source) {
    return GiveOrNothing(source, m_failure.source);
}

HRESULT STDMETHODCALLTYPE DomParseError::get_line(LONG* line) { return GiveNumber(line, m_failure.line); }

HRESULT STDMETHODCALLTYPE DomParseError::get_linepos(LONG* position) {
    return GiveNumber(position, m_failure.column);
}

HRESULT STDMETHODCALLTYPE DomParseError::get_filepos(LONG* position) {
    return GiveNumber(position, m_failure.position);
}

HRESULT STDMETHODCALLTYPE DomParseError::get_errorXPath(BSTR* xpath) { return GiveOrNothing(xpath, {}); }

HRESULT STDMETHODCALLTYPE DomParseError::get_allErrors(IXMLDOMParseErrorCollection** allErrors) {
    if (allErrors == nullptr) return E_INVALIDARG;
    *allErrors = nullptr;
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE DomParseError::errorParameters(LONG, BSTR* parameter) {
    const HRESULT result = GiveOrNothing(parameter, {});
    return result == S_FALSE ? E_FAIL : result;
}

HRESULT STDMETHODCALLTYPE DomParseError::get_errorParametersCount(LONG* count) {
    return GiveNumber(count, 0);
}

} // namespace OvPlatform
