#include "Annotation/AnnotationTextLayout.h"

#include <utf16units.h>

#include <algorithm>
#include <string>
#include <utility>

namespace Utf16 = OvPlatform::Utf16;

namespace {

wchar_t DrawableUnit(wchar_t unit) {
    const bool isNone = Utf16::IsSurrogate(unit) || unit == 0xFFFE || unit == 0xFFFF;
    return isNone ? L'\xFFFD' : unit < L' ' && unit != L'\n' ? L' ' : unit;
}

} // namespace

CXString DrawableText(const CXString& text) {
    const std::wstring_view units = text.View();
    std::wstring drawable;
    for (std::size_t at = 0; at < units.size(); ++at) {
        if (Utf16::IsPairAt(units, at))
            drawable.append(units.substr(at++, 2));
        else if (!units.substr(at).starts_with(L"\r\n"))
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
