#include "Sax/SaxAttributes.h"

#include "Com/FaultInjection.h"

namespace OvPlatform {

namespace {

/// Without a document type declaration every attribute is of this type.
constexpr std::wstring_view attributeType = L"CDATA";

std::wstring_view TextOf(const wchar_t* text, int length) noexcept {
    return text == nullptr || length < 0 ? std::wstring_view()
                                         : std::wstring_view(text, static_cast<std::size_t>(length));
}

void GiveText(std::wstring_view text, const wchar_t** place, int* length) noexcept {
    *place = text.data();
    *length = static_cast<int>(text.size());
}

} // namespace

SaxAttributes::Item& SaxAttributes::Add() {
    if (m_count == m_items.size()) m_items.emplace_back();
    Item& item = m_items[m_count++];
    item.uri.clear();
    item.localName.clear();
    item.qName.clear();
    item.value.clear();
    return item;
}

HRESULT SaxAttributes::Give(int index, std::wstring Item::*part, const wchar_t** text, int* length) const {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (text == nullptr || length == nullptr) return E_POINTER;
    if (index < 0 || static_cast<std::size_t>(index) >= m_count) return E_INVALIDARG;
    GiveText(m_items[static_cast<std::size_t>(index)].*part, text, length);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getLength(int* length) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (length == nullptr) return E_POINTER;
    *length = static_cast<int>(m_count);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getURI(int index, const wchar_t** uri, int* uriLength) {
    return Give(index, &Item::uri, uri, uriLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getLocalName(int index, const wchar_t** name, int* nameLength) {
    return Give(index, &Item::localName, name, nameLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getQName(int index, const wchar_t** qName, int* qNameLength) {
    return Give(index, &Item::qName, qName, qNameLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getName(int index, const wchar_t** uri, int* uriLength,
                                                 const wchar_t** localName, int* localNameLength,
                                                 const wchar_t** qName, int* qNameLength) {
    HRESULT result = Give(index, &Item::uri, uri, uriLength);
    if (SUCCEEDED(result)) result = Give(index, &Item::localName, localName, localNameLength);
    if (SUCCEEDED(result)) result = Give(index, &Item::qName, qName, qNameLength);
    return result;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getIndexFromName(const wchar_t* uri, int uriLength,
                                                          const wchar_t* localName, int localNameLength,
                                                          int* index) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (localName == nullptr || index == nullptr) return E_POINTER;
    for (std::size_t at = 0; at < m_count; ++at) {
        if (m_items[at].localName != TextOf(localName, localNameLength) ||
            m_items[at].uri != TextOf(uri, uriLength))
            continue;
        *index = static_cast<int>(at);
        return S_OK;
    }
    return E_INVALIDARG;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getIndexFromQName(const wchar_t* qName, int qNameLength,
                                                           int* index) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (qName == nullptr || index == nullptr) return E_POINTER;
    for (std::size_t at = 0; at < m_count; ++at) {
        if (m_items[at].qName != TextOf(qName, qNameLength)) continue;
        *index = static_cast<int>(at);
        return S_OK;
    }
    return E_INVALIDARG;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getType(int index, const wchar_t** type, int* typeLength) {
    const HRESULT result = Give(index, &Item::value, type, typeLength);
    if (SUCCEEDED(result)) GiveText(attributeType, type, typeLength);
    return result;
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getTypeFromName(const wchar_t* uri, int uriLength,
                                                         const wchar_t* localName, int localNameLength,
                                                         const wchar_t** type, int* typeLength) {
    int index = 0;
    const HRESULT result = getIndexFromName(uri, uriLength, localName, localNameLength, &index);
    return FAILED(result) ? result : getType(index, type, typeLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getTypeFromQName(const wchar_t* qName, int qNameLength,
                                                          const wchar_t** type, int* typeLength) {
    int index = 0;
    const HRESULT result = getIndexFromQName(qName, qNameLength, &index);
    return FAILED(result) ? result : getType(index, type, typeLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getValue(int index, const wchar_t** value, int* valueLength) {
    return Give(index, &Item::value, value, valueLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getValueFromName(const wchar_t* uri, int uriLength,
                                                          const wchar_t* localName, int localNameLength,
                                                          const wchar_t** value, int* valueLength) {
    int index = 0;
    const HRESULT result = getIndexFromName(uri, uriLength, localName, localNameLength, &index);
    return FAILED(result) ? result : getValue(index, value, valueLength);
}

HRESULT STDMETHODCALLTYPE SaxAttributes::getValueFromQName(const wchar_t* qName, int qNameLength,
                                                           const wchar_t** value, int* valueLength) {
    int index = 0;
    const HRESULT result = getIndexFromQName(qName, qNameLength, &index);
    return FAILED(result) ? result : getValue(index, value, valueLength);
}

} // namespace OvPlatform
