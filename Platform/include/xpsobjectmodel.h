#pragma once

// The document object model: packages, documents and pages as objects, in their published slots. What stands
// behind them is in ObjectModel/.

#include <msopc.h>
#include <xpsobjectmodeltypes.h>

struct IXpsOMBrush;
struct IXpsOMCanvas;
struct IXpsOMColorProfileResource;
struct IXpsOMColorProfileResourceCollection;
struct IXpsOMCoreProperties;
struct IXpsOMDashCollection;
struct IXpsOMDictionary;
struct IXpsOMDocument;
struct IXpsOMDocumentCollection;
struct IXpsOMDocumentSequence;
struct IXpsOMDocumentStructureResource;
struct IXpsOMFontResource;
struct IXpsOMFontResourceCollection;
struct IXpsOMGeometry;
struct IXpsOMGeometryFigure;
struct IXpsOMGeometryFigureCollection;
struct IXpsOMGlyphs;
struct IXpsOMGlyphsEditor;
struct IXpsOMGradientBrush;
struct IXpsOMGradientStop;
struct IXpsOMGradientStopCollection;
struct IXpsOMImageBrush;
struct IXpsOMImageResource;
struct IXpsOMImageResourceCollection;
struct IXpsOMLinearGradientBrush;
struct IXpsOMMatrixTransform;
struct IXpsOMNameCollection;
struct IXpsOMObjectFactory;
struct IXpsOMPackage;
struct IXpsOMPackageTarget;
struct IXpsOMPackageWriter;
struct IXpsOMPage;
struct IXpsOMPageReference;
struct IXpsOMPageReferenceCollection;
struct IXpsOMPart;
struct IXpsOMPartResources;
struct IXpsOMPartUriCollection;
struct IXpsOMPath;
struct IXpsOMPrintTicketResource;
struct IXpsOMRadialGradientBrush;
struct IXpsOMRemoteDictionaryResource;
struct IXpsOMRemoteDictionaryResourceCollection;
struct IXpsOMResource;
struct IXpsOMShareable;
struct IXpsOMSignatureBlockResource;
struct IXpsOMSignatureBlockResourceCollection;
struct IXpsOMSolidColorBrush;
struct IXpsOMStoryFragmentsResource;
struct IXpsOMThumbnailGenerator;
struct IXpsOMTileBrush;
struct IXpsOMVisual;
struct IXpsOMVisualBrush;
struct IXpsOMVisualCollection;

// What may be shared, and parts.

MIDL_INTERFACE("7137398f-2fc1-454d-8c6a-2c3115a16ece") IXpsOMShareable : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IUnknown * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetType(XPS_OBJECT_TYPE * type) = 0;
};
__CRT_UUID_DECL(IXpsOMShareable, 0x7137398f, 0x2fc1, 0x454d, 0x8c, 0x6a, 0x2c, 0x31, 0x15, 0xa1, 0x6e, 0xce)

MIDL_INTERFACE("74eb2f0b-a91e-4486-afac-0fabeca3dfc6") IXpsOMPart : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri * *partUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri * partUri) = 0;
};
__CRT_UUID_DECL(IXpsOMPart, 0x74eb2f0b, 0xa91e, 0x4486, 0xaf, 0xac, 0x0f, 0xab, 0xec, 0xa3, 0xdf, 0xc6)

MIDL_INTERFACE("da2ac0a2-73a2-4975-ad14-74097c3ff3a5") IXpsOMResource : public IXpsOMPart{};
__CRT_UUID_DECL(IXpsOMResource, 0xda2ac0a2, 0x73a2, 0x4975, 0xad, 0x14, 0x74, 0x09, 0x7c, 0x3f, 0xf3, 0xa5)

// Matrices, and the geometry of paths.

MIDL_INTERFACE("b77330ff-bb37-4501-a93e-f1b1e50bfc46") IXpsOMMatrixTransform : public IXpsOMShareable {
public:
    virtual HRESULT STDMETHODCALLTYPE GetMatrix(XPS_MATRIX * matrix) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMatrix(const XPS_MATRIX* matrix) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMMatrixTransform * *matrixTransform) = 0;
};
__CRT_UUID_DECL(IXpsOMMatrixTransform, 0xb77330ff, 0xbb37, 0x4501, 0xa9, 0x3e, 0xf1, 0xb1, 0xe5, 0x0b, 0xfc,
                0x46)

MIDL_INTERFACE("081613f4-74eb-48f2-83b3-37a9ce2d7dc6") IXpsOMDashCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, XPS_DASH * dash) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, const XPS_DASH* dash) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, const XPS_DASH* dash) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(const XPS_DASH* dash) = 0;
};
__CRT_UUID_DECL(IXpsOMDashCollection, 0x081613f4, 0x74eb, 0x48f2, 0x83, 0xb3, 0x37, 0xa9, 0xce, 0x2d, 0x7d,
                0xc6)

MIDL_INTERFACE("d410dc83-908c-443e-8947-b1795d3c165a") IXpsOMGeometryFigure : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMGeometry * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentData(UINT32 * dataCount, FLOAT * segmentData) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentTypes(UINT32 * segmentCount,
                                                      XPS_SEGMENT_TYPE * segmentTypes) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentStrokes(UINT32 * segmentCount, BOOL * segmentStrokes) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSegments(UINT32 segmentCount, UINT32 segmentDataCount,
                                                  const XPS_SEGMENT_TYPE* segmentTypes,
                                                  const FLOAT* segmentData, const BOOL* segmentStrokes) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStartPoint(XPS_POINT * startPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStartPoint(const XPS_POINT* startPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsClosed(BOOL * isClosed) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIsClosed(BOOL isClosed) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsFilled(BOOL * isFilled) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIsFilled(BOOL isFilled) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentCount(UINT32 * segmentCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentDataCount(UINT32 * segmentDataCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentStrokePattern(XPS_SEGMENT_STROKE_PATTERN *
                                                              segmentStrokePattern) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMGeometryFigure * *geometryFigure) = 0;
};
__CRT_UUID_DECL(IXpsOMGeometryFigure, 0xd410dc83, 0x908c, 0x443e, 0x89, 0x47, 0xb1, 0x79, 0x5d, 0x3c, 0x16,
                0x5a)

MIDL_INTERFACE("fd48c3f3-a58e-4b5a-8826-1de54abe72b2") IXpsOMGeometryFigureCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMGeometryFigure * *geometryFigure) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMGeometryFigure * geometryFigure) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMGeometryFigure * geometryFigure) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMGeometryFigure * geometryFigure) = 0;
};
__CRT_UUID_DECL(IXpsOMGeometryFigureCollection, 0xfd48c3f3, 0xa58e, 0x4b5a, 0x88, 0x26, 0x1d, 0xe5, 0x4a,
                0xbe, 0x72, 0xb2)

MIDL_INTERFACE("64fcf3d7-4d58-44ba-ad73-a13af6492072") IXpsOMGeometry : public IXpsOMShareable {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFigures(IXpsOMGeometryFigureCollection * *figures) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillRule(XPS_FILL_RULE * fillRule) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFillRule(XPS_FILL_RULE fillRule) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform * transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR * lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMGeometry * *geometry) = 0;
};
__CRT_UUID_DECL(IXpsOMGeometry, 0x64fcf3d7, 0x4d58, 0x44ba, 0xad, 0x73, 0xa1, 0x3a, 0xf6, 0x49, 0x20, 0x72)

// Brushes.

MIDL_INTERFACE("56a3f80c-ea4c-4187-a57b-a2a473b2b42b") IXpsOMBrush : public IXpsOMShareable {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOpacity(FLOAT * opacity) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOpacity(FLOAT opacity) = 0;
};
__CRT_UUID_DECL(IXpsOMBrush, 0x56a3f80c, 0xea4c, 0x4187, 0xa5, 0x7b, 0xa2, 0xa4, 0x73, 0xb2, 0xb4, 0x2b)

MIDL_INTERFACE("a06f9f05-3be9-4763-98a8-094fc672e488") IXpsOMSolidColorBrush : public IXpsOMBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetColor(XPS_COLOR * color,
                                               IXpsOMColorProfileResource * *colorProfile) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColor(const XPS_COLOR* color,
                                               IXpsOMColorProfileResource* colorProfile) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMSolidColorBrush * *solidColorBrush) = 0;
};
__CRT_UUID_DECL(IXpsOMSolidColorBrush, 0xa06f9f05, 0x3be9, 0x4763, 0x98, 0xa8, 0x09, 0x4f, 0xc6, 0x72, 0xe4,
                0x88)

MIDL_INTERFACE("0fc2328d-d722-4a54-b2ec-be90218a789e") IXpsOMTileBrush : public IXpsOMBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform * transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetViewbox(XPS_RECT * viewbox) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetViewbox(const XPS_RECT* viewbox) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetViewport(XPS_RECT * viewport) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetViewport(const XPS_RECT* viewport) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTileMode(XPS_TILE_MODE * tileMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTileMode(XPS_TILE_MODE tileMode) = 0;
};
__CRT_UUID_DECL(IXpsOMTileBrush, 0x0fc2328d, 0xd722, 0x4a54, 0xb2, 0xec, 0xbe, 0x90, 0x21, 0x8a, 0x78, 0x9e)

MIDL_INTERFACE("3df0b466-d382-49ef-8550-dd94c80242e4") IXpsOMImageBrush : public IXpsOMTileBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetImageResource(IXpsOMImageResource * *imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetImageResource(IXpsOMImageResource * imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorProfileResource(IXpsOMColorProfileResource *
                                                              *colorProfileResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColorProfileResource(IXpsOMColorProfileResource *
                                                              colorProfileResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMImageBrush * *imageBrush) = 0;
};
__CRT_UUID_DECL(IXpsOMImageBrush, 0x3df0b466, 0xd382, 0x49ef, 0x85, 0x50, 0xdd, 0x94, 0xc8, 0x02, 0x42, 0xe4)

MIDL_INTERFACE("97e294af-5b37-46b4-8057-874d2f64119b") IXpsOMVisualBrush : public IXpsOMTileBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetVisual(IXpsOMVisual * *visual) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVisualLocal(IXpsOMVisual * *visual) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVisualLocal(IXpsOMVisual * visual) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVisualLookup(LPWSTR * lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVisualLookup(LPCWSTR lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMVisualBrush * *visualBrush) = 0;
};
__CRT_UUID_DECL(IXpsOMVisualBrush, 0x97e294af, 0x5b37, 0x46b4, 0x80, 0x57, 0x87, 0x4d, 0x2f, 0x64, 0x11, 0x9b)

MIDL_INTERFACE("5cf4f5cc-3969-49b5-a70a-5550b618fe49") IXpsOMGradientStop : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMGradientBrush * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOffset(FLOAT * offset) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOffset(FLOAT offset) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColor(XPS_COLOR * color,
                                               IXpsOMColorProfileResource * *colorProfile) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColor(const XPS_COLOR* color,
                                               IXpsOMColorProfileResource* colorProfile) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMGradientStop * *gradientStop) = 0;
};
__CRT_UUID_DECL(IXpsOMGradientStop, 0x5cf4f5cc, 0x3969, 0x49b5, 0xa7, 0x0a, 0x55, 0x50, 0xb6, 0x18, 0xfe,
                0x49)

MIDL_INTERFACE("c9174c3a-3cd3-4319-bda4-11a39392ceef") IXpsOMGradientStopCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMGradientStop * *stop) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMGradientStop * stop) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMGradientStop * stop) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMGradientStop * stop) = 0;
};
__CRT_UUID_DECL(IXpsOMGradientStopCollection, 0xc9174c3a, 0x3cd3, 0x4319, 0xbd, 0xa4, 0x11, 0xa3, 0x93, 0x92,
                0xce, 0xef)

MIDL_INTERFACE("edb59622-61a2-42c3-bace-acf2286c06bf") IXpsOMGradientBrush : public IXpsOMBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetGradientStops(IXpsOMGradientStopCollection * *gradientStops) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform * *transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform * transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSpreadMethod(XPS_SPREAD_METHOD * spreadMethod) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSpreadMethod(XPS_SPREAD_METHOD spreadMethod) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorInterpolationMode(XPS_COLOR_INTERPOLATION *
                                                                colorInterpolationMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColorInterpolationMode(
        XPS_COLOR_INTERPOLATION colorInterpolationMode) = 0;
};
__CRT_UUID_DECL(IXpsOMGradientBrush, 0xedb59622, 0x61a2, 0x42c3, 0xba, 0xce, 0xac, 0xf2, 0x28, 0x6c, 0x06,
                0xbf)

MIDL_INTERFACE("005e279f-c30d-40ff-93ec-1950d3c528db")
IXpsOMLinearGradientBrush : public IXpsOMGradientBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStartPoint(XPS_POINT * startPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStartPoint(const XPS_POINT* startPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetEndPoint(XPS_POINT * endPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetEndPoint(const XPS_POINT* endPoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMLinearGradientBrush * *linearGradientBrush) = 0;
};
__CRT_UUID_DECL(IXpsOMLinearGradientBrush, 0x005e279f, 0xc30d, 0x40ff, 0x93, 0xec, 0x19, 0x50, 0xd3, 0xc5,
                0x28, 0xdb)

MIDL_INTERFACE("75f207e5-08bf-413c-96b1-b82b4064176b")
IXpsOMRadialGradientBrush : public IXpsOMGradientBrush {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCenter(XPS_POINT * center) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCenter(const XPS_POINT* center) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRadiiSizes(XPS_SIZE * radiiSizes) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetRadiiSizes(const XPS_SIZE* radiiSizes) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGradientOrigin(XPS_POINT * origin) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetGradientOrigin(const XPS_POINT* origin) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMRadialGradientBrush * *radialGradientBrush) = 0;
};
__CRT_UUID_DECL(IXpsOMRadialGradientBrush, 0x75f207e5, 0x08bf, 0x413c, 0x96, 0xb1, 0xb8, 0x2b, 0x40, 0x64,
                0x17, 0x6b)

// What a page shows.

MIDL_INTERFACE("bc3e7333-fb0b-4af3-a819-0b4eaad0d2fd") IXpsOMVisual : public IXpsOMShareable {
public:
    virtual HRESULT STDMETHODCALLTYPE GetTransform(IXpsOMMatrixTransform * *matrixTransform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLocal(IXpsOMMatrixTransform * *matrixTransform) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLocal(IXpsOMMatrixTransform * matrixTransform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTransformLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTransformLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClipGeometry(IXpsOMGeometry * *clipGeometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClipGeometryLocal(IXpsOMGeometry * *clipGeometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetClipGeometryLocal(IXpsOMGeometry * clipGeometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClipGeometryLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetClipGeometryLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOpacity(FLOAT * opacity) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOpacity(FLOAT opacity) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOpacityMaskBrush(IXpsOMBrush * *opacityMaskBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOpacityMaskBrushLocal(IXpsOMBrush * *opacityMaskBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOpacityMaskBrushLocal(IXpsOMBrush * opacityMaskBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOpacityMaskBrushLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOpacityMaskBrushLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetName(LPWSTR * name) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetName(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsHyperlinkTarget(BOOL * isHyperlink) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIsHyperlinkTarget(BOOL isHyperlink) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHyperlinkNavigateUri(IUri * *hyperlinkUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHyperlinkNavigateUri(IUri * hyperlinkUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR * language) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) = 0;
};
__CRT_UUID_DECL(IXpsOMVisual, 0xbc3e7333, 0xfb0b, 0x4af3, 0xa8, 0x19, 0x0b, 0x4e, 0xaa, 0xd0, 0xd2, 0xfd)

MIDL_INTERFACE("a5ab8616-5b16-4b9f-9629-89b323ed7909") IXpsOMGlyphsEditor : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE ApplyEdits() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUnicodeString(LPWSTR * unicodeString) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetUnicodeString(LPCWSTR unicodeString) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphIndexCount(UINT32 * indexCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphIndices(UINT32 * indexCount,
                                                      XPS_GLYPH_INDEX * glyphIndices) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetGlyphIndices(UINT32 indexCount,
                                                      const XPS_GLYPH_INDEX* glyphIndices) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphMappingCount(UINT32 * glyphMappingCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphMappings(UINT32 * glyphMappingCount,
                                                       XPS_GLYPH_MAPPING * glyphMappings) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetGlyphMappings(UINT32 glyphMappingCount,
                                                       const XPS_GLYPH_MAPPING* glyphMappings) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProhibitedCaretStopCount(UINT32 * prohibitedCaretStopCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProhibitedCaretStops(UINT32 * count,
                                                              UINT32 * prohibitedCaretStops) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetProhibitedCaretStops(UINT32 count,
                                                              const UINT32* prohibitedCaretStops) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBidiLevel(UINT32 * bidiLevel) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBidiLevel(UINT32 bidiLevel) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsSideways(BOOL * isSideways) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIsSideways(BOOL isSideways) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDeviceFontName(LPWSTR * deviceFontName) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDeviceFontName(LPCWSTR deviceFontName) = 0;
};
__CRT_UUID_DECL(IXpsOMGlyphsEditor, 0xa5ab8616, 0x5b16, 0x4b9f, 0x96, 0x29, 0x89, 0xb3, 0x23, 0xed, 0x79,
                0x09)

MIDL_INTERFACE("819b3199-0a5a-4b64-bec7-a9e17e780de2") IXpsOMGlyphs : public IXpsOMVisual {
public:
    virtual HRESULT STDMETHODCALLTYPE GetUnicodeString(LPWSTR * unicodeString) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphIndexCount(UINT32 * indexCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphIndices(UINT32 * indexCount,
                                                      XPS_GLYPH_INDEX * glyphIndices) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphMappingCount(UINT32 * glyphMappingCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphMappings(UINT32 * glyphMappingCount,
                                                       XPS_GLYPH_MAPPING * glyphMappings) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProhibitedCaretStopCount(UINT32 * prohibitedCaretStopCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProhibitedCaretStops(UINT32 * prohibitedCaretStopCount,
                                                              UINT32 * prohibitedCaretStops) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBidiLevel(UINT32 * bidiLevel) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsSideways(BOOL * isSideways) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDeviceFontName(LPWSTR * deviceFontName) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStyleSimulations(XPS_STYLE_SIMULATION * styleSimulations) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStyleSimulations(XPS_STYLE_SIMULATION styleSimulations) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOrigin(XPS_POINT * origin) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOrigin(const XPS_POINT* origin) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontRenderingEmSize(FLOAT * fontRenderingEmSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontRenderingEmSize(FLOAT fontRenderingEmSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontResource(IXpsOMFontResource * *fontResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontResource(IXpsOMFontResource * fontResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFaceIndex(SHORT * fontFaceIndex) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontFaceIndex(SHORT fontFaceIndex) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrush(IXpsOMBrush * *fillBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrushLocal(IXpsOMBrush * *fillBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFillBrushLocal(IXpsOMBrush * fillBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrushLookup(LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFillBrushLookup(LPCWSTR key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlyphsEditor(IXpsOMGlyphsEditor * *editor) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMGlyphs * *glyphs) = 0;
};
__CRT_UUID_DECL(IXpsOMGlyphs, 0x819b3199, 0x0a5a, 0x4b64, 0xbe, 0xc7, 0xa9, 0xe1, 0x7e, 0x78, 0x0d, 0xe2)

MIDL_INTERFACE("37d38bb6-3ee9-4110-9312-14b194163337") IXpsOMPath : public IXpsOMVisual {
public:
    virtual HRESULT STDMETHODCALLTYPE GetGeometry(IXpsOMGeometry * *geometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGeometryLocal(IXpsOMGeometry * *geometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetGeometryLocal(IXpsOMGeometry * geometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGeometryLookup(LPWSTR * lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetGeometryLookup(LPCWSTR lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAccessibilityShortDescription(LPWSTR * shortDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAccessibilityShortDescription(LPCWSTR shortDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAccessibilityLongDescription(LPWSTR * longDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAccessibilityLongDescription(LPCWSTR longDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSnapsToPixels(BOOL * snapsToPixels) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSnapsToPixels(BOOL snapsToPixels) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeBrush(IXpsOMBrush * *brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeBrushLocal(IXpsOMBrush * *brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeBrushLocal(IXpsOMBrush * brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeBrushLookup(LPWSTR * lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeBrushLookup(LPCWSTR lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeDashes(IXpsOMDashCollection * *strokeDashes) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeDashCap(XPS_DASH_CAP * strokeDashCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeDashCap(XPS_DASH_CAP strokeDashCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeDashOffset(FLOAT * strokeDashOffset) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeDashOffset(FLOAT strokeDashOffset) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeStartLineCap(XPS_LINE_CAP * strokeStartLineCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeStartLineCap(XPS_LINE_CAP strokeStartLineCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeEndLineCap(XPS_LINE_CAP * strokeEndLineCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeEndLineCap(XPS_LINE_CAP strokeEndLineCap) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeLineJoin(XPS_LINE_JOIN * strokeLineJoin) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeLineJoin(XPS_LINE_JOIN strokeLineJoin) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeMiterLimit(FLOAT * strokeMiterLimit) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeMiterLimit(FLOAT strokeMiterLimit) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrokeThickness(FLOAT * strokeThickness) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrokeThickness(FLOAT strokeThickness) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrush(IXpsOMBrush * *brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrushLocal(IXpsOMBrush * *brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFillBrushLocal(IXpsOMBrush * brush) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFillBrushLookup(LPWSTR * lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFillBrushLookup(LPCWSTR lookup) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMPath * *path) = 0;
};
__CRT_UUID_DECL(IXpsOMPath, 0x37d38bb6, 0x3ee9, 0x4110, 0x93, 0x12, 0x14, 0xb1, 0x94, 0x16, 0x33, 0x37)

MIDL_INTERFACE("94d8abde-ab91-46a8-82b7-f5b05ef01a96") IXpsOMVisualCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMVisual * *object) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMVisual * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMVisual * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMVisual * object) = 0;
};
__CRT_UUID_DECL(IXpsOMVisualCollection, 0x94d8abde, 0xab91, 0x46a8, 0x82, 0xb7, 0xf5, 0xb0, 0x5e, 0xf0, 0x1a,
                0x96)

MIDL_INTERFACE("897c86b8-8eaf-4ae3-bdde-56419fcf4236") IXpsOMDictionary : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IUnknown * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, LPWSTR * key, IXpsOMShareable * *entry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByKey(LPCWSTR key, IXpsOMShareable * beforeEntry,
                                               IXpsOMShareable * *entry) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIndex(IXpsOMShareable * entry, UINT32 * index) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(LPCWSTR key, IXpsOMShareable * entry) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, LPCWSTR key, IXpsOMShareable * entry) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, LPCWSTR key, IXpsOMShareable * entry) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMDictionary * *dictionary) = 0;
};
__CRT_UUID_DECL(IXpsOMDictionary, 0x897c86b8, 0x8eaf, 0x4ae3, 0xbd, 0xde, 0x56, 0x41, 0x9f, 0xcf, 0x42, 0x36)

MIDL_INTERFACE("221d1452-331e-47c6-87e9-6ccefb9b5ba3") IXpsOMCanvas : public IXpsOMVisual {
public:
    virtual HRESULT STDMETHODCALLTYPE GetVisuals(IXpsOMVisualCollection * *visuals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUseAliasedEdgeMode(BOOL * useAliasedEdgeMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetUseAliasedEdgeMode(BOOL useAliasedEdgeMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAccessibilityShortDescription(LPWSTR * shortDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAccessibilityShortDescription(LPCWSTR shortDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAccessibilityLongDescription(LPWSTR * longDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAccessibilityLongDescription(LPCWSTR longDescription) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary * *resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionaryLocal(IXpsOMDictionary * *resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDictionaryLocal(IXpsOMDictionary * resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionaryResource(IXpsOMRemoteDictionaryResource *
                                                            *remoteDictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDictionaryResource(IXpsOMRemoteDictionaryResource *
                                                            remoteDictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMCanvas * *canvas) = 0;
};
__CRT_UUID_DECL(IXpsOMCanvas, 0x221d1452, 0x331e, 0x47c6, 0x87, 0xe9, 0x6c, 0xce, 0xfb, 0x9b, 0x5b, 0xa3)

// Resources: parts that pages refer to.

MIDL_INTERFACE("a8c45708-47d9-4af4-8d20-33b48c9b8485") IXpsOMFontResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *readerStream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, XPS_FONT_EMBEDDING embeddingOption,
                                                 IOpcPartUri * partName) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetEmbeddingOption(XPS_FONT_EMBEDDING * embeddingOption) = 0;
};
__CRT_UUID_DECL(IXpsOMFontResource, 0xa8c45708, 0x47d9, 0x4af4, 0x8d, 0x20, 0x33, 0xb4, 0x8c, 0x9b, 0x84,
                0x85)

MIDL_INTERFACE("3db8417d-ae50-485e-9a44-d7758f78a23f") IXpsOMImageResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *readerStream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, XPS_IMAGE_TYPE imageType,
                                                 IOpcPartUri * partName) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetImageType(XPS_IMAGE_TYPE * imageType) = 0;
};
__CRT_UUID_DECL(IXpsOMImageResource, 0x3db8417d, 0xae50, 0x485e, 0x9a, 0x44, 0xd7, 0x75, 0x8f, 0x78, 0xa2,
                0x3f)

MIDL_INTERFACE("67bd7d69-1eef-4bb1-b5e7-6f4f87be8abe") IXpsOMColorProfileResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, IOpcPartUri * partName) = 0;
};
__CRT_UUID_DECL(IXpsOMColorProfileResource, 0x67bd7d69, 0x1eef, 0x4bb1, 0xb5, 0xe7, 0x6f, 0x4f, 0x87, 0xbe,
                0x8a, 0xbe)

MIDL_INTERFACE("c9bd7cd4-e16a-4bf8-8c84-c950af7a3061")
IXpsOMRemoteDictionaryResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary * *dictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDictionary(IXpsOMDictionary * dictionary) = 0;
};
__CRT_UUID_DECL(IXpsOMRemoteDictionaryResource, 0xc9bd7cd4, 0xe16a, 0x4bf8, 0x8c, 0x84, 0xc9, 0x50, 0xaf,
                0x7a, 0x30, 0x61)

MIDL_INTERFACE("e7ff32d2-34aa-499b-bbe9-9cd4ee6c59f7") IXpsOMPrintTicketResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, IOpcPartUri * partName) = 0;
};
__CRT_UUID_DECL(IXpsOMPrintTicketResource, 0xe7ff32d2, 0x34aa, 0x499b, 0xbb, 0xe9, 0x9c, 0xd4, 0xee, 0x6c,
                0x59, 0xf7)

MIDL_INTERFACE("85febc8a-6b63-48a9-af07-7064e4ecff30")
IXpsOMDocumentStructureResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocument * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, IOpcPartUri * partName) = 0;
};
__CRT_UUID_DECL(IXpsOMDocumentStructureResource, 0x85febc8a, 0x6b63, 0x48a9, 0xaf, 0x07, 0x70, 0x64, 0xe4,
                0xec, 0xff, 0x30)

MIDL_INTERFACE("c2b3ca09-0473-4282-87ae-1780863223f0") IXpsOMStoryFragmentsResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPageReference * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, IOpcPartUri * partName) = 0;
};
__CRT_UUID_DECL(IXpsOMStoryFragmentsResource, 0xc2b3ca09, 0x0473, 0x4282, 0x87, 0xae, 0x17, 0x80, 0x86, 0x32,
                0x23, 0xf0)

MIDL_INTERFACE("4776ad35-2e04-4357-8743-ebf6c171a905") IXpsOMSignatureBlockResource : public IXpsOMResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocument * *owner) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStream(IStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContent(IStream * sourceStream, IOpcPartUri * partName) = 0;
};
__CRT_UUID_DECL(IXpsOMSignatureBlockResource, 0x4776ad35, 0x2e04, 0x4357, 0x87, 0x43, 0xeb, 0xf6, 0xc1, 0x71,
                0xa9, 0x05)

MIDL_INTERFACE("70b4a6bb-88d4-4fa8-aaf9-6d9c596fdbad") IXpsOMFontResourceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMFontResource * *value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMFontResource * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMFontResource * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMFontResource * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri * partName, IXpsOMFontResource * *part) = 0;
};
__CRT_UUID_DECL(IXpsOMFontResourceCollection, 0x70b4a6bb, 0x88d4, 0x4fa8, 0xaa, 0xf9, 0x6d, 0x9c, 0x59, 0x6f,
                0xdb, 0xad)

MIDL_INTERFACE("7a4a1a71-9cde-4b71-b33f-62de843eabfe") IXpsOMImageResourceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMImageResource * *object) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMImageResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMImageResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMImageResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri * partName, IXpsOMImageResource * *part) = 0;
};
__CRT_UUID_DECL(IXpsOMImageResourceCollection, 0x7a4a1a71, 0x9cde, 0x4b71, 0xb3, 0x3f, 0x62, 0xde, 0x84, 0x3e,
                0xab, 0xfe)

MIDL_INTERFACE("12759630-5fba-4283-8f7d-cca849809edb")
IXpsOMColorProfileResourceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMColorProfileResource * *object) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMColorProfileResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMColorProfileResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMColorProfileResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri * partName,
                                                    IXpsOMColorProfileResource * *part) = 0;
};
__CRT_UUID_DECL(IXpsOMColorProfileResourceCollection, 0x12759630, 0x5fba, 0x4283, 0x8f, 0x7d, 0xcc, 0xa8,
                0x49, 0x80, 0x9e, 0xdb)

MIDL_INTERFACE("5c38db61-7fec-464a-87bd-41e3bef018be")
IXpsOMRemoteDictionaryResourceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMRemoteDictionaryResource * *object) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMRemoteDictionaryResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMRemoteDictionaryResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMRemoteDictionaryResource * object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByPartName(
        IOpcPartUri * partName, IXpsOMRemoteDictionaryResource * *remoteDictionaryResource) = 0;
};
__CRT_UUID_DECL(IXpsOMRemoteDictionaryResourceCollection, 0x5c38db61, 0x7fec, 0x464a, 0x87, 0xbd, 0x41, 0xe3,
                0xbe, 0xf0, 0x18, 0xbe)

MIDL_INTERFACE("ab8f5d8e-351b-4d33-aaed-fa56f0022931")
IXpsOMSignatureBlockResourceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index,
                                            IXpsOMSignatureBlockResource * *signatureBlockResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index,
                                               IXpsOMSignatureBlockResource * signatureBlockResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index,
                                            IXpsOMSignatureBlockResource * signatureBlockResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMSignatureBlockResource * signatureBlockResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri * partName, IXpsOMSignatureBlockResource *
                                                                                *signatureBlockResource) = 0;
};
__CRT_UUID_DECL(IXpsOMSignatureBlockResourceCollection, 0xab8f5d8e, 0x351b, 0x4d33, 0xaa, 0xed, 0xfa, 0x56,
                0xf0, 0x02, 0x29, 0x31)

MIDL_INTERFACE("f4cf7729-4864-4275-99b3-a8717163ecaf") IXpsOMPartResources : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFontResources(IXpsOMFontResourceCollection * *fontResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetImageResources(IXpsOMImageResourceCollection * *imageResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorProfileResources(IXpsOMColorProfileResourceCollection *
                                                               *colorProfileResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRemoteDictionaryResources(IXpsOMRemoteDictionaryResourceCollection *
                                                                   *dictionaryResources) = 0;
};
__CRT_UUID_DECL(IXpsOMPartResources, 0xf4cf7729, 0x4864, 0x4275, 0x99, 0xb3, 0xa8, 0x71, 0x71, 0x63, 0xec,
                0xaf)

// Pages, documents and packages.

MIDL_INTERFACE("d3e18888-f120-4fee-8c68-35296eae91d4") IXpsOMPage : public IXpsOMPart {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPageReference * *pageReference) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVisuals(IXpsOMVisualCollection * *visuals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPageDimensions(XPS_SIZE * pageDimensions) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPageDimensions(const XPS_SIZE* pageDimensions) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetContentBox(XPS_RECT * contentBox) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContentBox(const XPS_RECT* contentBox) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBleedBox(XPS_RECT * bleedBox) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBleedBox(const XPS_RECT* bleedBox) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR * language) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetName(LPWSTR * name) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetName(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIsHyperlinkTarget(BOOL * isHyperlinkTarget) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIsHyperlinkTarget(BOOL isHyperlinkTarget) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary * *resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionaryLocal(IXpsOMDictionary * *resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDictionaryLocal(IXpsOMDictionary * resourceDictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDictionaryResource(IXpsOMRemoteDictionaryResource *
                                                            *remoteDictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDictionaryResource(IXpsOMRemoteDictionaryResource *
                                                            remoteDictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(ISequentialStream * stream, BOOL optimizeMarkupSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE GenerateUnusedLookupKey(XPS_OBJECT_TYPE type, LPWSTR * key) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMPage * *page) = 0;
};
__CRT_UUID_DECL(IXpsOMPage, 0xd3e18888, 0xf120, 0x4fee, 0x8c, 0x68, 0x35, 0x29, 0x6e, 0xae, 0x91, 0xd4)

MIDL_INTERFACE("ed360180-6f92-4998-890d-2f208531a0a0") IXpsOMPageReference : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocument * *document) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPage(IXpsOMPage * *page) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPage(IXpsOMPage * page) = 0;
    virtual HRESULT STDMETHODCALLTYPE DiscardPage() = 0;
    virtual HRESULT STDMETHODCALLTYPE IsPageLoaded(BOOL * isPageLoaded) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAdvisoryPageDimensions(XPS_SIZE * pageDimensions) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAdvisoryPageDimensions(const XPS_SIZE* pageDimensions) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStoryFragmentsResource(IXpsOMStoryFragmentsResource *
                                                                *storyFragmentsResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStoryFragmentsResource(IXpsOMStoryFragmentsResource *
                                                                storyFragmentsResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             *printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetThumbnailResource(IXpsOMImageResource * *imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnailResource(IXpsOMImageResource * imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CollectLinkTargets(IXpsOMNameCollection * *linkTargets) = 0;
    virtual HRESULT STDMETHODCALLTYPE CollectPartResources(IXpsOMPartResources * *partResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE HasRestrictedFonts(BOOL * restrictedFonts) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMPageReference * *pageReference) = 0;
};
__CRT_UUID_DECL(IXpsOMPageReference, 0xed360180, 0x6f92, 0x4998, 0x89, 0x0d, 0x2f, 0x20, 0x85, 0x31, 0xa0,
                0xa0)

MIDL_INTERFACE("ca16ba4d-e7b9-45c5-958b-f98022473745") IXpsOMPageReferenceCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMPageReference * *pageReference) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMPageReference * pageReference) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMPageReference * pageReference) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMPageReference * pageReference) = 0;
};
__CRT_UUID_DECL(IXpsOMPageReferenceCollection, 0xca16ba4d, 0xe7b9, 0x45c5, 0x95, 0x8b, 0xf9, 0x80, 0x22, 0x47,
                0x37, 0x45)

MIDL_INTERFACE("2c2c94cb-ac5f-4254-8ee9-23948309d9f0") IXpsOMDocument : public IXpsOMPart {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocumentSequence * *documentSequence) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPageReferences(IXpsOMPageReferenceCollection * *pageReferences) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             *printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDocumentStructureResource(IXpsOMDocumentStructureResource *
                                                                   *documentStructureResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDocumentStructureResource(IXpsOMDocumentStructureResource *
                                                                   documentStructureResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSignatureBlockResources(IXpsOMSignatureBlockResourceCollection *
                                                                 *signatureBlockResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMDocument * *document) = 0;
};
__CRT_UUID_DECL(IXpsOMDocument, 0x2c2c94cb, 0xac5f, 0x4254, 0x8e, 0xe9, 0x23, 0x94, 0x83, 0x09, 0xd9, 0xf0)

MIDL_INTERFACE("d1c87f0d-e947-4754-8a25-971478f7e83e") IXpsOMDocumentCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IXpsOMDocument * *document) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IXpsOMDocument * document) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IXpsOMDocument * document) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IXpsOMDocument * document) = 0;
};
__CRT_UUID_DECL(IXpsOMDocumentCollection, 0xd1c87f0d, 0xe947, 0x4754, 0x8a, 0x25, 0x97, 0x14, 0x78, 0xf7,
                0xe8, 0x3e)

MIDL_INTERFACE("56492eb4-d8d5-425e-8256-4c2b64ad0264") IXpsOMDocumentSequence : public IXpsOMPart {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPackage * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDocuments(IXpsOMDocumentCollection * *documents) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             *printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource *
                                                             printTicketResource) = 0;
};
__CRT_UUID_DECL(IXpsOMDocumentSequence, 0x56492eb4, 0xd8d5, 0x425e, 0x82, 0x56, 0x4c, 0x2b, 0x64, 0xad, 0x02,
                0x64)

MIDL_INTERFACE("3340fe8f-4027-4aa1-8f5f-d35ae45fe597") IXpsOMCoreProperties : public IXpsOMPart {
public:
    virtual HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPackage * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCategory(LPWSTR * category) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCategory(LPCWSTR category) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetContentStatus(LPWSTR * contentStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContentStatus(LPCWSTR contentStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetContentType(LPWSTR * contentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetContentType(LPCWSTR contentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCreated(SYSTEMTIME * created) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCreated(const SYSTEMTIME* created) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCreator(LPWSTR * creator) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCreator(LPCWSTR creator) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDescription(LPWSTR * description) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDescription(LPCWSTR description) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIdentifier(LPWSTR * identifier) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIdentifier(LPCWSTR identifier) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetKeywords(LPWSTR * keywords) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetKeywords(LPCWSTR keywords) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR * language) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLastModifiedBy(LPWSTR * lastModifiedBy) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLastModifiedBy(LPCWSTR lastModifiedBy) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLastPrinted(SYSTEMTIME * lastPrinted) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLastPrinted(const SYSTEMTIME* lastPrinted) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetModified(SYSTEMTIME * modified) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetModified(const SYSTEMTIME* modified) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRevision(LPWSTR * revision) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetRevision(LPCWSTR revision) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSubject(LPWSTR * subject) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSubject(LPCWSTR subject) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTitle(LPWSTR * title) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTitle(LPCWSTR title) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVersion(LPWSTR * version) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVersion(LPCWSTR version) = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IXpsOMCoreProperties * *coreProperties) = 0;
};
__CRT_UUID_DECL(IXpsOMCoreProperties, 0x3340fe8f, 0x4027, 0x4aa1, 0x8f, 0x5f, 0xd3, 0x5a, 0xe4, 0x5f, 0xe5,
                0x97)

MIDL_INTERFACE("18c3df65-81e1-4674-91dc-fc452f5a416f") IXpsOMPackage : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDocumentSequence(IXpsOMDocumentSequence * *documentSequence) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDocumentSequence(IXpsOMDocumentSequence * documentSequence) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCoreProperties(IXpsOMCoreProperties * *coreProperties) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetCoreProperties(IXpsOMCoreProperties * coreProperties) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDiscardControlPartName(IOpcPartUri * *discardControlPartUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDiscardControlPartName(IOpcPartUri * discardControlPartUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetThumbnailResource(IXpsOMImageResource * *imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnailResource(IXpsOMImageResource * imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE WriteToFile(LPCWSTR fileName, SECURITY_ATTRIBUTES * securityAttributes,
                                                  DWORD flagsAndAttributes, BOOL optimizeMarkupSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE WriteToStream(ISequentialStream * stream, BOOL optimizeMarkupSize) = 0;
};
__CRT_UUID_DECL(IXpsOMPackage, 0x18c3df65, 0x81e1, 0x4674, 0x91, 0xdc, 0xfc, 0x45, 0x2f, 0x5a, 0x41, 0x6f)

MIDL_INTERFACE("4bddf8ec-c915-421b-a166-d173d25653d2") IXpsOMNameCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, LPWSTR * name) = 0;
};
__CRT_UUID_DECL(IXpsOMNameCollection, 0x4bddf8ec, 0xc915, 0x421b, 0xa1, 0x66, 0xd1, 0x73, 0xd2, 0x56, 0x53,
                0xd2)

MIDL_INTERFACE("57c650d4-067c-4893-8c33-f62a0633730f") IXpsOMPartUriCollection : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32 * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IOpcPartUri * *partUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, IOpcPartUri * partUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, IOpcPartUri * partUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE Append(IOpcPartUri * partUri) = 0;
};
__CRT_UUID_DECL(IXpsOMPartUriCollection, 0x57c650d4, 0x067c, 0x4893, 0x8c, 0x33, 0xf6, 0x2a, 0x06, 0x33, 0x73,
                0x0f)

MIDL_INTERFACE("4e2aa182-a443-42c6-b41b-4f8e9de73ff9") IXpsOMPackageWriter : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE StartNewDocument(
        IOpcPartUri * documentPartName, IXpsOMPrintTicketResource * documentPrintTicket,
        IXpsOMDocumentStructureResource * documentStructure,
        IXpsOMSignatureBlockResourceCollection * signatureBlockResources,
        IXpsOMPartUriCollection * restrictedFonts) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddPage(
        IXpsOMPage * page, const XPS_SIZE* advisoryPageDimensions,
        IXpsOMPartUriCollection* discardableResourceParts, IXpsOMStoryFragmentsResource* storyFragments,
        IXpsOMPrintTicketResource* pagePrintTicket, IXpsOMImageResource* pageThumbnail) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddResource(IXpsOMResource * resource) = 0;
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    virtual HRESULT STDMETHODCALLTYPE IsClosed(BOOL * isClosed) = 0;
};
__CRT_UUID_DECL(IXpsOMPackageWriter, 0x4e2aa182, 0xa443, 0x42c6, 0xb4, 0x1b, 0x4f, 0x8e, 0x9d, 0xe7, 0x3f,
                0xf9)

MIDL_INTERFACE("219a9db0-4959-47d0-8034-b1ce84f41a4d") IXpsOMPackageTarget : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE CreateXpsOMPackageWriter(
        IOpcPartUri * documentSequencePartName, IXpsOMPrintTicketResource * documentSequencePrintTicket,
        IOpcPartUri * discardControlPartName, IXpsOMPackageWriter * *packageWriter) = 0;
};
__CRT_UUID_DECL(IXpsOMPackageTarget, 0x219a9db0, 0x4959, 0x47d0, 0x80, 0x34, 0xb1, 0xce, 0x84, 0xf4, 0x1a,
                0x4d)

// What makes them.

MIDL_INTERFACE("15b873d5-1971-41e8-83a3-6578403064c7") IXpsOMThumbnailGenerator : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GenerateThumbnail(
        IXpsOMPage * page, XPS_IMAGE_TYPE thumbnailType, XPS_THUMBNAIL_SIZE thumbnailSize,
        IOpcPartUri * imageResourcePartName, IXpsOMImageResource * *imageResource) = 0;
};
__CRT_UUID_DECL(IXpsOMThumbnailGenerator, 0x15b873d5, 0x1971, 0x41e8, 0x83, 0xa3, 0x65, 0x78, 0x40, 0x30,
                0x64, 0xc7)

MIDL_INTERFACE("f9b2a685-a50d-4fc2-b764-b56e093ea0ca") IXpsOMObjectFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE CreatePackage(IXpsOMPackage * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageFromFile(LPCWSTR filename, BOOL reuseObjects,
                                                            IXpsOMPackage * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageFromStream(IStream * stream, BOOL reuseObjects,
                                                              IXpsOMPackage * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateStoryFragmentsResource(
        IStream * acquiredStream, IOpcPartUri * partUri,
        IXpsOMStoryFragmentsResource * *storyFragmentsResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDocumentStructureResource(
        IStream * acquiredStream, IOpcPartUri * partUri,
        IXpsOMDocumentStructureResource * *documentStructureResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateSignatureBlockResource(
        IStream * acquiredStream, IOpcPartUri * partUri,
        IXpsOMSignatureBlockResource * *signatureBlockResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResource(
        IXpsOMDictionary * dictionary, IOpcPartUri * partUri,
        IXpsOMRemoteDictionaryResource * *remoteDictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResourceFromStream(
        IStream * dictionaryMarkupStream, IOpcPartUri * dictionaryPartUri, IXpsOMPartResources * resources,
        IXpsOMRemoteDictionaryResource * *dictionaryResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePartResources(IXpsOMPartResources * *partResources) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDocumentSequence(IOpcPartUri * partUri,
                                                             IXpsOMDocumentSequence * *documentSequence) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDocument(IOpcPartUri * partUri, IXpsOMDocument * *document) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePageReference(const XPS_SIZE* advisoryPageDimensions,
                                                          IXpsOMPageReference** pageReference) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePage(const XPS_SIZE* pageDimensions, LPCWSTR language,
                                                 IOpcPartUri* partUri, IXpsOMPage** page) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePageFromStream(IStream * pageMarkupStream, IOpcPartUri * partUri,
                                                           IXpsOMPartResources * resources, BOOL reuseObjects,
                                                           IXpsOMPage * *page) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCanvas(IXpsOMCanvas * *canvas) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGlyphs(IXpsOMFontResource * fontResource,
                                                   IXpsOMGlyphs * *glyphs) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePath(IXpsOMPath * *path) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGeometry(IXpsOMGeometry * *geometry) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGeometryFigure(const XPS_POINT* startPoint,
                                                           IXpsOMGeometryFigure** figure) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMatrixTransform(const XPS_MATRIX* matrix,
                                                            IXpsOMMatrixTransform** transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateSolidColorBrush(const XPS_COLOR* color,
                                                            IXpsOMColorProfileResource* colorProfile,
                                                            IXpsOMSolidColorBrush** solidColorBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateColorProfileResource(
        IStream * acquiredStream, IOpcPartUri * partUri,
        IXpsOMColorProfileResource * *colorProfileResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateImageBrush(IXpsOMImageResource * image, const XPS_RECT* viewBox,
                                                       const XPS_RECT* viewPort,
                                                       IXpsOMImageBrush** imageBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateVisualBrush(const XPS_RECT* viewBox, const XPS_RECT* viewPort,
                                                        IXpsOMVisualBrush** visualBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateImageResource(IStream * acquiredStream,
                                                          XPS_IMAGE_TYPE contentType, IOpcPartUri * partUri,
                                                          IXpsOMImageResource * *imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePrintTicketResource(
        IStream * acquiredStream, IOpcPartUri * partUri,
        IXpsOMPrintTicketResource * *printTicketResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontResource(
        IStream * acquiredStream, XPS_FONT_EMBEDDING fontEmbedding, IOpcPartUri * partUri,
        BOOL isObfSourceStream, IXpsOMFontResource * *fontResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGradientStop(const XPS_COLOR* color,
                                                         IXpsOMColorProfileResource* colorProfile,
                                                         FLOAT offset, IXpsOMGradientStop** gradientStop) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateLinearGradientBrush(
        IXpsOMGradientStop * gradStop1, IXpsOMGradientStop * gradStop2, const XPS_POINT* startPoint,
        const XPS_POINT* endPoint, IXpsOMLinearGradientBrush** linearGradientBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRadialGradientBrush(
        IXpsOMGradientStop * gradStop1, IXpsOMGradientStop * gradStop2, const XPS_POINT* centerPoint,
        const XPS_POINT* gradientOrigin, const XPS_SIZE* radiiSizes,
        IXpsOMRadialGradientBrush** radialGradientBrush) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCoreProperties(IOpcPartUri * partUri,
                                                           IXpsOMCoreProperties * *coreProperties) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDictionary(IXpsOMDictionary * *dictionary) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePartUriCollection(IXpsOMPartUriCollection *
                                                              *partUriCollection) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageWriterOnFile(
        LPCWSTR fileName, SECURITY_ATTRIBUTES * securityAttributes, DWORD flagsAndAttributes,
        BOOL optimizeMarkupSize, XPS_INTERLEAVING interleaving, IOpcPartUri * documentSequencePartName,
        IXpsOMCoreProperties * coreProperties, IXpsOMImageResource * packageThumbnail,
        IXpsOMPrintTicketResource * documentSequencePrintTicket, IOpcPartUri * discardControlPartName,
        IXpsOMPackageWriter * *packageWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageWriterOnStream(
        ISequentialStream * outputStream, BOOL optimizeMarkupSize, XPS_INTERLEAVING interleaving,
        IOpcPartUri * documentSequencePartName, IXpsOMCoreProperties * coreProperties,
        IXpsOMImageResource * packageThumbnail, IXpsOMPrintTicketResource * documentSequencePrintTicket,
        IOpcPartUri * discardControlPartName, IXpsOMPackageWriter * *packageWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePartUri(LPCWSTR uri, IOpcPartUri * *partUri) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateReadOnlyStreamOnFile(LPCWSTR filename, IStream * *stream) = 0;
};
__CRT_UUID_DECL(IXpsOMObjectFactory, 0xf9b2a685, 0xa50d, 0x4fc2, 0xb7, 0x64, 0xb5, 0x6e, 0x09, 0x3e, 0xa0,
                0xca)

class XpsOMObjectFactory;
__CRT_UUID_DECL(XpsOMObjectFactory, 0xe974d26d, 0x3d9b, 0x4d47, 0x88, 0xcc, 0x38, 0x72, 0xf2, 0xdc, 0x35,
                0x85)
class XpsOMThumbnailGenerator;
__CRT_UUID_DECL(XpsOMThumbnailGenerator, 0x7e4a23e2, 0xb969, 0x4761, 0xbe, 0x35, 0x1a, 0x8c, 0xed, 0x58, 0xe3,
                0x23)
