#pragma once

#include "ObjectModel/VisualObject.h"

namespace OvPlatform {

/// A path on a page.
class PathObject final : public VisualObject<IXpsOMPath> {
public:
    PathObject() noexcept : VisualObject(ElementKind::Path), m_dashes(*this) {}
    PathObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : VisualObject(ElementKind::Path, std::move(source), index), m_dashes(*this) {}

    HRESULT STDMETHODCALLTYPE GetGeometry(IXpsOMGeometry** geometry) override;
    HRESULT STDMETHODCALLTYPE GetGeometryLocal(IXpsOMGeometry** geometry) override;
    HRESULT STDMETHODCALLTYPE SetGeometryLocal(IXpsOMGeometry* geometry) override;
    HRESULT STDMETHODCALLTYPE GetGeometryLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetGeometryLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE GetAccessibilityShortDescription(LPWSTR* description) override;
    HRESULT STDMETHODCALLTYPE SetAccessibilityShortDescription(LPCWSTR description) override;
    HRESULT STDMETHODCALLTYPE GetAccessibilityLongDescription(LPWSTR* description) override;
    HRESULT STDMETHODCALLTYPE SetAccessibilityLongDescription(LPCWSTR description) override;
    HRESULT STDMETHODCALLTYPE GetSnapsToPixels(BOOL* snaps) override;
    HRESULT STDMETHODCALLTYPE SetSnapsToPixels(BOOL snaps) override;
    HRESULT STDMETHODCALLTYPE GetStrokeBrush(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE GetStrokeBrushLocal(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE SetStrokeBrushLocal(IXpsOMBrush* brush) override;
    HRESULT STDMETHODCALLTYPE GetStrokeBrushLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetStrokeBrushLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE GetStrokeDashes(IXpsOMDashCollection** dashes) override;
    HRESULT STDMETHODCALLTYPE GetStrokeDashCap(XPS_DASH_CAP* cap) override;
    HRESULT STDMETHODCALLTYPE SetStrokeDashCap(XPS_DASH_CAP cap) override;
    HRESULT STDMETHODCALLTYPE GetStrokeDashOffset(FLOAT* offset) override;
    HRESULT STDMETHODCALLTYPE SetStrokeDashOffset(FLOAT offset) override;
    HRESULT STDMETHODCALLTYPE GetStrokeStartLineCap(XPS_LINE_CAP* cap) override;
    HRESULT STDMETHODCALLTYPE SetStrokeStartLineCap(XPS_LINE_CAP cap) override;
    HRESULT STDMETHODCALLTYPE GetStrokeEndLineCap(XPS_LINE_CAP* cap) override;
    HRESULT STDMETHODCALLTYPE SetStrokeEndLineCap(XPS_LINE_CAP cap) override;
    HRESULT STDMETHODCALLTYPE GetStrokeLineJoin(XPS_LINE_JOIN* join) override;
    HRESULT STDMETHODCALLTYPE SetStrokeLineJoin(XPS_LINE_JOIN join) override;
    HRESULT STDMETHODCALLTYPE GetStrokeMiterLimit(FLOAT* limit) override;
    HRESULT STDMETHODCALLTYPE SetStrokeMiterLimit(FLOAT limit) override;
    HRESULT STDMETHODCALLTYPE GetStrokeThickness(FLOAT* thickness) override;
    HRESULT STDMETHODCALLTYPE SetStrokeThickness(FLOAT thickness) override;
    HRESULT STDMETHODCALLTYPE GetFillBrush(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE GetFillBrushLocal(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE SetFillBrushLocal(IXpsOMBrush* brush) override;
    HRESULT STDMETHODCALLTYPE GetFillBrushLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetFillBrushLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMPath** path) override;

private:
    /// The dashes of the stroke, which are one attribute.
    class Dashes final : public PartOfElement<IXpsOMDashCollection> {
    public:
        using PartOfElement::PartOfElement;

        HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override;
        HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, XPS_DASH* dash) override;
        HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, const XPS_DASH* dash) override;
        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) override;
        HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, const XPS_DASH* dash) override;
        HRESULT STDMETHODCALLTYPE Append(const XPS_DASH* dash) override;

    private:
        std::vector<FLOAT> Read() const;
        void Write(const std::vector<FLOAT>& numbers);
        template <class Change>
        HRESULT Apply(const Change& change);
    };

    Dashes m_dashes;
};

} // namespace OvPlatform
