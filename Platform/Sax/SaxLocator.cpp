#include "Sax/SaxLocator.h"

namespace OvPlatform {

namespace {

HRESULT GiveNoText(const wchar_t** place) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = L"";
    return S_OK;
}

} // namespace

HRESULT STDMETHODCALLTYPE SaxLocator::getColumnNumber(int* column) {
    if (column == nullptr) return E_POINTER;
    *column = m_parser != nullptr && m_parser->input != nullptr ? m_parser->input->col : 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxLocator::getLineNumber(int* line) {
    if (line == nullptr) return E_POINTER;
    *line = m_parser != nullptr && m_parser->input != nullptr ? m_parser->input->line : 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxLocator::getPublicId(const wchar_t** publicId) { return GiveNoText(publicId); }

HRESULT STDMETHODCALLTYPE SaxLocator::getSystemId(const wchar_t** systemId) { return GiveNoText(systemId); }

} // namespace OvPlatform
