#pragma once

#include "Com/CountedObject.h"
#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/PageElement.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXpsOMVisual> {
    using Type = IXpsOMShareable;
};
template <>
struct ExtendedInterface<IXpsOMGlyphs> {
    using Type = IXpsOMVisual;
};
template <>
struct ExtendedInterface<IXpsOMPath> {
    using Type = IXpsOMVisual;
};
template <>
struct ExtendedInterface<IXpsOMCanvas> {
    using Type = IXpsOMVisual;
};
template <>
struct ExtendedInterface<IXpsOMGeometry> {
    using Type = IXpsOMShareable;
};
template <>
struct ExtendedInterface<IXpsOMMatrixTransform> {
    using Type = IXpsOMShareable;
};
template <>
struct ExtendedInterface<IXpsOMBrush> {
    using Type = IXpsOMShareable;
};
template <>
struct ExtendedInterface<IXpsOMSolidColorBrush> {
    using Type = IXpsOMBrush;
};
template <>
struct ExtendedInterface<IXpsOMTileBrush> {
    using Type = IXpsOMBrush;
};
template <>
struct ExtendedInterface<IXpsOMImageBrush> {
    using Type = IXpsOMTileBrush;
};
template <>
struct ExtendedInterface<IXpsOMPage> {
    using Type = IXpsOMPart;
};
template <>
struct ExtendedInterface<IXpsOMPage1> {
    using Type = IXpsOMPage;
};

/// The object of an element.
template <class Interface>
class ElementObject : public CountedObject<Interface, IPageElement>, public PageElement {
public:
    PageElement& Element() noexcept final { return *this; }
    IUnknown* Identity() noexcept final { return static_cast<Interface*>(this); }
    ULONG Hold() noexcept final { return this->AddRef(); }
    ULONG Drop() noexcept final { return this->Release(); }

protected:
    using PageElement::PageElement;
};

/// One that several could refer to.
template <class Interface>
class ShareableObject : public ElementObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE GetOwner(IUnknown** owner) override;
    HRESULT STDMETHODCALLTYPE GetType(XPS_OBJECT_TYPE* type) override;

protected:
    using ElementObject<Interface>::ElementObject;
};

/// An interface of an object that is asked for by another name: it lives as long as the object.
template <class Interface>
class PartOfElement : public Interface {
public:
    explicit PartOfElement(PageElement& element) noexcept : m_element(element) {}
    PartOfElement(const PartOfElement&) = delete;
    PartOfElement& operator=(const PartOfElement&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (riid != __uuidof(IUnknown) && riid != __uuidof(Interface)) return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_element.Hold(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_element.Drop(); }

protected:
    ~PartOfElement() = default;
    PageElement& Of() const noexcept { return m_element; }

private:
    PageElement& m_element;
};

// Texts as callers get them, to be freed as task memory. Throw MarkupFailure.

/// Null for none.
void GiveTaskText(LPWSTR* place, const std::optional<std::string>& utf8);
void GiveTaskText(LPWSTR* place, std::wstring_view text);

/// Fills the caller's array, or tells how many there are where it is too small: ERROR_INSUFFICIENT_BUFFER.
template <class Item>
void GiveItems(const std::vector<Item>& items, UINT32* count, Item* place) {
    RequirePlace(count);
    const auto room = std::exchange(*count, static_cast<UINT32>(items.size()));
    if (room < items.size()) throw MarkupFailure(HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
    if (items.empty()) return;
    RequirePlace(place);
    std::copy(items.begin(), items.end(), place);
}

template <class Value>
void Give(Value* place, Value value) {
    RequirePlace(place);
    *place = value;
}

// Attributes as numbers and words. What is missing has its default, and so has what is no such value.

FLOAT NumberOf(const PageElement& element, std::string_view attribute, FLOAT missing);

/// The words of an enumeration, by its numbers from 1 on.
template <std::size_t count>
using Words = std::array<std::string_view, count>;

template <class Enumeration, std::size_t count>
Enumeration WordOf(const PageElement& element, std::string_view attribute, const Words<count>& words,
                   Enumeration missing) {
    const std::string word = element.Attribute(attribute).value_or("");
    for (std::size_t index = 0; index < count; ++index)
        if (words[index] == word) return static_cast<Enumeration>(index + 1);
    return missing;
}

/// Throws MarkupFailure with E_INVALIDARG for a number that has no word.
template <class Enumeration, std::size_t count>
void SetWord(PageElement& element, std::string_view attribute, const Words<count>& words, Enumeration value) {
    const auto index = static_cast<std::size_t>(value) - 1;
    if (index >= count) throw MarkupFailure(E_INVALIDARG);
    element.SetAttribute(attribute, std::string(words[index]));
}

/// Null removes the attribute; otherwise the text as UTF-8.
void SetText(PageElement& element, std::string_view attribute, LPCWSTR text);
/// The same for the name of an element, and for a language. XPS_E_INVALID_NAME, XPS_E_INVALID_LANGUAGE.
void SetElementName(PageElement& element, LPCWSTR name);
void SetElementLanguage(PageElement& element, LPCWSTR language);

// The calls for a value that stands in an element or is looked up.

template <class Interface>
void GiveInterface(IUnknown* object, Interface** place) {
    *place = nullptr;
    if (object != nullptr)
        ThrowIfFailed(object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(place)));
}

template <class Interface>
HRESULT GetValue(PageElement& element, const char* name, Interface** place) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = nullptr;
        GiveInterface(element.Resolved(name), place);
    });
}
template <class Interface>
HRESULT GetLocalValue(PageElement& element, const char* name, Interface** place) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = nullptr;
        PageElement* const value = element.Value(name);
        GiveInterface(value == nullptr ? nullptr : value->Identity(), place);
    });
}
HRESULT SetLocalValue(PageElement& element, const char* name, IUnknown* value);
HRESULT GetValueLookup(PageElement& element, const char* name, LPWSTR* key);
HRESULT SetValueLookup(PageElement& element, const char* name, LPCWSTR key);

/// A copy that belongs to nobody.
ElementPtr CloneElement(PageElement& element);

template <class Interface>
HRESULT Clone(PageElement& element, Interface** place) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = nullptr;
        GiveInterface(CloneElement(element)->Identity(), place);
    });
}

XPS_OBJECT_TYPE ObjectTypeOf(ElementKind kind) noexcept;

template <class Interface>
HRESULT ShareableObject<Interface>::GetOwner(IUnknown** owner) {
    return ElementCall([&] {
        RequirePlace(owner);
        *owner = this->Owner() == nullptr ? nullptr : this->Owner()->Identity();
        if (*owner != nullptr) (*owner)->AddRef();
    });
}

template <class Interface>
HRESULT ShareableObject<Interface>::GetType(XPS_OBJECT_TYPE* type) {
    return ElementCall([&] {
        RequirePlace(type);
        *type = ObjectTypeOf(this->Kind());
    });
}

} // namespace OvPlatform
