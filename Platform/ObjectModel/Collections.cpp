#include "ObjectModel/Collections.h"

#include "Xml/TextConversion.h"

#include <objbase.h>

#include <algorithm>

namespace OvPlatform {

namespace {

template <class Object>
CComPtr<Object> Owned(Object* object) {
    CComPtr<Object> owned;
    owned.Attach(object);
    return owned;
}

template <class Interface, class Object>
HRESULT Give(const CComPtr<Object>& collection, Interface** place) {
    return ModelCall(place, [&] {
        *place = CComPtr<Interface>(collection.p).Detach();
        return S_OK;
    });
}

using PartUriCollection = Collection<IXpsOMPartUriCollection, IOpcPartUri>;

class NameCollection final : public CountedObject<IXpsOMNameCollection> {
public:
    explicit NameCollection(std::vector<std::string> names) : m_names(std::move(names)) {}

    HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override {
        if (count == nullptr) return E_POINTER;
        *count = static_cast<UINT32>(m_names.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, LPWSTR* name) override {
        return ModelCall(name, [&] {
            if (index >= m_names.size()) return XPS_E_INDEX_OUT_OF_RANGE;
            std::wstring wide;
            AppendUtf16(wide, m_names[index]);
            *name = NewTaskText(wide);
            return S_OK;
        });
    }

private:
    std::vector<std::string> m_names;
};

} // namespace

PartResources::PartResources() : PartResources({}, {}, {}, {}) {}

PartResources::PartResources(FontCollection::AsStored fonts, ImageCollection::AsStored images,
                             ColorProfileCollection::AsStored profiles,
                             DictionaryCollection::AsStored dictionaries)
    : m_fonts(Owned(new FontCollection(std::move(fonts)))),
      m_images(Owned(new ImageCollection(std::move(images)))),
      m_profiles(Owned(new ColorProfileCollection(std::move(profiles)))),
      m_dictionaries(Owned(new DictionaryCollection(std::move(dictionaries)))) {}

HRESULT PartResources::GetFontResources(IXpsOMFontResourceCollection** fonts) { return Give(m_fonts, fonts); }
HRESULT PartResources::GetImageResources(IXpsOMImageResourceCollection** images) {
    return Give(m_images, images);
}
HRESULT PartResources::GetColorProfileResources(IXpsOMColorProfileResourceCollection** profiles) {
    return Give(m_profiles, profiles);
}
HRESULT
PartResources::GetRemoteDictionaryResources(IXpsOMRemoteDictionaryResourceCollection** dictionaries) {
    return Give(m_dictionaries, dictionaries);
}

void PartResources::Fill(IXpsOMResource* resource) {
    if (const CComQIPtr<IXpsOMFontResource> font(resource); font)
        m_fonts->Fill(font.p);
    else if (const CComQIPtr<IXpsOMImageResource> image(resource); image)
        m_images->Fill(image.p);
    else if (const CComQIPtr<IXpsOMColorProfileResource> profile(resource); profile)
        m_profiles->Fill(profile.p);
    else if (const CComQIPtr<IXpsOMRemoteDictionaryResource> dictionary(resource); dictionary)
        m_dictionaries->Fill(dictionary.p);
}

HRESULT CreatePartUriCollection(IXpsOMPartUriCollection** uris) {
    return ModelCall(uris, [&] {
        *uris = new PartUriCollection;
        return S_OK;
    });
}

HRESULT CreateNameCollection(std::vector<std::string> names, IXpsOMNameCollection** collection) {
    return ModelCall(collection, [&] {
        *collection = new NameCollection(std::move(names));
        return S_OK;
    });
}

LPWSTR NewTaskText(std::wstring_view text) {
    auto* const copy = static_cast<LPWSTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (copy == nullptr) throw std::bad_alloc();
    *std::copy(text.begin(), text.end(), copy) = L'\0';
    return copy;
}

} // namespace OvPlatform
