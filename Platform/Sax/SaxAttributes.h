#pragma once

#include "Com/CountedObject.h"

#include <msxml6.h>

#include <string>
#include <vector>

namespace OvPlatform {

/// The attributes of a start tag, in source order, and declarations among them where the reader lists those
/// too. Belongs to the reader and tells of the tag only while its handler runs.
class SaxAttributes final : public CountedObject<ISAXAttributes> {
public:
    struct Item {
        std::wstring uri;
        std::wstring localName;
        std::wstring qName;
        std::wstring value;
    };

    SaxAttributes() = default;

    /// Room for the next tag's; texts keep their memory.
    void Clear() noexcept { m_count = 0; }
    Item& Add();

    HRESULT STDMETHODCALLTYPE getLength(int* length) override;
    HRESULT STDMETHODCALLTYPE getURI(int index, const wchar_t** uri, int* uriLength) override;
    HRESULT STDMETHODCALLTYPE getLocalName(int index, const wchar_t** name, int* nameLength) override;
    HRESULT STDMETHODCALLTYPE getQName(int index, const wchar_t** qName, int* qNameLength) override;
    HRESULT STDMETHODCALLTYPE getName(int index, const wchar_t** uri, int* uriLength,
                                      const wchar_t** localName, int* localNameLength, const wchar_t** qName,
                                      int* qNameLength) override;
    HRESULT STDMETHODCALLTYPE getIndexFromName(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                               int localNameLength, int* index) override;
    HRESULT STDMETHODCALLTYPE getIndexFromQName(const wchar_t* qName, int qNameLength, int* index) override;
    HRESULT STDMETHODCALLTYPE getType(int index, const wchar_t** type, int* typeLength) override;
    HRESULT STDMETHODCALLTYPE getTypeFromName(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                              int localNameLength, const wchar_t** type,
                                              int* typeLength) override;
    HRESULT STDMETHODCALLTYPE getTypeFromQName(const wchar_t* qName, int qNameLength, const wchar_t** type,
                                               int* typeLength) override;
    HRESULT STDMETHODCALLTYPE getValue(int index, const wchar_t** value, int* valueLength) override;
    HRESULT STDMETHODCALLTYPE getValueFromName(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                               int localNameLength, const wchar_t** value,
                                               int* valueLength) override;
    HRESULT STDMETHODCALLTYPE getValueFromQName(const wchar_t* qName, int qNameLength, const wchar_t** value,
                                                int* valueLength) override;

private:
    ~SaxAttributes() override = default;
    HRESULT Give(int index, std::wstring Item::*part, const wchar_t** text, int* length) const;

    std::vector<Item> m_items;
    std::size_t m_count = 0;
};

} // namespace OvPlatform
