#include "ObjectModel/GeometryObject.h"

#include "ObjectModel/MarkupNumbers.h"
#include "ObjectModel/MarkupText.h"

#include <array>

namespace OvPlatform {

namespace {

constexpr const char* transformName = "Transform";
constexpr const char* figuresName = "Figures";
constexpr Words<2> fillRuleWords = {"EvenOdd", "NonZero"};

// Reads one figure that stands in an element, and writes one.

std::string TextOf(const PageSource& source, std::uint32_t element, std::string_view name) {
    RawAttributes attributes(source.StartTag(element));
    for (RawAttributes::Item item; attributes.Next(item);)
        if (item.name == name) return UnescapeAttribute(item.value);
    return {};
}

std::vector<FLOAT> NumbersIn(const PageSource& source, std::uint32_t element, std::string_view name) {
    std::optional<std::vector<FLOAT>> numbers = ParseNumbers(TextOf(source, element, name));
    if (!numbers) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    return std::move(*numbers);
}

std::vector<FLOAT> PairIn(const PageSource& source, std::uint32_t element, std::string_view name) {
    std::vector<FLOAT> numbers = NumbersIn(source, element, name);
    if (numbers.size() != 2) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    return numbers;
}

void AddPoints(FigureData& figure, const PageSource& source, std::uint32_t element, XPS_SEGMENT_TYPE type,
               bool isStroked) {
    const std::vector<FLOAT> numbers = NumbersIn(source, element, "Points");
    const std::size_t each = NumbersOf(type);
    if (numbers.size() % each != 0) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    for (std::size_t at = 0; at < numbers.size(); at += each)
        figure.Add(type, {numbers.data() + at, numbers.data() + at + each}, isStroked);
}

void AddArc(FigureData& figure, const PageSource& source, std::uint32_t element, bool isStroked) {
    const bool isLarge = TextOf(source, element, "IsLargeArc") == "true";
    const bool isClockwise = TextOf(source, element, "SweepDirection") == "Clockwise";
    const XPS_SEGMENT_TYPE type = isLarge ? (isClockwise ? XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE
                                                         : XPS_SEGMENT_TYPE_ARC_LARGE_COUNTERCLOCKWISE)
                                          : (isClockwise ? XPS_SEGMENT_TYPE_ARC_SMALL_CLOCKWISE
                                                         : XPS_SEGMENT_TYPE_ARC_SMALL_COUNTERCLOCKWISE);
    std::vector<FLOAT> numbers = PairIn(source, element, "Point");
    const std::vector<FLOAT> radii = PairIn(source, element, "Size");
    numbers.insert(numbers.end(), radii.begin(), radii.end());
    numbers.push_back(ParseNumber(TextOf(source, element, "RotationAngle")).value_or(0.0F));
    figure.Add(type, numbers, isStroked);
}

FigureData ReadFigure(const PageSource& source, std::uint32_t element) {
    FigureData figure;
    const std::vector<FLOAT> start = PairIn(source, element, "StartPoint");
    figure.start = {start[0], start[1]};
    figure.isClosed = TextOf(source, element, "IsClosed") == "true";
    figure.isFilled = TextOf(source, element, "IsFilled") != "false";
    for (std::uint32_t at = source.FirstChild(element); at != noElement;
         at = source.NextSibling(element, at)) {
        const bool isStroked = TextOf(source, at, "IsStroked") != "false";
        switch (source.At(at).kind) {
        case ElementKind::PolyLineSegment:
            AddPoints(figure, source, at, XPS_SEGMENT_TYPE_LINE, isStroked);
            break;
        case ElementKind::PolyQuadraticBezierSegment:
            AddPoints(figure, source, at, XPS_SEGMENT_TYPE_QUADRATIC_BEZIER, isStroked);
            break;
        case ElementKind::PolyBezierSegment:
            AddPoints(figure, source, at, XPS_SEGMENT_TYPE_BEZIER, isStroked);
            break;
        case ElementKind::ArcSegment:
            AddArc(figure, source, at, isStroked);
            break;
        default:
            break;
        }
    }
    return figure;
}

std::string_view SegmentName(XPS_SEGMENT_TYPE type) noexcept {
    switch (type) {
    case XPS_SEGMENT_TYPE_LINE:
        return "PolyLineSegment";
    case XPS_SEGMENT_TYPE_QUADRATIC_BEZIER:
        return "PolyQuadraticBezierSegment";
    case XPS_SEGMENT_TYPE_BEZIER:
        return "PolyBezierSegment";
    default:
        return "ArcSegment";
    }
}

void WriteArc(MarkupWriter& out, XPS_SEGMENT_TYPE type, const FLOAT* data) {
    out.WriteAttribute("Point", FormatNumbers(data, 2));
    out.WriteAttribute("Size", FormatNumbers(data + 2, 2));
    out.WriteAttribute("RotationAngle", FormatNumber(data[4]));
    const bool isLarge =
        type == XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE || type == XPS_SEGMENT_TYPE_ARC_LARGE_COUNTERCLOCKWISE;
    const bool isClockwise =
        type == XPS_SEGMENT_TYPE_ARC_LARGE_CLOCKWISE || type == XPS_SEGMENT_TYPE_ARC_SMALL_CLOCKWISE;
    out.WriteAttribute("IsLargeArc", isLarge ? "true" : "false");
    out.WriteAttribute("SweepDirection", isClockwise ? "Clockwise" : "Counterclockwise");
}

void WriteFigure(MarkupWriter& out, const FigureData& figure) {
    const std::string name = out.QualifiedName("PathFigure");
    out.Write("<" + name);
    out.WriteAttribute("StartPoint", FormatNumbers(std::array{figure.start.x, figure.start.y}.data(), 2));
    if (figure.isClosed) out.WriteAttribute("IsClosed", "true");
    if (!figure.isFilled) out.WriteAttribute("IsFilled", "false");
    out.Write(">");
    const FLOAT* data = figure.data.data();
    for (std::size_t index = 0; index < figure.types.size(); ++index) {
        const XPS_SEGMENT_TYPE type = figure.types[index];
        const std::string_view segment = SegmentName(type);
        out.Write("<" + out.QualifiedName(segment));
        if (segment == "ArcSegment")
            WriteArc(out, type, data);
        else
            out.WriteAttribute("Points", FormatNumbers(data, NumbersOf(type)));
        if (!figure.strokes[index]) out.WriteAttribute("IsStroked", "false");
        out.Write("/>");
        data += NumbersOf(type);
    }
    out.Write("</" + name + ">");
}

} // namespace

GeometryObject::GeometryObject(std::shared_ptr<const PageSource> source, const std::string& text)
    : ShareableObject(ElementKind::PathGeometry, std::move(source), noElement), m_collection(*this),
      m_isLoaded(true), m_hasNewFigures(true) {
    std::optional<PathData> path = ParsePathData(text);
    if (!path) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    if (path->fillRule == XPS_FILL_RULE_NONZERO) SetWord(*this, "FillRule", fillRuleWords, path->fillRule);
    for (FigureData& figure : path->figures)
        AddFigure(std::move(figure));
    Settle();
}

GeometryObject::~GeometryObject() {
    for (const CComPtr<FigureObject>& figure : m_figures)
        figure->BelongTo(nullptr);
}

void GeometryObject::AddFigure(FigureData data) {
    CComPtr<FigureObject> figure;
    figure.Attach(new FigureObject(std::move(data)));
    figure->BelongTo(this);
    m_figures.push_back(std::move(figure));
}

std::vector<CComPtr<FigureObject>>& GeometryObject::Load() {
    if (m_isLoaded || !IsInSource()) return m_figures;
    std::vector<FigureData> loaded;
    if (const std::optional<std::string> text = Attribute(figuresName); text) {
        std::optional<PathData> path = ParsePathData(*text);
        if (!path) throw MarkupFailure(XPS_E_INVALID_MARKUP);
        loaded = std::move(path->figures);
    }
    for (std::uint32_t at = Source()->FirstChild(Index()); at != noElement;
         at = Source()->NextSibling(Index(), at))
        if (Source()->At(at).kind == ElementKind::PathFigure) loaded.push_back(ReadFigure(*Source(), at));
    for (FigureData& figure : loaded)
        AddFigure(std::move(figure));
    m_isLoaded = true;
    return m_figures;
}

void GeometryObject::TouchFigures() {
    Load();
    if (!m_hasNewFigures && IsInSource()) {
        RemoveAttribute(figuresName);
        for (std::uint32_t at = Source()->FirstChild(Index()); at != noElement;
             at = Source()->NextSibling(Index(), at))
            if (Source()->At(at).kind == ElementKind::PathFigure) RemoveFromSource(at);
    }
    m_hasNewFigures = true;
    Touch();
}

std::vector<FigureData> GeometryObject::Data() const {
    std::vector<FigureData> data;
    for (const CComPtr<FigureObject>& figure : m_figures)
        data.push_back(figure->Data());
    return data;
}

std::optional<ReferringValue> GeometryObject::AttributeForm() {
    if (IsInSource() || Value(transformName) != nullptr || Lookup(transformName) || Attribute("x:Key"))
        return std::nullopt;
    const std::vector<FigureData> figures = Data();
    if (!HasShortForm(figures)) return std::nullopt;
    const std::string text = FormatFigures(figures);
    XPS_FILL_RULE rule = XPS_FILL_RULE_EVENODD;
    ThrowIfFailed(GetFillRule(&rule));
    return ReferringValue(rule == XPS_FILL_RULE_NONZERO ? "F1 " + text : text);
}

void GeometryObject::Prepare() {
    if (m_figures.empty() || (IsInSource() && !m_hasNewFigures)) return;
    if (const std::vector<FigureData> figures = Data(); HasShortForm(figures))
        SetAttribute(figuresName, FormatFigures(figures));
    else
        RemoveAttribute(figuresName);
}

bool GeometryObject::HasOwnContent() const {
    return (m_hasNewFigures || !IsInSource()) && !m_figures.empty() && !HasShortForm(Data());
}

void GeometryObject::WriteOwnContent(MarkupWriter& out) {
    if (!HasOwnContent()) return;
    for (const FigureData& figure : Data())
        WriteFigure(out, figure);
}

HRESULT GeometryObject::GetFigures(IXpsOMGeometryFigureCollection** figures) {
    return ElementCall([&] {
        RequirePlace(figures);
        *figures = nullptr;
        Load();
        *figures = &m_collection;
        m_collection.AddRef();
    });
}

HRESULT GeometryObject::GetFillRule(XPS_FILL_RULE* rule) {
    return ElementCall([&] {
        RequirePlace(rule);
        *rule = WordOf(*this, "FillRule", fillRuleWords, XPS_FILL_RULE_EVENODD);
    });
}
HRESULT GeometryObject::SetFillRule(XPS_FILL_RULE rule) {
    return ElementCall([&] { SetWord(*this, "FillRule", fillRuleWords, rule); });
}

HRESULT GeometryObject::GetTransform(IXpsOMMatrixTransform** transform) {
    return GetValue(*this, transformName, transform);
}
HRESULT GeometryObject::GetTransformLocal(IXpsOMMatrixTransform** transform) {
    return GetLocalValue(*this, transformName, transform);
}
HRESULT GeometryObject::SetTransformLocal(IXpsOMMatrixTransform* transform) {
    return SetLocalValue(*this, transformName, transform);
}
HRESULT GeometryObject::GetTransformLookup(LPWSTR* key) { return GetValueLookup(*this, transformName, key); }
HRESULT GeometryObject::SetTransformLookup(LPCWSTR key) { return SetValueLookup(*this, transformName, key); }
HRESULT GeometryObject::Clone(IXpsOMGeometry** geometry) { return OvPlatform::Clone(*this, geometry); }

// Figures.

void GeometryObject::CheckIndex(std::size_t index, std::size_t count) const {
    if (index >= count) throw MarkupFailure(XPS_E_INDEX_OUT_OF_RANGE);
}

void GeometryObject::Insert(std::size_t index, IXpsOMGeometryFigure* figure) {
    RequirePlace(figure);
    CheckIndex(index, m_figures.size() + 1);
    CComPtr<IModelFigure> own;
    const HRESULT result = figure->QueryInterface(&own);
    if (result == E_NOINTERFACE) throw MarkupFailure(XPS_E_NO_CUSTOM_OBJECTS);
    ThrowIfFailed(result);
    FigureObject& inserted = own->Figure();
    if (inserted.Geometry() != nullptr) throw MarkupFailure(XPS_E_ALREADY_OWNED);
    TouchFigures();
    m_figures.insert(m_figures.begin() + static_cast<std::ptrdiff_t>(index),
                     CComPtr<FigureObject>(&inserted));
    inserted.BelongTo(this);
}

void GeometryObject::Remove(std::size_t index) {
    CheckIndex(index, m_figures.size());
    TouchFigures();
    m_figures[index]->BelongTo(nullptr);
    m_figures.erase(m_figures.begin() + static_cast<std::ptrdiff_t>(index));
}

HRESULT GeometryObject::Figures::GetCount(UINT32* count) {
    return ElementCall([&] {
        RequirePlace(count);
        *count = static_cast<UINT32>(m_geometry.m_figures.size());
    });
}
HRESULT GeometryObject::Figures::GetAt(UINT32 index, IXpsOMGeometryFigure** figure) {
    return ElementCall([&] {
        RequirePlace(figure);
        *figure = nullptr;
        m_geometry.CheckIndex(index, m_geometry.m_figures.size());
        *figure = m_geometry.m_figures[index];
        (*figure)->AddRef();
    });
}
HRESULT GeometryObject::Figures::InsertAt(UINT32 index, IXpsOMGeometryFigure* figure) {
    return ElementCall([&] { m_geometry.Insert(index, figure); });
}
HRESULT GeometryObject::Figures::RemoveAt(UINT32 index) {
    return ElementCall([&] { m_geometry.Remove(index); });
}
HRESULT GeometryObject::Figures::SetAt(UINT32 index, IXpsOMGeometryFigure* figure) {
    return ElementCall([&] {
        m_geometry.CheckIndex(index, m_geometry.m_figures.size());
        m_geometry.Insert(index, figure);
        m_geometry.Remove(std::size_t{index} + 1);
    });
}
HRESULT GeometryObject::Figures::Append(IXpsOMGeometryFigure* figure) {
    return ElementCall([&] { m_geometry.Insert(m_geometry.m_figures.size(), figure); });
}

} // namespace OvPlatform
