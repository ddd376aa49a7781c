#include "ObjectModel/PathObject.h"

namespace OvPlatform {

namespace {

constexpr const char* data = "Data";
constexpr const char* stroke = "Stroke";
constexpr const char* fill = "Fill";
constexpr const char* dashArray = "StrokeDashArray";
constexpr const char* shortDescription = "AutomationProperties.Name";
constexpr const char* longDescription = "AutomationProperties.HelpText";
constexpr Words<4> capWords = {"Flat", "Round", "Square", "Triangle"};
constexpr Words<3> joinWords = {"Miter", "Bevel", "Round"};

HRESULT GetNumber(const PageElement& element, const char* attribute, FLOAT missing, FLOAT* place) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = NumberOf(element, attribute, missing);
    });
}

HRESULT SetNumber(PageElement& element, const char* attribute, FLOAT number) {
    return ElementCall([&] {
        CheckFinite(number);
        element.SetAttribute(attribute, FormatNumber(number));
    });
}

HRESULT SetLength(PageElement& element, const char* attribute, FLOAT length) {
    return ElementCall([&] {
        CheckNotNegative(length);
        element.SetAttribute(attribute, FormatNumber(length));
    });
}

template <class Enumeration, std::size_t count>
HRESULT GetWord(const PageElement& element, const char* attribute, const Words<count>& words,
                Enumeration* place) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = WordOf(element, attribute, words, static_cast<Enumeration>(1));
    });
}

template <class Enumeration, std::size_t count>
HRESULT SetTo(PageElement& element, const char* attribute, const Words<count>& words, Enumeration value) {
    return ElementCall([&] { SetWord(element, attribute, words, value); });
}

HRESULT GetDescription(const PageElement& element, const char* attribute, LPWSTR* place) {
    return ElementCall([&] { GiveTaskText(place, element.Attribute(attribute)); });
}

} // namespace

HRESULT PathObject::GetGeometry(IXpsOMGeometry** geometry) { return GetValue(*this, data, geometry); }
HRESULT PathObject::GetGeometryLocal(IXpsOMGeometry** geometry) {
    return GetLocalValue(*this, data, geometry);
}
HRESULT PathObject::SetGeometryLocal(IXpsOMGeometry* geometry) {
    return SetLocalValue(*this, data, geometry);
}
HRESULT PathObject::GetGeometryLookup(LPWSTR* key) { return GetValueLookup(*this, data, key); }
HRESULT PathObject::SetGeometryLookup(LPCWSTR key) { return SetValueLookup(*this, data, key); }

HRESULT PathObject::GetAccessibilityShortDescription(LPWSTR* description) {
    return GetDescription(*this, shortDescription, description);
}
HRESULT PathObject::SetAccessibilityShortDescription(LPCWSTR description) {
    return ElementCall([&] { SetText(*this, shortDescription, description); });
}
HRESULT PathObject::GetAccessibilityLongDescription(LPWSTR* description) {
    return GetDescription(*this, longDescription, description);
}
HRESULT PathObject::SetAccessibilityLongDescription(LPCWSTR description) {
    return ElementCall([&] { SetText(*this, longDescription, description); });
}

HRESULT PathObject::GetSnapsToPixels(BOOL* snaps) {
    return ElementCall([&] {
        RequirePlace(snaps);
        *snaps = Attribute("SnapsToDevicePixels").value_or("") == "true";
    });
}
HRESULT PathObject::SetSnapsToPixels(BOOL snaps) {
    return ElementCall([&] { SetAttribute("SnapsToDevicePixels", std::string(snaps ? "true" : "false")); });
}

HRESULT PathObject::GetStrokeBrush(IXpsOMBrush** brush) { return GetValue(*this, stroke, brush); }
HRESULT PathObject::GetStrokeBrushLocal(IXpsOMBrush** brush) { return GetLocalValue(*this, stroke, brush); }
HRESULT PathObject::SetStrokeBrushLocal(IXpsOMBrush* brush) { return SetLocalValue(*this, stroke, brush); }
HRESULT PathObject::GetStrokeBrushLookup(LPWSTR* key) { return GetValueLookup(*this, stroke, key); }
HRESULT PathObject::SetStrokeBrushLookup(LPCWSTR key) { return SetValueLookup(*this, stroke, key); }

HRESULT PathObject::GetStrokeDashes(IXpsOMDashCollection** dashes) {
    return ElementCall([&] {
        RequirePlace(dashes);
        *dashes = &m_dashes;
        m_dashes.AddRef();
    });
}
HRESULT PathObject::GetStrokeDashCap(XPS_DASH_CAP* cap) {
    return GetWord(*this, "StrokeDashCap", capWords, cap);
}
HRESULT PathObject::SetStrokeDashCap(XPS_DASH_CAP cap) {
    return SetTo(*this, "StrokeDashCap", capWords, cap);
}
HRESULT PathObject::GetStrokeDashOffset(FLOAT* offset) {
    return GetNumber(*this, "StrokeDashOffset", 0, offset);
}
HRESULT PathObject::SetStrokeDashOffset(FLOAT offset) { return SetNumber(*this, "StrokeDashOffset", offset); }
HRESULT PathObject::GetStrokeStartLineCap(XPS_LINE_CAP* cap) {
    return GetWord(*this, "StrokeStartLineCap", capWords, cap);
}
HRESULT PathObject::SetStrokeStartLineCap(XPS_LINE_CAP cap) {
    return SetTo(*this, "StrokeStartLineCap", capWords, cap);
}
HRESULT PathObject::GetStrokeEndLineCap(XPS_LINE_CAP* cap) {
    return GetWord(*this, "StrokeEndLineCap", capWords, cap);
}
HRESULT PathObject::SetStrokeEndLineCap(XPS_LINE_CAP cap) {
    return SetTo(*this, "StrokeEndLineCap", capWords, cap);
}
HRESULT PathObject::GetStrokeLineJoin(XPS_LINE_JOIN* join) {
    return GetWord(*this, "StrokeLineJoin", joinWords, join);
}
HRESULT PathObject::SetStrokeLineJoin(XPS_LINE_JOIN join) {
    return SetTo(*this, "StrokeLineJoin", joinWords, join);
}
HRESULT PathObject::GetStrokeMiterLimit(FLOAT* limit) {
    return GetNumber(*this, "StrokeMiterLimit", 10, limit);
}
HRESULT PathObject::SetStrokeMiterLimit(FLOAT limit) {
    if (limit < 1) return E_INVALIDARG;
    return SetLength(*this, "StrokeMiterLimit", limit);
}
HRESULT PathObject::GetStrokeThickness(FLOAT* thickness) {
    return GetNumber(*this, "StrokeThickness", 1, thickness);
}
HRESULT PathObject::SetStrokeThickness(FLOAT thickness) {
    return SetLength(*this, "StrokeThickness", thickness);
}

HRESULT PathObject::GetFillBrush(IXpsOMBrush** brush) { return GetValue(*this, fill, brush); }
HRESULT PathObject::GetFillBrushLocal(IXpsOMBrush** brush) { return GetLocalValue(*this, fill, brush); }
HRESULT PathObject::SetFillBrushLocal(IXpsOMBrush* brush) { return SetLocalValue(*this, fill, brush); }
HRESULT PathObject::GetFillBrushLookup(LPWSTR* key) { return GetValueLookup(*this, fill, key); }
HRESULT PathObject::SetFillBrushLookup(LPCWSTR key) { return SetValueLookup(*this, fill, key); }

HRESULT PathObject::Clone(IXpsOMPath** path) { return OvPlatform::Clone(*this, path); }

// Dashes: two numbers each.

std::vector<FLOAT> PathObject::Dashes::Read() const {
    std::vector<FLOAT> numbers =
        ParseNumbers(Of().Attribute(dashArray).value_or("")).value_or(std::vector<FLOAT>());
    numbers.resize(numbers.size() / 2 * 2);
    return numbers;
}

void PathObject::Dashes::Write(const std::vector<FLOAT>& numbers) {
    if (numbers.empty())
        Of().RemoveAttribute(dashArray);
    else
        Of().SetAttribute(dashArray, FormatNumbers(numbers.data(), numbers.size(), ' '));
}

template <class Change>
HRESULT PathObject::Dashes::Apply(const Change& change) {
    return ElementCall([&] {
        std::vector<FLOAT> numbers = Read();
        change(numbers);
        Write(numbers);
    });
}

namespace {

void CheckDash(const XPS_DASH* dash) {
    RequirePlace(dash);
    CheckNotNegative(dash->length);
    CheckNotNegative(dash->gap);
}

void CheckIndex(std::size_t index, std::size_t count) {
    if (index >= count) throw MarkupFailure(XPS_E_INDEX_OUT_OF_RANGE);
}

} // namespace

HRESULT PathObject::Dashes::GetCount(UINT32* count) {
    return ElementCall([&] {
        RequirePlace(count);
        *count = static_cast<UINT32>(Read().size() / 2);
    });
}

HRESULT PathObject::Dashes::GetAt(UINT32 index, XPS_DASH* dash) {
    return ElementCall([&] {
        RequirePlace(dash);
        const std::vector<FLOAT> numbers = Read();
        CheckIndex(index, numbers.size() / 2);
        *dash = {numbers[2 * std::size_t{index}], numbers[2 * std::size_t{index} + 1]};
    });
}

HRESULT PathObject::Dashes::InsertAt(UINT32 index, const XPS_DASH* dash) {
    return Apply([&](std::vector<FLOAT>& numbers) {
        CheckDash(dash);
        CheckIndex(index, numbers.size() / 2 + 1);
        numbers.insert(numbers.begin() + 2 * std::ptrdiff_t{index}, {dash->length, dash->gap});
    });
}

HRESULT PathObject::Dashes::RemoveAt(UINT32 index) {
    return Apply([&](std::vector<FLOAT>& numbers) {
        CheckIndex(index, numbers.size() / 2);
        const auto place = numbers.begin() + 2 * std::ptrdiff_t{index};
        numbers.erase(place, place + 2);
    });
}

HRESULT PathObject::Dashes::SetAt(UINT32 index, const XPS_DASH* dash) {
    return Apply([&](std::vector<FLOAT>& numbers) {
        CheckDash(dash);
        CheckIndex(index, numbers.size() / 2);
        numbers[2 * std::size_t{index}] = dash->length;
        numbers[2 * std::size_t{index} + 1] = dash->gap;
    });
}

HRESULT PathObject::Dashes::Append(const XPS_DASH* dash) {
    return Apply([&](std::vector<FLOAT>& numbers) {
        CheckDash(dash);
        numbers.insert(numbers.end(), {dash->length, dash->gap});
    });
}

} // namespace OvPlatform
