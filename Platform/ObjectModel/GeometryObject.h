#pragma once

#include "ObjectModel/ElementObject.h"
#include "ObjectModel/PathData.h"

namespace OvPlatform {

class GeometryObject;

/// How the platform's own figures are told from others.
MIDL_INTERFACE("5b0cf4c5-27e0-4b2a-8a0b-0b5a51b0f9d7") IModelFigure : public IUnknown {
public:
    virtual class FigureObject& Figure() noexcept = 0;
};

/// A figure of a geometry, or one that is to become that.
class FigureObject final : public CountedObject<IXpsOMGeometryFigure, IModelFigure> {
public:
    explicit FigureObject(FigureData data) noexcept : m_data(std::move(data)) {}

    const FigureData& Data() const noexcept { return m_data; }
    GeometryObject* Geometry() const noexcept { return m_geometry; }
    /// By the geometry, which takes itself away before it ends.
    void BelongTo(GeometryObject* geometry) noexcept { m_geometry = geometry; }
    FigureObject& Figure() noexcept override { return *this; }

    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMGeometry** owner) override;
    HRESULT STDMETHODCALLTYPE GetSegmentData(UINT32* count, FLOAT* data) override;
    HRESULT STDMETHODCALLTYPE GetSegmentTypes(UINT32* count, XPS_SEGMENT_TYPE* types) override;
    HRESULT STDMETHODCALLTYPE GetSegmentStrokes(UINT32* count, BOOL* strokes) override;
    HRESULT STDMETHODCALLTYPE SetSegments(UINT32 count, UINT32 dataCount, const XPS_SEGMENT_TYPE* types,
                                          const FLOAT* data, const BOOL* strokes) override;
    HRESULT STDMETHODCALLTYPE GetStartPoint(XPS_POINT* point) override;
    HRESULT STDMETHODCALLTYPE SetStartPoint(const XPS_POINT* point) override;
    HRESULT STDMETHODCALLTYPE GetIsClosed(BOOL* isClosed) override;
    HRESULT STDMETHODCALLTYPE SetIsClosed(BOOL isClosed) override;
    HRESULT STDMETHODCALLTYPE GetIsFilled(BOOL* isFilled) override;
    HRESULT STDMETHODCALLTYPE SetIsFilled(BOOL isFilled) override;
    HRESULT STDMETHODCALLTYPE GetSegmentCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetSegmentDataCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetSegmentStrokePattern(XPS_SEGMENT_STROKE_PATTERN* pattern) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMGeometryFigure** figure) override;

private:
    void Touch();

    FigureData m_data;
    GeometryObject* m_geometry = nullptr;
};

/// A geometry: figures, read from the markup when they are asked for.
class GeometryObject final : public ShareableObject<IXpsOMGeometry> {
public:
    GeometryObject() noexcept : ShareableObject(ElementKind::PathGeometry), m_collection(*this) {}
    GeometryObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : ShareableObject(ElementKind::PathGeometry, std::move(source), index), m_collection(*this) {}
    /// From a path's or a clip's short form. Throws MarkupFailure for what is none.
    GeometryObject(std::shared_ptr<const PageSource> source, const std::string& text);

    std::optional<ReferringValue> AttributeForm() override;
    /// From now on the figures are written anew.
    void TouchFigures();

    HRESULT STDMETHODCALLTYPE GetFigures(IXpsOMGeometryFigureCollection** figures) override;
    HRESULT STDMETHODCALLTYPE GetFillRule(XPS_FILL_RULE* rule) override;
    HRESULT STDMETHODCALLTYPE SetFillRule(XPS_FILL_RULE rule) override;
    HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform** transform) override;
    HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform** transform) override;
    HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform* transform) override;
    HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMGeometry** geometry) override;

protected:
    ~GeometryObject() override;

private:
    class Figures final : public PartOfElement<IXpsOMGeometryFigureCollection> {
    public:
        explicit Figures(GeometryObject& geometry) noexcept : PartOfElement(geometry), m_geometry(geometry) {}

        HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override;
        HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMGeometryFigure** figure) override;
        HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMGeometryFigure* figure) override;
        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) override;
        HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMGeometryFigure* figure) override;
        HRESULT STDMETHODCALLTYPE Append(IXpsOMGeometryFigure* figure) override;

    private:
        GeometryObject& m_geometry;
    };

    void Prepare() override;
    bool HasOwnContent() const override;
    void WriteOwnContent(MarkupWriter& out) override;

    std::vector<CComPtr<FigureObject>>& Load();
    void AddFigure(FigureData data);
    void CheckIndex(std::size_t index, std::size_t count) const;
    void Insert(std::size_t index, IXpsOMGeometryFigure* figure);
    void Remove(std::size_t index);
    std::vector<FigureData> Data() const;

    Figures m_collection;
    std::vector<CComPtr<FigureObject>> m_figures;
    bool m_isLoaded = false;
    bool m_hasNewFigures = false;
};

} // namespace OvPlatform
__CRT_UUID_DECL(OvPlatform::IModelFigure, 0x5b0cf4c5, 0x27e0, 0x4b2a, 0x8a, 0x0b, 0x0b, 0x5a, 0x51, 0xb0,
                0xf9, 0xd7)
