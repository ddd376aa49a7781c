#include "ObjectModel/ElementObject.h"

#include "ObjectModel/GlyphRun.h"
#include "ObjectModel/MarkupNumbers.h"
#include "Xml/TextConversion.h"

#include <algorithm>
#include <cwchar>

namespace OvPlatform {

namespace {

constexpr bool IsLetter(wchar_t c) noexcept { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }
constexpr bool IsDigit(wchar_t c) noexcept { return c >= L'0' && c <= L'9'; }

// Letters of other scripts are letters too.
bool IsElementName(std::wstring_view name) {
    if (name.empty() || IsDigit(name.front())) return false;
    return std::all_of(name.begin(), name.end(),
                       [](wchar_t c) { return IsLetter(c) || IsDigit(c) || c == L'_' || c >= 0x80; });
}

bool IsLanguage(std::wstring_view language) {
    if (language.empty() || !IsLetter(language.front()) || language.back() == L'-') return false;
    return std::all_of(language.begin(), language.end(),
                       [](wchar_t c) { return IsLetter(c) || IsDigit(c) || c == L'-'; });
}

} // namespace

void GiveTaskText(LPWSTR* place, const std::optional<std::string>& utf8) {
    RequirePlace(place);
    *place = nullptr;
    if (!utf8) return;
    std::wstring text;
    AppendUtf16(text, *utf8);
    GiveTaskText(place, text);
}

void GiveTaskText(LPWSTR* place, std::wstring_view text) {
    RequirePlace(place);
    *place = static_cast<LPWSTR>(::CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (*place == nullptr) throw MarkupFailure(E_OUTOFMEMORY);
    *std::copy(text.begin(), text.end(), *place) = L'\0';
}

FLOAT NumberOf(const PageElement& element, std::string_view attribute, FLOAT missing) {
    const std::optional<std::string> text = element.Attribute(attribute);
    return text ? ParseNumber(*text).value_or(missing) : missing;
}

void SetText(PageElement& element, std::string_view attribute, LPCWSTR text) {
    if (text == nullptr)
        element.RemoveAttribute(attribute);
    else
        element.SetAttribute(attribute, ToMarkup(text));
}

void SetElementName(PageElement& element, LPCWSTR name) {
    if (name != nullptr && !IsElementName(name)) throw MarkupFailure(XPS_E_INVALID_NAME);
    SetText(element, "Name", name);
}

void SetElementLanguage(PageElement& element, LPCWSTR language) {
    if (language != nullptr && !IsLanguage(language)) throw MarkupFailure(XPS_E_INVALID_LANGUAGE);
    SetText(element, "xml:lang", language);
}

HRESULT SetLocalValue(PageElement& element, const char* name, IUnknown* value) {
    return ElementCall([&] { element.SetValue(name, value == nullptr ? nullptr : &ElementOf(value)); });
}

HRESULT GetValueLookup(PageElement& element, const char* name, LPWSTR* key) {
    return ElementCall([&] { GiveTaskText(key, element.Lookup(name)); });
}

HRESULT SetValueLookup(PageElement& element, const char* name, LPCWSTR key) {
    return ElementCall([&] {
        if (key == nullptr) {
            if (element.Lookup(name)) element.RemoveAttribute(name);
            return;
        }
        if (!IsElementName(key)) throw MarkupFailure(XPS_E_INVALID_RESOURCE_KEY);
        element.SetLookup(name, ToMarkup(key));
    });
}

ElementPtr CloneElement(PageElement& element) {
    const std::string_view root = ElementName(ElementKind::FixedPage);
    const PageSource* const source = element.Source().get();
    const std::string partName = source != nullptr ? source->PartName() : std::string(packageRoot);
    std::string text;
    MarkupWriter out([&](std::string_view piece) { text += piece; }, partName,
                     source != nullptr ? source->Type() : XPS_DOCUMENT_TYPE_XPS);
    if (element.IsInSource()) {
        out.OpenRootAround(*source, element.Index(), root);
        const MarkupWriter::Inside inside(out, *source, element.Index());
        element.Write(out);
        out.Write("</" + out.QualifiedName(root) + ">");
    } else {
        out.Write("<" + std::string(root));
        out.DeclareIfRoot();
        out.Write(">");
        element.Write(out);
        out.Write("</" + std::string(root) + ">");
    }
    std::vector<SourcePart> parts;
    for (const UsedPart& part : out.Parts())
        parts.push_back({part.name, part.resource});
    ElementPtr clone = MakeElementObject(PageSource::FromText(std::move(text), partName, parts, nullptr), 1);
    if (clone) clone->RemoveAttribute("x:Key"); // that of a dictionary, which the clone is not in
    return clone;
}

XPS_OBJECT_TYPE ObjectTypeOf(ElementKind kind) noexcept {
    switch (kind) {
    case ElementKind::Canvas:
        return XPS_OBJECT_TYPE_CANVAS;
    case ElementKind::Glyphs:
        return XPS_OBJECT_TYPE_GLYPHS;
    case ElementKind::Path:
        return XPS_OBJECT_TYPE_PATH;
    case ElementKind::MatrixTransform:
        return XPS_OBJECT_TYPE_MATRIX_TRANSFORM;
    case ElementKind::PathGeometry:
        return XPS_OBJECT_TYPE_GEOMETRY;
    case ElementKind::ImageBrush:
        return XPS_OBJECT_TYPE_IMAGE_BRUSH;
    case ElementKind::VisualBrush:
        return XPS_OBJECT_TYPE_VISUAL_BRUSH;
    case ElementKind::LinearGradientBrush:
        return XPS_OBJECT_TYPE_LINEAR_GRADIENT_BRUSH;
    case ElementKind::RadialGradientBrush:
        return XPS_OBJECT_TYPE_RADIAL_GRADIENT_BRUSH;
    default:
        return XPS_OBJECT_TYPE_SOLID_COLOR_BRUSH;
    }
}

} // namespace OvPlatform
