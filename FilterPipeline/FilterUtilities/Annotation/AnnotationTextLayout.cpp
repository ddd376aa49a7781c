#include "Annotation/AnnotationTextLayout.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

bool IsHighSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xDC00; }

wchar_t DrawableUnit(wchar_t unit) {
    const bool isNone = IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit == 0xFFFE || unit == 0xFFFF;
    return isNone ? L'\xFFFD' : unit < L' ' && unit != L'\n' ? L' ' : unit;
}

} // namespace

CXString DrawableText(const CXString& text) {
    const std::wstring_view units = text.View();
    std::wstring drawable;
    for (std::size_t at = 0; at < units.size(); ++at) {
        const wchar_t next = at + 1 < units.size() ? units[at + 1] : L'\0';
        if (IsHighSurrogate(units[at]) && IsLowSurrogate(next))
            drawable.append(units.substr(at++, 2));
        else if (units[at] != L'\r' || next != L'\n')
            drawable += DrawableUnit(units[at]);
    }
    return CXString(std::move(drawable));
}

AnnotationTextLayout LayOutText(const TextShaper& shaper, const CXString& text, int sizeInPoints) {
    AnnotationTextLayout layout;
    layout.emSize = static_cast<float>(sizeInPoints) * 96 / 72;
    layout.ascent = layout.InXpsUnits(shaper.Ascent());
    layout.lineHeight = layout.InXpsUnits(shaper.Ascent() + shaper.Descent());
    const CXString drawable = DrawableText(text);
    std::wstring_view rest = drawable.View();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\n'), rest.size());
        layout.lines.push_back({shaper.Shape(CXString(std::wstring(rest.substr(0, end))))});
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    for (AnnotationTextLayout::Line& line : layout.lines) {
        for (const GlyphRun& run : line.runs)
            line.width += layout.InXpsUnits(run.width);
        layout.size.Width = std::max(layout.size.Width, line.width);
    }
    layout.size.Height = layout.lineHeight * static_cast<float>(layout.lines.size());
    return layout;
}
