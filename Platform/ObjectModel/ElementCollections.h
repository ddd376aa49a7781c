#pragma once

#include "ObjectModel/ElementObject.h"

namespace OvPlatform {

/// The visuals of a page or a canvas.
class VisualCollection final : public PartOfElement<IXpsOMVisualCollection> {
public:
    using PartOfElement::PartOfElement;

    HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMVisual** visual) override;
    HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMVisual* visual) override;
    HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) override;
    HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMVisual* visual) override;
    HRESULT STDMETHODCALLTYPE Append(IXpsOMVisual* visual) override;
};

/// Resources by their keys.
class DictionaryObject final : public ElementObject<IXpsOMDictionary> {
public:
    DictionaryObject() noexcept : ElementObject(ElementKind::ResourceDictionary) {}
    DictionaryObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : ElementObject(ElementKind::ResourceDictionary, std::move(source), index) {}

    /// Of a dictionary that is a part of its own. Not counted.
    IUnknown* OwnerOfPart() const noexcept { return m_ownerOfPart; }
    void BelongTo(IUnknown* owner) noexcept { m_ownerOfPart = owner; }
    bool IsOwnedByPart() const noexcept override { return m_ownerOfPart != nullptr; }

    HRESULT STDMETHODCALLTYPE GetOwner(IUnknown** owner) override;
    HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, LPWSTR* key, IXpsOMShareable** entry) override;
    HRESULT STDMETHODCALLTYPE GetByKey(LPCWSTR key, IXpsOMShareable* before,
                                       IXpsOMShareable** entry) override;
    HRESULT STDMETHODCALLTYPE GetIndex(IXpsOMShareable* entry, UINT32* index) override;
    HRESULT STDMETHODCALLTYPE Append(LPCWSTR key, IXpsOMShareable* entry) override;
    HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, LPCWSTR key, IXpsOMShareable* entry) override;
    HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) override;
    HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, LPCWSTR key, IXpsOMShareable* entry) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMDictionary** dictionary) override;

private:
    bool IsChild(ElementKind kind) const override;
    std::uint32_t IndexOfEntry(IXpsOMShareable* entry);
    /// `replaced`: the entry that the key may be that of; noElement.
    std::string NewKey(LPCWSTR key, std::uint32_t replaced);
    void Insert(std::uint32_t index, LPCWSTR key, IXpsOMShareable* entry);
    void Remove(std::uint32_t index);

    IUnknown* m_ownerOfPart = nullptr;
};

// The dictionaries of a page or a canvas: one that stands in it, or one that is a part.
HRESULT GetElementDictionary(PageElement& element, IXpsOMDictionary** dictionary);
HRESULT GetLocalDictionary(PageElement& element, IXpsOMDictionary** dictionary);
HRESULT GetDictionaryPart(PageElement& element, IXpsOMRemoteDictionaryResource** part);
HRESULT SetDictionaryPart(PageElement& element, IXpsOMRemoteDictionaryResource* part);

} // namespace OvPlatform
