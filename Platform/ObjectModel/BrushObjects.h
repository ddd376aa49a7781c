#pragma once

#include "ObjectModel/ElementObject.h"
#include "ObjectModel/MarkupNumbers.h"

namespace OvPlatform {

/// What all brushes have.
template <class Interface>
class BrushObject : public ShareableObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE GetOpacity(FLOAT* opacity) override {
        return ElementCall([&] { Give(opacity, NumberOf(*this, "Opacity", 1)); });
    }
    HRESULT STDMETHODCALLTYPE SetOpacity(FLOAT opacity) override {
        return ElementCall([&] {
            CheckOpacity(opacity);
            this->SetAttribute("Opacity", FormatNumber(opacity));
        });
    }

protected:
    using ShareableObject<Interface>::ShareableObject;
};

/// A gradient or a brush of visuals: it goes through as it stands.
class OtherBrushObject final : public BrushObject<IXpsOMBrush> {
public:
    OtherBrushObject(ElementKind kind, std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : BrushObject(kind, std::move(source), index) {}
};

class SolidColorBrushObject final : public BrushObject<IXpsOMSolidColorBrush> {
public:
    /// Throws MarkupFailure.
    SolidColorBrushObject(const XPS_COLOR& color, IXpsOMColorProfileResource* profile);
    SolidColorBrushObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : BrushObject(ElementKind::SolidColorBrush, std::move(source), index) {}
    /// From a colour.
    SolidColorBrushObject(std::shared_ptr<const PageSource> source, const std::string& text);

    std::optional<ReferringValue> AttributeForm() override;

    HRESULT STDMETHODCALLTYPE GetColor(XPS_COLOR* color, IXpsOMColorProfileResource** profile) override;
    HRESULT STDMETHODCALLTYPE SetColor(const XPS_COLOR* color, IXpsOMColorProfileResource* profile) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMSolidColorBrush** brush) override;

private:
    void TakeColor(const XPS_COLOR& color, IXpsOMColorProfileResource* profile);
};

class ImageBrushObject final : public BrushObject<IXpsOMImageBrush> {
public:
    /// Throws MarkupFailure.
    ImageBrushObject(IXpsOMImageResource* image, const XPS_RECT& viewbox, const XPS_RECT& viewport);
    ImageBrushObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : BrushObject(ElementKind::ImageBrush, std::move(source), index) {}

    HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform** transform) override;
    HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform** transform) override;
    HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform* transform) override;
    HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE GetViewbox(XPS_RECT* viewbox) override;
    HRESULT STDMETHODCALLTYPE SetViewbox(const XPS_RECT* viewbox) override;
    HRESULT STDMETHODCALLTYPE GetViewport(XPS_RECT* viewport) override;
    HRESULT STDMETHODCALLTYPE SetViewport(const XPS_RECT* viewport) override;
    HRESULT STDMETHODCALLTYPE GetTileMode(XPS_TILE_MODE* mode) override;
    HRESULT STDMETHODCALLTYPE SetTileMode(XPS_TILE_MODE mode) override;
    HRESULT STDMETHODCALLTYPE GetImageResource(IXpsOMImageResource** image) override;
    HRESULT STDMETHODCALLTYPE SetImageResource(IXpsOMImageResource* image) override;
    HRESULT STDMETHODCALLTYPE GetColorProfileResource(IXpsOMColorProfileResource** profile) override;
    HRESULT STDMETHODCALLTYPE SetColorProfileResource(IXpsOMColorProfileResource* profile) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMImageBrush** brush) override;

private:
    IXpsOMResource* Image() const;
    IXpsOMResource* Profile() const;
    void SetImage(IXpsOMResource* image, IXpsOMResource* profile);
    HRESULT SetBox(const char* name, const XPS_RECT* box);
};

} // namespace OvPlatform
