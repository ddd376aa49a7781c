#include "ObjectModel/GeometryObject.h"
#include "ObjectModel/MarkupNumbers.h"

#include <algorithm>
#include <new>
#include <numeric>

namespace OvPlatform {

void FigureObject::Touch() {
    if (m_geometry != nullptr) m_geometry->TouchFigures();
}

HRESULT FigureObject::GetOwner(IXpsOMGeometry** owner) {
    return ElementCall([&] {
        RequirePlace(owner);
        *owner = m_geometry;
        if (m_geometry != nullptr) m_geometry->AddRef();
    });
}

HRESULT FigureObject::GetSegmentData(UINT32* count, FLOAT* data) {
    return ElementCall([&] { GiveItems(m_data.data, count, data); });
}
HRESULT FigureObject::GetSegmentTypes(UINT32* count, XPS_SEGMENT_TYPE* types) {
    return ElementCall([&] { GiveItems(m_data.types, count, types); });
}
HRESULT FigureObject::GetSegmentStrokes(UINT32* count, BOOL* strokes) {
    return ElementCall([&] { GiveItems(m_data.strokes, count, strokes); });
}

HRESULT FigureObject::SetSegments(UINT32 count, UINT32 dataCount, const XPS_SEGMENT_TYPE* types,
                                  const FLOAT* data, const BOOL* strokes) {
    return ElementCall([&] {
        FigureData wanted{m_data.start, m_data.isClosed, m_data.isFilled, {}, {}, {}};
        if (count != 0) {
            RequirePlace(types);
            RequirePlace(data);
            RequirePlace(strokes);
            wanted.types.assign(types, types + count);
            wanted.data.assign(data, data + dataCount);
            wanted.strokes.assign(strokes, strokes + count);
        }
        std::size_t needed = 0;
        for (const XPS_SEGMENT_TYPE type : wanted.types) {
            if (NumbersOf(type) == 0) throw MarkupFailure(E_INVALIDARG);
            needed += NumbersOf(type);
        }
        if (needed > dataCount) throw MarkupFailure(XPS_E_MISSING_SEGMENT_DATA);
        if (needed < dataCount) throw MarkupFailure(E_INVALIDARG);
        std::for_each(wanted.data.begin(), wanted.data.end(), CheckFinite);
        m_data = std::move(wanted);
        Touch();
    });
}

HRESULT FigureObject::GetStartPoint(XPS_POINT* point) {
    return ElementCall([&] { Give(point, m_data.start); });
}
HRESULT FigureObject::SetStartPoint(const XPS_POINT* point) {
    return ElementCall([&] {
        RequirePlace(point);
        CheckFinite(point->x);
        CheckFinite(point->y);
        m_data.start = *point;
        Touch();
    });
}

HRESULT FigureObject::GetIsClosed(BOOL* isClosed) {
    return ElementCall([&] { Give(isClosed, BOOL{m_data.isClosed}); });
}
HRESULT FigureObject::SetIsClosed(BOOL isClosed) {
    return ElementCall([&] {
        m_data.isClosed = isClosed != FALSE;
        Touch();
    });
}

HRESULT FigureObject::GetIsFilled(BOOL* isFilled) {
    return ElementCall([&] { Give(isFilled, BOOL{m_data.isFilled}); });
}
HRESULT FigureObject::SetIsFilled(BOOL isFilled) {
    return ElementCall([&] {
        m_data.isFilled = isFilled != FALSE;
        Touch();
    });
}

HRESULT FigureObject::GetSegmentCount(UINT32* count) {
    return ElementCall([&] { Give(count, static_cast<UINT32>(m_data.types.size())); });
}
HRESULT FigureObject::GetSegmentDataCount(UINT32* count) {
    return ElementCall([&] { Give(count, static_cast<UINT32>(m_data.data.size())); });
}

HRESULT FigureObject::GetSegmentStrokePattern(XPS_SEGMENT_STROKE_PATTERN* pattern) {
    return ElementCall([&] {
        const auto stroked = std::count_if(m_data.strokes.begin(), m_data.strokes.end(),
                                           [](BOOL stroke) { return stroke != FALSE; });
        const bool isAll = static_cast<std::size_t>(stroked) == m_data.strokes.size();
        Give(pattern, isAll          ? XPS_SEGMENT_STROKE_PATTERN_ALL
                      : stroked == 0 ? XPS_SEGMENT_STROKE_PATTERN_NONE
                                     : XPS_SEGMENT_STROKE_PATTERN_MIXED);
    });
}

HRESULT FigureObject::Clone(IXpsOMGeometryFigure** figure) {
    return ElementCall([&] {
        RequirePlace(figure);
        *figure = new FigureObject(m_data);
    });
}

} // namespace OvPlatform
