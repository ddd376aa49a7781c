#pragma once

#include "ObjectModel/ElementObject.h"
#include "ObjectModel/MarkupNumbers.h"

namespace OvPlatform {

/// What all that a page shows has: a transform, a clip, opacity, a name and a language. Targets and addresses
/// of links go through as they stand, and are not told of.
template <class Interface>
class VisualObject : public ShareableObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform** transform) override {
        return GetValue(*this, transformName, transform);
    }
    HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform** transform) override {
        return GetLocalValue(*this, transformName, transform);
    }
    HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform* transform) override {
        return SetLocalValue(*this, transformName, transform);
    }
    HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR* key) override {
        return GetValueLookup(*this, transformName, key);
    }
    HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) override {
        return SetValueLookup(*this, transformName, key);
    }
    HRESULT STDMETHODCALLTYPE GetClipGeometry(IXpsOMGeometry** clip) override {
        return GetValue(*this, clipName, clip);
    }
    HRESULT STDMETHODCALLTYPE GetClipGeometryLocal(IXpsOMGeometry** clip) override {
        return GetLocalValue(*this, clipName, clip);
    }
    HRESULT STDMETHODCALLTYPE SetClipGeometryLocal(IXpsOMGeometry* clip) override {
        return SetLocalValue(*this, clipName, clip);
    }
    HRESULT STDMETHODCALLTYPE GetClipGeometryLookup(LPWSTR* key) override {
        return GetValueLookup(*this, clipName, key);
    }
    HRESULT STDMETHODCALLTYPE SetClipGeometryLookup(LPCWSTR key) override {
        return SetValueLookup(*this, clipName, key);
    }
    HRESULT STDMETHODCALLTYPE GetOpacity(FLOAT* opacity) override {
        return ElementCall([&] {
            RequirePlace(opacity);
            *opacity = NumberOf(*this, "Opacity", 1);
        });
    }
    HRESULT STDMETHODCALLTYPE SetOpacity(FLOAT opacity) override {
        return ElementCall([&] {
            CheckOpacity(opacity);
            this->SetAttribute("Opacity", FormatNumber(opacity));
        });
    }
    HRESULT STDMETHODCALLTYPE GetOpacityMaskBrush(IXpsOMBrush** mask) override {
        return GetValue(*this, maskName, mask);
    }
    HRESULT STDMETHODCALLTYPE GetOpacityMaskBrushLocal(IXpsOMBrush** mask) override {
        return GetLocalValue(*this, maskName, mask);
    }
    HRESULT STDMETHODCALLTYPE SetOpacityMaskBrushLocal(IXpsOMBrush* mask) override {
        return SetLocalValue(*this, maskName, mask);
    }
    HRESULT STDMETHODCALLTYPE GetOpacityMaskBrushLookup(LPWSTR* key) override {
        return GetValueLookup(*this, maskName, key);
    }
    HRESULT STDMETHODCALLTYPE SetOpacityMaskBrushLookup(LPCWSTR key) override {
        return SetValueLookup(*this, maskName, key);
    }
    HRESULT STDMETHODCALLTYPE GetName(LPWSTR* name) override {
        return ElementCall([&] { GiveTaskText(name, this->Attribute("Name")); });
    }
    HRESULT STDMETHODCALLTYPE SetName(LPCWSTR name) override {
        return ElementCall([&] { SetElementName(*this, name); });
    }
    HRESULT STDMETHODCALLTYPE GetIsHyperlinkTarget(BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetIsHyperlinkTarget(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetHyperlinkNavigateUri(IUri**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetHyperlinkNavigateUri(IUri*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR* language) override {
        return ElementCall([&] { GiveTaskText(language, this->Attribute("xml:lang")); });
    }
    HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) override {
        return ElementCall([&] { SetElementLanguage(*this, language); });
    }

protected:
    using ShareableObject<Interface>::ShareableObject;

private:
    static constexpr const char* transformName = "RenderTransform";
    static constexpr const char* clipName = "Clip";
    static constexpr const char* maskName = "OpacityMask";
};

} // namespace OvPlatform
