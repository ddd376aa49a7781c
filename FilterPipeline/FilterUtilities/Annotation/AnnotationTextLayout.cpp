#include "Annotation/AnnotationTextLayout.h"

#include <algorithm>
#include <string>

namespace {

bool IsHighSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(wchar_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// What markup has a character for.
std::wstring Drawable(std::wstring_view text) {
    std::wstring drawable;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const wchar_t unit = text[at];
        const bool isPair = IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
        if (isPair)
            drawable.append(text.substr(at++, 2));
        else if (IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit == 0xFFFE || unit == 0xFFFF)
            drawable += L'\xFFFD';
        else
            drawable += unit < L' ' ? L' ' : unit;
    }
    return drawable;
}

} // namespace

AnnotationTextLayout LayOutText(const TextShaper& shaper, const CXString& text, int sizeInPoints) {
    AnnotationTextLayout layout;
    layout.emSize = static_cast<float>(sizeInPoints) * 96 / 72;
    layout.ascent = layout.InXpsUnits(shaper.Ascent());
    layout.lineHeight = layout.InXpsUnits(shaper.Ascent() + shaper.Descent());
    std::wstring_view rest = text.View();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\n'), rest.size());
        std::wstring_view line = rest.substr(0, end);
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        layout.lines.push_back({shaper.Shape(CXString(Drawable(line)))});
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
