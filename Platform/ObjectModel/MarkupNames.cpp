#include "ObjectModel/MarkupNames.h"

#include "ObjectModel/XpsVocabulary.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace OvPlatform {

namespace {

struct NamedKind {
    std::string_view name;
    ElementKind kind;
};

constexpr std::array kinds = {
    NamedKind{"Glyphs", ElementKind::Glyphs},
    NamedKind{"Path", ElementKind::Path},
    NamedKind{"Canvas", ElementKind::Canvas},
    NamedKind{"FixedPage", ElementKind::FixedPage},
    NamedKind{"FixedDocumentSequence", ElementKind::FixedDocumentSequence},
    NamedKind{"DocumentReference", ElementKind::DocumentReference},
    NamedKind{"FixedDocument", ElementKind::FixedDocument},
    NamedKind{"PageContent", ElementKind::PageContent},
    NamedKind{"ResourceDictionary", ElementKind::ResourceDictionary},
    NamedKind{"PathGeometry", ElementKind::PathGeometry},
    NamedKind{"PathFigure", ElementKind::PathFigure},
    NamedKind{"ArcSegment", ElementKind::ArcSegment},
    NamedKind{"PolyBezierSegment", ElementKind::PolyBezierSegment},
    NamedKind{"PolyLineSegment", ElementKind::PolyLineSegment},
    NamedKind{"PolyQuadraticBezierSegment", ElementKind::PolyQuadraticBezierSegment},
    NamedKind{"MatrixTransform", ElementKind::MatrixTransform},
    NamedKind{"SolidColorBrush", ElementKind::SolidColorBrush},
    NamedKind{"ImageBrush", ElementKind::ImageBrush},
    NamedKind{"VisualBrush", ElementKind::VisualBrush},
    NamedKind{"LinearGradientBrush", ElementKind::LinearGradientBrush},
    NamedKind{"RadialGradientBrush", ElementKind::RadialGradientBrush},
};

constexpr std::array<std::string_view, 5> compatibilityRules = {
    "Ignorable", "ProcessContent", "PreserveElements", "PreserveAttributes", "MustUnderstand"};

// Whether it is the base, or one of those that are named below it.
bool IsOfBase(std::string_view uri, std::string_view base) noexcept {
    return uri.starts_with(base) && (uri.size() == base.size() || uri[base.size()] == '/');
}

} // namespace

ElementKind KindOfElement(std::string_view localName) noexcept {
    if (localName.find('.') != std::string_view::npos) return ElementKind::Property;
    const auto* const found = std::find_if(kinds.begin(), kinds.end(),
                                           [&](const NamedKind& kind) { return kind.name == localName; });
    return found == kinds.end() ? ElementKind::Other : found->kind;
}

std::string_view ElementName(ElementKind kind) noexcept {
    const auto* const found =
        std::find_if(kinds.begin(), kinds.end(), [&](const NamedKind& named) { return named.kind == kind; });
    return found == kinds.end() ? std::string_view() : found->name;
}

std::string_view CompatibilityRule(std::string_view localName) noexcept {
    const auto* const found = std::find(compatibilityRules.begin(), compatibilityRules.end(), localName);
    return found == compatibilityRules.end() ? std::string_view() : *found;
}

std::string_view PageNamespace(XPS_DOCUMENT_TYPE type) noexcept {
    return MarkupNamespace(type == XPS_DOCUMENT_TYPE_OPENXPS ? XpsFlavour::OpenXps : XpsFlavour::Xps);
}

std::string ResourceKeyNamespace(XPS_DOCUMENT_TYPE type) {
    return std::string(PageNamespace(type)) + "/resourcedictionary-key";
}

XPS_DOCUMENT_TYPE TypeOfPageNamespace(std::string_view uri) noexcept {
    for (const XPS_DOCUMENT_TYPE type : {XPS_DOCUMENT_TYPE_XPS, XPS_DOCUMENT_TYPE_OPENXPS})
        if (uri == PageNamespace(type)) return type;
    return XPS_DOCUMENT_TYPE_UNSPECIFIED;
}

std::string NamespaceIn(XPS_DOCUMENT_TYPE type, std::string_view uri) {
    for (const XPS_DOCUMENT_TYPE from : {XPS_DOCUMENT_TYPE_XPS, XPS_DOCUMENT_TYPE_OPENXPS})
        if (const std::string_view base = PageNamespace(from); IsOfBase(uri, base))
            return std::string(PageNamespace(type)) + std::string(uri.substr(base.size()));
    return std::string(uri);
}

} // namespace OvPlatform
