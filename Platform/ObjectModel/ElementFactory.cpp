// Which object stands for which element, and for which value.

#include "ObjectModel/BrushObjects.h"
#include "ObjectModel/CanvasObject.h"
#include "ObjectModel/ElementCollections.h"
#include "ObjectModel/GeometryObject.h"
#include "ObjectModel/GlyphsObject.h"
#include "ObjectModel/MatrixTransformObject.h"
#include "ObjectModel/PathObject.h"

namespace OvPlatform {

ElementPtr MakeElementObject(const std::shared_ptr<const PageSource>& source, std::uint32_t index) {
    const auto make = [&]<class Object>() { return ElementPtr::Adopt(new Object(source, index)); };
    switch (const ElementKind kind = source->At(index).kind; kind) {
    case ElementKind::Canvas:
        return make.operator()<CanvasObject>();
    case ElementKind::Path:
        return make.operator()<PathObject>();
    case ElementKind::Glyphs:
        return make.operator()<GlyphsObject>();
    case ElementKind::ResourceDictionary:
        return make.operator()<DictionaryObject>();
    case ElementKind::PathGeometry:
        return make.operator()<GeometryObject>();
    case ElementKind::MatrixTransform:
        return make.operator()<MatrixTransformObject>();
    case ElementKind::SolidColorBrush:
        return make.operator()<SolidColorBrushObject>();
    case ElementKind::ImageBrush:
        return make.operator()<ImageBrushObject>();
    case ElementKind::VisualBrush:
    case ElementKind::LinearGradientBrush:
    case ElementKind::RadialGradientBrush:
        return ElementPtr::Adopt(new OtherBrushObject(kind, source, index));
    default:
        return {};
    }
}

ElementPtr MakeValueObject(std::string_view name, const std::string& text,
                           const std::shared_ptr<const PageSource>& source) {
    if (name == "RenderTransform" || name == "Transform")
        return ElementPtr::Adopt(new MatrixTransformObject(source, text));
    if (name == "Clip" || name == "Data") return ElementPtr::Adopt(new GeometryObject(source, text));
    if (name == "Fill" || name == "Stroke" || name == "OpacityMask")
        return ElementPtr::Adopt(new SolidColorBrushObject(source, text));
    return {};
}

} // namespace OvPlatform
