#pragma once

#include "Com/CountedObject.h"
#include "ObjectModel/ModelCall.h"
#include "ObjectModel/PartObject.h"
#include "Package/PartName.h"

#include <atlcomcli.h>
#include <xpsobjectmodel.h>

#include <functional>
#include <limits>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// A list of objects as the model publishes them. An index behind the end is XPS_E_INDEX_OUT_OF_RANGE.
template <class Interface, class Item>
class Collection : public CountedObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override {
        if (count == nullptr) return E_POINTER;
        *count = static_cast<UINT32>(m_items.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, Item** item) override {
        return ModelCall(item, [&] {
            if (index >= m_items.size()) return XPS_E_INDEX_OUT_OF_RANGE;
            *item = CComPtr<Item>(m_items[index]).Detach();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, Item* item) override {
        if (item == nullptr) return E_POINTER;
        return ModelCall([&] {
            if (index > m_items.size() || m_items.size() >= (std::numeric_limits<UINT32>::max)())
                return XPS_E_INDEX_OUT_OF_RANGE;
            m_items.emplace(m_items.begin() + index, item); // which may find memory out, before all else
            if (const HRESULT result = Take(item); FAILED(result)) {
                m_items.erase(m_items.begin() + index);
                return result;
            }
            NoteChange();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) override {
        return ModelCall([&] {
            if (index >= m_items.size()) return XPS_E_INDEX_OUT_OF_RANGE;
            LetGo(m_items[index]);
            m_items.erase(m_items.begin() + index);
            NoteChange();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, Item* item) override {
        if (item == nullptr) return E_POINTER;
        return ModelCall([&] {
            if (index >= m_items.size()) return XPS_E_INDEX_OUT_OF_RANGE;
            if (m_items[index] == item) return S_OK;
            if (const HRESULT result = Take(item); FAILED(result)) return result;
            LetGo(m_items[index]);
            m_items[index] = item;
            NoteChange();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Append(Item* item) override {
        return InsertAt(static_cast<UINT32>(m_items.size()), item);
    }

    const std::vector<CComPtr<Item>>& Items() const { return m_items; }
    /// Whether it has been edited.
    bool IsChanged() const { return m_isChanged; }
    /// While the list is read from a package.
    void Fill(CComPtr<Item> item) { m_items.push_back(std::move(item)); }

protected:
    /// Before an item comes in; a failure keeps it out.
    virtual HRESULT Take(Item*) { return S_OK; }
    /// As an item goes.
    virtual void LetGo(Item*) {}

private:
    void NoteChange() {
        m_isChanged = true;
        CountRename();
    }

    std::vector<CComPtr<Item>> m_items;
    bool m_isChanged = false;
};

/// Resources that are looked up by their names.
template <class Interface, class Item>
class ResourceCollection final : public Collection<Interface, Item> {
public:
    /// Finds a resource by what it is called in the package that is read, whatever its name is now. Asked
    /// before the list; may give null.
    using AsStored = std::function<CComPtr<Item>(const std::string& name)>;

    ResourceCollection() = default;
    explicit ResourceCollection(AsStored asStored) : m_asStored(std::move(asStored)) {}

    /// The first of that name; null, with S_OK, where there is none.
    HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri* uri, Item** item) override {
        return ModelCall(item, [&] {
            if (uri == nullptr) return E_POINTER;
            const std::string name = PartNameOf(uri);
            CComPtr<Item> part = m_asStored ? m_asStored(name) : CComPtr<Item>();
            if (!part) part = Listed(name);
            *item = part.Detach();
            return S_OK;
        });
    }

private:
    CComPtr<Item> Listed(const std::string& name) {
        Index();
        const auto found = m_index.find(name);
        return found == m_index.end() ? CComPtr<Item>() : this->Items()[found->second];
    }
    void Index() {
        if (m_isIndexed && m_renames == RenameCount()) return;
        const std::size_t renames = RenameCount();
        m_index.clear();
        for (std::size_t i = 0; i < this->Items().size(); ++i)
            m_index.try_emplace(PartNameOf(this->Items()[i]), i);
        m_renames = renames;
        m_isIndexed = true;
    }

    AsStored m_asStored;
    std::unordered_map<std::string, std::size_t, PartNameHash, PartNameEqual> m_index;
    std::size_t m_renames = 0;
    bool m_isIndexed = false;
};

using FontCollection = ResourceCollection<IXpsOMFontResourceCollection, IXpsOMFontResource>;
using ImageCollection = ResourceCollection<IXpsOMImageResourceCollection, IXpsOMImageResource>;
using ColorProfileCollection =
    ResourceCollection<IXpsOMColorProfileResourceCollection, IXpsOMColorProfileResource>;
using DictionaryCollection =
    ResourceCollection<IXpsOMRemoteDictionaryResourceCollection, IXpsOMRemoteDictionaryResource>;
using SignatureBlockCollection =
    ResourceCollection<IXpsOMSignatureBlockResourceCollection, IXpsOMSignatureBlockResource>;

/// The resources of a page or of a dictionary, by kind.
class PartResources final : public CountedObject<IXpsOMPartResources> {
public:
    PartResources();
    PartResources(FontCollection::AsStored fonts, ImageCollection::AsStored images,
                  ColorProfileCollection::AsStored profiles, DictionaryCollection::AsStored dictionaries);

    HRESULT STDMETHODCALLTYPE GetFontResources(IXpsOMFontResourceCollection** fonts) override;
    HRESULT STDMETHODCALLTYPE GetImageResources(IXpsOMImageResourceCollection** images) override;
    HRESULT STDMETHODCALLTYPE
    GetColorProfileResources(IXpsOMColorProfileResourceCollection** profiles) override;
    HRESULT STDMETHODCALLTYPE
    GetRemoteDictionaryResources(IXpsOMRemoteDictionaryResourceCollection** dictionaries) override;

    /// Under its kind; one that has none of these is passed over.
    void Fill(IXpsOMResource* resource);

    const FontCollection& Fonts() const { return *m_fonts; }

private:
    CComPtr<FontCollection> m_fonts;
    CComPtr<ImageCollection> m_images;
    CComPtr<ColorProfileCollection> m_profiles;
    CComPtr<DictionaryCollection> m_dictionaries;
};

/// Null for a place is E_POINTER.
HRESULT CreatePartUriCollection(IXpsOMPartUriCollection** uris);

/// Names in their order. The caller of GetAt frees what it gets with CoTaskMemFree.
HRESULT CreateNameCollection(std::vector<std::string> names, IXpsOMNameCollection** collection);

/// A text for the caller to free with CoTaskMemFree. Throws std::bad_alloc.
LPWSTR NewTaskText(std::wstring_view text);

} // namespace OvPlatform
