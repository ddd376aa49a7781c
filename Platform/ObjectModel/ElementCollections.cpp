#include "ObjectModel/ElementCollections.h"

#include "ObjectModel/GlyphRun.h"

#include <new>

namespace OvPlatform {

namespace {

constexpr const char* resourcesName = "Resources";
constexpr const char* sourceName = "Source";
constexpr const char* keyName = "x:Key";

void CheckIndex(std::uint32_t index, std::uint32_t count) {
    if (index >= count) throw MarkupFailure(XPS_E_INDEX_OUT_OF_RANGE);
}

void Insert(PageElement& element, std::uint32_t index, IUnknown* visual) {
    PageElement& inserted = ElementOf(visual);
    CheckIndex(index, element.ChildCount() + 1);
    element.InsertChild(index, inserted);
}

IXpsOMResource* PartOf(PageElement* dictionary) {
    return dictionary == nullptr ? nullptr : dictionary->Referred(sourceName, ReferenceKind::Whole);
}

} // namespace

// Visuals.

HRESULT VisualCollection::GetCount(UINT32* count) {
    return ElementCall([&] { Give(count, UINT32{Of().ChildCount()}); });
}
HRESULT VisualCollection::GetAt(UINT32 index, IXpsOMVisual** visual) {
    return ElementCall([&] {
        RequirePlace(visual);
        *visual = nullptr;
        CheckIndex(index, Of().ChildCount());
        GiveInterface(Of().Child(index).Identity(), visual);
    });
}
HRESULT VisualCollection::InsertAt(UINT32 index, IXpsOMVisual* visual) {
    return ElementCall([&] { Insert(Of(), index, visual); });
}
HRESULT VisualCollection::RemoveAt(UINT32 index) {
    return ElementCall([&] {
        CheckIndex(index, Of().ChildCount());
        Of().RemoveChild(index);
    });
}
HRESULT VisualCollection::SetAt(UINT32 index, IXpsOMVisual* visual) {
    return ElementCall([&] {
        PageElement& inserted = ElementOf(visual);
        CheckIndex(index, Of().ChildCount());
        if (&Of().Child(index) != &inserted) Of().ReplaceChild(index, inserted);
    });
}
HRESULT VisualCollection::Append(IXpsOMVisual* visual) {
    return ElementCall([&] { Insert(Of(), Of().ChildCount(), visual); });
}

// Dictionaries.

bool DictionaryObject::IsChild(ElementKind kind) const {
    switch (kind) {
    case ElementKind::PathGeometry:
    case ElementKind::MatrixTransform:
    case ElementKind::SolidColorBrush:
    case ElementKind::ImageBrush:
    case ElementKind::VisualBrush:
    case ElementKind::LinearGradientBrush:
    case ElementKind::RadialGradientBrush:
        return true;
    default:
        return IsVisual(kind);
    }
}

std::uint32_t DictionaryObject::IndexOfEntry(IXpsOMShareable* entry) {
    const PageElement& element = ElementOf(entry);
    if (element.Owner() != this) throw MarkupFailure(XPS_E_RESOURCE_NOT_OWNED);
    return IndexOf(element);
}

std::string DictionaryObject::NewKey(LPCWSTR key, std::uint32_t replaced) {
    RequirePlace(key);
    if (Attribute(sourceName)) throw MarkupFailure(XPS_E_BOTH_RESOURCE_AND_SOURCEATTR_PRESENT);
    std::string wanted = ToMarkup(key);
    if (wanted.empty()) throw MarkupFailure(XPS_E_INVALID_RESOURCE_KEY);
    if (const std::optional<std::uint32_t> known = FindKey(wanted); known && *known != replaced)
        throw MarkupFailure(XPS_E_DUPLICATE_RESOURCE_KEYS);
    return wanted;
}

void DictionaryObject::Insert(std::uint32_t index, LPCWSTR key, IXpsOMShareable* entry) {
    PageElement& inserted = ElementOf(entry);
    CheckIndex(index, ChildCount() + 1);
    std::string wanted = NewKey(key, noElement);
    InsertChild(index, inserted);
    inserted.SetAttribute(keyName, std::move(wanted));
}

void DictionaryObject::Remove(std::uint32_t index) {
    // A key outside a dictionary is none.
    const ElementPtr entry(&Child(index));
    RemoveChild(index);
    entry->RemoveAttribute(keyName);
}

HRESULT DictionaryObject::GetOwner(IUnknown** owner) {
    return ElementCall([&] {
        RequirePlace(owner);
        *owner = Owner() == nullptr ? m_ownerOfPart : Owner()->Identity();
        if (*owner != nullptr) (*owner)->AddRef();
    });
}
HRESULT DictionaryObject::GetCount(UINT32* count) {
    return ElementCall([&] { Give(count, UINT32{ChildCount()}); });
}
HRESULT DictionaryObject::GetAt(UINT32 index, LPWSTR* key, IXpsOMShareable** entry) {
    return ElementCall([&] {
        RequirePlace(key);
        RequirePlace(entry);
        *key = nullptr;
        *entry = nullptr;
        CheckIndex(index, ChildCount());
        CComPtr<IXpsOMShareable> found;
        GiveInterface(Child(index).Identity(), &found);
        GiveTaskText(key, ChildKey(index).value_or(""));
        *entry = found.Detach();
    });
}
HRESULT DictionaryObject::GetByKey(LPCWSTR key, IXpsOMShareable* before, IXpsOMShareable** entry) {
    return ElementCall([&] {
        RequirePlace(key);
        RequirePlace(entry);
        *entry = nullptr;
        const std::string wanted = ToMarkup(key);
        const std::optional<std::uint32_t> index = FindKey(wanted);
        if (!index || (before != nullptr && *index >= IndexOfEntry(before))) return;
        GiveInterface(Child(*index).Identity(), entry);
    });
}
HRESULT DictionaryObject::GetIndex(IXpsOMShareable* entry, UINT32* index) {
    return ElementCall([&] { Give(index, UINT32{IndexOfEntry(entry)}); });
}
HRESULT DictionaryObject::Append(LPCWSTR key, IXpsOMShareable* entry) {
    return ElementCall([&] { Insert(ChildCount(), key, entry); });
}
HRESULT DictionaryObject::InsertAt(UINT32 index, LPCWSTR key, IXpsOMShareable* entry) {
    return ElementCall([&] { Insert(index, key, entry); });
}
HRESULT DictionaryObject::RemoveAt(UINT32 index) {
    return ElementCall([&] {
        CheckIndex(index, ChildCount());
        Remove(index);
    });
}
HRESULT DictionaryObject::SetAt(UINT32 index, LPCWSTR key, IXpsOMShareable* entry) {
    return ElementCall([&] {
        CheckIndex(index, ChildCount());
        PageElement& inserted = ElementOf(entry);
        std::string wanted = NewKey(key, index);
        const ElementPtr replaced(&Child(index));
        if (replaced.Get() != &inserted) {
            ReplaceChild(index, inserted);
            replaced->RemoveAttribute(keyName);
        }
        inserted.SetAttribute(keyName, std::move(wanted));
    });
}
HRESULT DictionaryObject::Clone(IXpsOMDictionary** dictionary) {
    return OvPlatform::Clone(*this, dictionary);
}

// Of pages and canvases.

HRESULT GetElementDictionary(PageElement& element, IXpsOMDictionary** dictionary) {
    return ElementCall([&] {
        RequirePlace(dictionary);
        *dictionary = nullptr;
        PageElement* const local = element.Value(resourcesName);
        const CComQIPtr<IXpsOMRemoteDictionaryResource> part(PartOf(local));
        if (part)
            ThrowIfFailed(part->GetDictionary(dictionary));
        else if (local != nullptr)
            GiveInterface(local->Identity(), dictionary);
    });
}
HRESULT GetLocalDictionary(PageElement& element, IXpsOMDictionary** dictionary) {
    return ElementCall([&] {
        RequirePlace(dictionary);
        *dictionary = nullptr;
        PageElement* const local = element.Value(resourcesName);
        if (local != nullptr && !local->Attribute(sourceName)) GiveInterface(local->Identity(), dictionary);
    });
}
HRESULT GetDictionaryPart(PageElement& element, IXpsOMRemoteDictionaryResource** part) {
    return ElementCall([&] {
        RequirePlace(part);
        GiveInterface(PartOf(element.Value(resourcesName)), part);
    });
}
HRESULT SetDictionaryPart(PageElement& element, IXpsOMRemoteDictionaryResource* part) {
    return ElementCall([&] {
        if (part == nullptr) {
            if (PartOf(element.Value(resourcesName)) != nullptr) element.SetValue(resourcesName, nullptr);
            return;
        }
        ReferringValue value;
        value.pieces.push_back({"", part});
        const ElementPtr dictionary = ElementPtr::Adopt(new DictionaryObject);
        dictionary->SetAttribute(sourceName, std::move(value));
        element.SetValue(resourcesName, dictionary.Get());
    });
}

} // namespace OvPlatform
