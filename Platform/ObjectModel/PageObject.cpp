#include "ObjectModel/PageObject.h"

#include "ObjectModel/MarkupNumbers.h"

namespace OvPlatform {

namespace {

// What the format takes, beside that a page has some size.
void CheckDimensions(const XPS_SIZE& dimensions) {
    CheckFinite(dimensions.width);
    CheckFinite(dimensions.height);
    if (dimensions.width < 1 || dimensions.height < 1) throw MarkupFailure(XPS_E_INVALID_PAGE_SIZE);
}

} // namespace

PageObject::PageObject(const XPS_SIZE& dimensions, LPCWSTR language, IOpcPartUri* name)
    : ElementObject(ElementKind::FixedPage), m_visuals(*this), m_name(name) {
    SetDimensions(dimensions);
    SetElementLanguage(*this, language);
}

PageObject::PageObject(std::shared_ptr<const PageSource> source, IOpcPartUri* name)
    : ElementObject(ElementKind::FixedPage, std::move(source), 0), m_visuals(*this), m_name(name) {
    CheckDimensions({NumberOf(*this, "Width", 0), NumberOf(*this, "Height", 0)});
}

HRESULT PageObject::GetPartName(IOpcPartUri** name) {
    return ElementCall([&] {
        RequirePlace(name);
        *name = m_name;
        m_name.p->AddRef();
    });
}
HRESULT PageObject::SetPartName(IOpcPartUri* name) {
    return ElementCall([&] {
        RequirePlace(name);
        m_name = name;
    });
}

HRESULT PageObject::GetOwner(IXpsOMPageReference** reference) {
    return ElementCall([&] {
        Give(reference, m_owner);
        if (m_owner != nullptr) m_owner->AddRef();
    });
}

HRESULT PageObject::GetVisuals(IXpsOMVisualCollection** visuals) {
    return ElementCall([&] {
        RequirePlace(visuals);
        *visuals = &m_visuals;
        m_visuals.AddRef();
    });
}

HRESULT PageObject::GetPageDimensions(XPS_SIZE* dimensions) {
    return ElementCall([&] {
        Give(dimensions, XPS_SIZE{NumberOf(*this, "Width", 0), NumberOf(*this, "Height", 0)});
    });
}
HRESULT PageObject::SetPageDimensions(const XPS_SIZE* dimensions) {
    return ElementCall([&] {
        RequirePlace(dimensions);
        SetDimensions(*dimensions);
    });
}
void PageObject::SetDimensions(const XPS_SIZE& dimensions) {
    CheckDimensions(dimensions);
    SetAttribute("Width", FormatNumber(dimensions.width));
    SetAttribute("Height", FormatNumber(dimensions.height));
}

// Without the attribute, the box is the page.
HRESULT PageObject::GetBox(const char* name, XPS_RECT* box) {
    return ElementCall([&] {
        const XPS_RECT whole{0, 0, NumberOf(*this, "Width", 0), NumberOf(*this, "Height", 0)};
        Give(box, ParseRect(Attribute(name).value_or("")).value_or(whole));
    });
}
HRESULT PageObject::SetBox(const char* name, const XPS_RECT* box) {
    return ElementCall([&] {
        RequirePlace(box);
        CheckRect(*box);
        SetAttribute(name, FormatRect(*box));
    });
}
HRESULT PageObject::GetContentBox(XPS_RECT* box) { return GetBox("ContentBox", box); }
HRESULT PageObject::SetContentBox(const XPS_RECT* box) { return SetBox("ContentBox", box); }
HRESULT PageObject::GetBleedBox(XPS_RECT* box) { return GetBox("BleedBox", box); }
HRESULT PageObject::SetBleedBox(const XPS_RECT* box) { return SetBox("BleedBox", box); }

HRESULT PageObject::GetLanguage(LPWSTR* language) {
    return ElementCall([&] { GiveTaskText(language, Attribute("xml:lang")); });
}
HRESULT PageObject::SetLanguage(LPCWSTR language) {
    return ElementCall([&] { SetElementLanguage(*this, language); });
}
HRESULT PageObject::GetName(LPWSTR* name) {
    return ElementCall([&] { GiveTaskText(name, Attribute("Name")); });
}
HRESULT PageObject::SetName(LPCWSTR name) {
    return ElementCall([&] { SetElementName(*this, name); });
}
HRESULT PageObject::GetIsHyperlinkTarget(BOOL*) { return E_NOTIMPL; }
HRESULT PageObject::SetIsHyperlinkTarget(BOOL) { return E_NOTIMPL; }

HRESULT PageObject::GetDictionary(IXpsOMDictionary** dictionary) {
    return GetElementDictionary(*this, dictionary);
}
HRESULT PageObject::GetDictionaryLocal(IXpsOMDictionary** dictionary) {
    return GetLocalDictionary(*this, dictionary);
}
HRESULT PageObject::SetDictionaryLocal(IXpsOMDictionary* dictionary) {
    return SetLocalValue(*this, "Resources", dictionary);
}
HRESULT PageObject::GetDictionaryResource(IXpsOMRemoteDictionaryResource** part) {
    return GetDictionaryPart(*this, part);
}
HRESULT PageObject::SetDictionaryResource(IXpsOMRemoteDictionaryResource* part) {
    return SetDictionaryPart(*this, part);
}

HRESULT PageObject::Write(ISequentialStream* stream, BOOL) {
    return WritePage(this, stream, XPS_DOCUMENT_TYPE_UNSPECIFIED);
}
HRESULT PageObject::Write1(ISequentialStream* stream, BOOL, XPS_DOCUMENT_TYPE type) {
    return WritePage(this, stream, type);
}

HRESULT PageObject::GenerateUnusedLookupKey(XPS_OBJECT_TYPE type, LPWSTR* key) {
    return ElementCall([&] {
        if (type < XPS_OBJECT_TYPE_CANVAS || type > XPS_OBJECT_TYPE_VISUAL_BRUSH)
            throw MarkupFailure(XPS_E_INVALID_LOOKUP_TYPE);
        // None that the markup has a word like, wherever it stands.
        std::string candidate;
        do
            candidate = "key" + std::to_string(++m_generatedKeys);
        while (Source() && Source()->Text().find(candidate) != std::string::npos);
        GiveTaskText(key, candidate);
    });
}

HRESULT PageObject::GetDocumentType(XPS_DOCUMENT_TYPE* type) {
    return ElementCall([&] { Give(type, Source() ? Source()->Type() : XPS_DOCUMENT_TYPE_UNSPECIFIED); });
}

} // namespace OvPlatform
