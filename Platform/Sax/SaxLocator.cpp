#include "Sax/SaxLocator.h"

namespace OvPlatform {

namespace {

HRESULT GiveNoText(const wchar_t** place) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = L"";
    return S_OK;
}

} // namespace

HRESULT STDMETHODCALLTYPE SaxLocator::QueryInterface(REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (riid != __uuidof(IUnknown) && riid != __uuidof(ISAXLocator)) return E_NOINTERFACE;
    *object = static_cast<ISAXLocator*>(this);
    AddRef();
    return S_OK;
}

ULONG STDMETHODCALLTYPE SaxLocator::Release() {
    const ULONG left = m_references.Decrement();
    if (left == 0) delete this;
    return left;
}

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
