#pragma once

#include "ObjectModel/ElementCollections.h"
#include "ObjectModel/VisualObject.h"

namespace OvPlatform {

/// A group of visuals on a page.
class CanvasObject final : public VisualObject<IXpsOMCanvas> {
public:
    CanvasObject() noexcept : VisualObject(ElementKind::Canvas), m_visuals(*this) {}
    CanvasObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : VisualObject(ElementKind::Canvas, std::move(source), index), m_visuals(*this) {}

    HRESULT STDMETHODCALLTYPE GetVisuals(IXpsOMVisualCollection** visuals) override;
    HRESULT STDMETHODCALLTYPE GetUseAliasedEdgeMode(BOOL* isAliased) override;
    HRESULT STDMETHODCALLTYPE SetUseAliasedEdgeMode(BOOL isAliased) override;
    HRESULT STDMETHODCALLTYPE GetAccessibilityShortDescription(LPWSTR* description) override;
    HRESULT STDMETHODCALLTYPE SetAccessibilityShortDescription(LPCWSTR description) override;
    HRESULT STDMETHODCALLTYPE GetAccessibilityLongDescription(LPWSTR* description) override;
    HRESULT STDMETHODCALLTYPE SetAccessibilityLongDescription(LPCWSTR description) override;
    HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary** dictionary) override;
    HRESULT STDMETHODCALLTYPE GetDictionaryLocal(IXpsOMDictionary** dictionary) override;
    HRESULT STDMETHODCALLTYPE SetDictionaryLocal(IXpsOMDictionary* dictionary) override;
    HRESULT STDMETHODCALLTYPE GetDictionaryResource(IXpsOMRemoteDictionaryResource** part) override;
    HRESULT STDMETHODCALLTYPE SetDictionaryResource(IXpsOMRemoteDictionaryResource* part) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMCanvas** canvas) override;

private:
    VisualCollection m_visuals;
};

} // namespace OvPlatform
