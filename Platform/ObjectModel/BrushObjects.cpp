#include "ObjectModel/BrushObjects.h"

namespace OvPlatform {

namespace {

constexpr const char* colorName = "Color";
constexpr const char* sourceName = "ImageSource";
constexpr const char* transformName = "Transform";
constexpr Words<5> tileWords = {"None", "Tile", "FlipX", "FlipY", "FlipXY"};

HRESULT GetBox(const PageElement& element, const char* name, XPS_RECT* box) {
    return ElementCall([&] {
        const std::optional<XPS_RECT> read = ParseRect(element.Attribute(name).value_or(""));
        if (!read) throw MarkupFailure(XPS_E_INVALID_MARKUP);
        Give(box, *read);
    });
}

} // namespace

// One colour.

SolidColorBrushObject::SolidColorBrushObject(const XPS_COLOR& color, IXpsOMColorProfileResource* profile)
    : BrushObject(ElementKind::SolidColorBrush) {
    TakeColor(color, profile);
}

SolidColorBrushObject::SolidColorBrushObject(std::shared_ptr<const PageSource> source,
                                             const std::string& text)
    : BrushObject(ElementKind::SolidColorBrush, std::move(source), noElement) {
    if (!ParseColor(text)) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    SetAttribute(colorName, text);
    // Wherever the brush goes, its profile goes along.
    if (IXpsOMResource* const profile = Referred(colorName, ReferenceKind::Context); profile != nullptr) {
        const ReferenceSpan span = ReferencesIn(ReferenceKind::Context, text).front();
        ReferringValue value;
        value.pieces.push_back({text.substr(0, span.begin), profile});
        value.pieces.push_back({text.substr(span.begin + span.length), {}});
        SetAttribute(colorName, std::move(value));
    }
    Settle();
}

void SolidColorBrushObject::TakeColor(const XPS_COLOR& color, IXpsOMColorProfileResource* profile) {
    CheckColor(color);
    ReferringValue value;
    if (color.colorType == XPS_COLOR_TYPE_CONTEXT) {
        if (profile == nullptr) throw MarkupFailure(XPS_E_MISSING_COLORPROFILE);
        value.pieces.push_back({"ContextColor ", profile});
    } else if (profile != nullptr) {
        throw MarkupFailure(XPS_E_UNEXPECTED_COLORPROFILE);
    }
    value.pieces.push_back({FormatColor(color), {}});
    SetAttribute(colorName, std::move(value));
}

std::optional<ReferringValue> SolidColorBrushObject::AttributeForm() {
    if (IsInSource() || Attribute("Opacity") || Attribute("x:Key")) return std::nullopt;
    XPS_COLOR color{};
    CComPtr<IXpsOMColorProfileResource> profile;
    ThrowIfFailed(GetColor(&color, &profile));
    ReferringValue value;
    if (profile) value.pieces.push_back({"ContextColor ", profile.p});
    value.pieces.push_back({FormatColor(color), {}});
    return value;
}

HRESULT SolidColorBrushObject::GetColor(XPS_COLOR* color, IXpsOMColorProfileResource** profile) {
    return ElementCall([&] {
        RequirePlace(color);
        RequirePlace(profile);
        *profile = nullptr;
        // The value of an own colour has no profile's name in it, but the numbers stand where they would.
        IXpsOMResource* const used = Referred(colorName, ReferenceKind::Context);
        std::string text = Attribute(colorName).value_or("");
        constexpr std::string_view nameless = "ContextColor  ";
        if (used != nullptr && text.starts_with(nameless)) text.insert(nameless.size() - 1, "/");
        const std::optional<XPS_COLOR> read = ParseColor(text);
        if (!read) throw MarkupFailure(XPS_E_INVALID_MARKUP);
        *color = *read;
        if (read->colorType == XPS_COLOR_TYPE_CONTEXT) GiveInterface(used, profile);
    });
}

HRESULT SolidColorBrushObject::SetColor(const XPS_COLOR* color, IXpsOMColorProfileResource* profile) {
    return ElementCall([&] {
        RequirePlace(color);
        TakeColor(*color, profile);
    });
}

HRESULT SolidColorBrushObject::Clone(IXpsOMSolidColorBrush** brush) {
    return OvPlatform::Clone(*this, brush);
}

// An image.

ImageBrushObject::ImageBrushObject(IXpsOMImageResource* image, const XPS_RECT& viewbox,
                                   const XPS_RECT& viewport)
    : BrushObject(ElementKind::ImageBrush) {
    SetImage(image, nullptr);
    ThrowIfFailed(SetBox("Viewbox", &viewbox));
    ThrowIfFailed(SetBox("Viewport", &viewport));
    SetAttribute("ViewboxUnits", std::string("Absolute"));
    SetAttribute("ViewportUnits", std::string("Absolute"));
}

IXpsOMResource* ImageBrushObject::Image() const { return Referred(sourceName, ReferenceKind::Image, 0); }
IXpsOMResource* ImageBrushObject::Profile() const { return Referred(sourceName, ReferenceKind::Image, 1); }

void ImageBrushObject::SetImage(IXpsOMResource* image, IXpsOMResource* profile) {
    if (image == nullptr) throw MarkupFailure(XPS_E_MISSING_IMAGE_IN_IMAGEBRUSH);
    ReferringValue value;
    if (profile == nullptr) {
        value.pieces.push_back({"", image});
    } else {
        value.pieces.push_back({"{ColorConvertedBitmap ", image});
        value.pieces.push_back({" ", profile});
        value.pieces.push_back({"}", {}});
    }
    SetAttribute(sourceName, std::move(value));
}

HRESULT ImageBrushObject::SetBox(const char* name, const XPS_RECT* box) {
    return ElementCall([&] {
        RequirePlace(box);
        CheckRect(*box);
        SetAttribute(name, FormatRect(*box));
    });
}

HRESULT ImageBrushObject::GetTransform(IXpsOMMatrixTransform** transform) {
    return GetValue(*this, transformName, transform);
}
HRESULT ImageBrushObject::GetTransformLocal(IXpsOMMatrixTransform** transform) {
    return GetLocalValue(*this, transformName, transform);
}
HRESULT ImageBrushObject::SetTransformLocal(IXpsOMMatrixTransform* transform) {
    return SetLocalValue(*this, transformName, transform);
}
HRESULT ImageBrushObject::GetTransformLookup(LPWSTR* key) {
    return GetValueLookup(*this, transformName, key);
}
HRESULT ImageBrushObject::SetTransformLookup(LPCWSTR key) {
    return SetValueLookup(*this, transformName, key);
}

HRESULT ImageBrushObject::GetViewbox(XPS_RECT* viewbox) { return GetBox(*this, "Viewbox", viewbox); }
HRESULT ImageBrushObject::SetViewbox(const XPS_RECT* viewbox) { return SetBox("Viewbox", viewbox); }
HRESULT ImageBrushObject::GetViewport(XPS_RECT* viewport) { return GetBox(*this, "Viewport", viewport); }
HRESULT ImageBrushObject::SetViewport(const XPS_RECT* viewport) { return SetBox("Viewport", viewport); }

HRESULT ImageBrushObject::GetTileMode(XPS_TILE_MODE* mode) {
    return ElementCall([&] { Give(mode, WordOf(*this, "TileMode", tileWords, XPS_TILE_MODE_NONE)); });
}
HRESULT ImageBrushObject::SetTileMode(XPS_TILE_MODE mode) {
    return ElementCall([&] { SetWord(*this, "TileMode", tileWords, mode); });
}

HRESULT ImageBrushObject::GetImageResource(IXpsOMImageResource** image) {
    return ElementCall([&] {
        RequirePlace(image);
        GiveInterface(Image(), image);
    });
}
HRESULT ImageBrushObject::SetImageResource(IXpsOMImageResource* image) {
    return ElementCall([&] {
        RequirePlace(image);
        SetImage(image, Profile());
    });
}
HRESULT ImageBrushObject::GetColorProfileResource(IXpsOMColorProfileResource** profile) {
    return ElementCall([&] {
        RequirePlace(profile);
        GiveInterface(Profile(), profile);
    });
}
HRESULT ImageBrushObject::SetColorProfileResource(IXpsOMColorProfileResource* profile) {
    return ElementCall([&] { SetImage(Image(), profile); });
}

HRESULT ImageBrushObject::Clone(IXpsOMImageBrush** brush) { return OvPlatform::Clone(*this, brush); }

} // namespace OvPlatform
