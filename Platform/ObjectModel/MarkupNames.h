#pragma once

#include <xpsobjectmodel_1.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace OvPlatform {

/// What an element of the markup of pages, documents and sequences is.
enum class ElementKind : std::uint8_t {
    Other, ///< of another namespace, or without an object of its own
    FixedDocumentSequence,
    DocumentReference,
    FixedDocument,
    PageContent,
    FixedPage,
    Canvas,
    Path,
    Glyphs,
    ResourceDictionary,
    PathGeometry,
    PathFigure,
    ArcSegment,
    PolyBezierSegment,
    PolyLineSegment,
    PolyQuadraticBezierSegment,
    MatrixTransform,
    SolidColorBrush,
    ImageBrush,
    VisualBrush,
    LinearGradientBrush,
    RadialGradientBrush,
    Property, ///< as <Path.Fill>: what stands in it is a value of the element that it stands in
    AlternateContent
};

/// By a local name of the page's own namespace.
ElementKind KindOfElement(std::string_view localName) noexcept;
/// Empty for Other, Property and AlternateContent.
std::string_view ElementName(ElementKind kind) noexcept;

constexpr bool IsVisual(ElementKind kind) noexcept {
    return kind == ElementKind::Canvas || kind == ElementKind::Path || kind == ElementKind::Glyphs;
}

/// The namespaces of a document type; unspecified counts as XPS.
std::string_view PageNamespace(XPS_DOCUMENT_TYPE type) noexcept;
std::string ResourceKeyNamespace(XPS_DOCUMENT_TYPE type);
/// Unspecified for a namespace that is that of no page.
XPS_DOCUMENT_TYPE TypeOfPageNamespace(std::string_view uri) noexcept;
/// What stands in documents of the type for a namespace of either; others stay as they are.
std::string NamespaceIn(XPS_DOCUMENT_TYPE type, std::string_view uri);

inline constexpr std::string_view compatibilityNamespace =
    "http://schemas.openxmlformats.org/markup-compatibility/2006";

/// The attribute of markup compatibility that has a local name, whose value holds for all that stands in its
/// element; empty for none.
std::string_view CompatibilityRule(std::string_view localName) noexcept;

} // namespace OvPlatform
