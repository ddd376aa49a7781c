#include "Annotation/LineBreaker.h"

#include "Annotation/CombiningMarks.h"

#include <utf16units.h>

#include <algorithm>

namespace {

constexpr wchar_t blank = L' ';

/// Whether the text may be cut in front of a unit.
bool IsBoundary(std::wstring_view text, std::size_t at) {
    if (at == 0 || at >= text.size()) return true;
    const wchar_t* next = text.data() + at;
    return !OvPlatform::Utf16::IsPairAt(text, at - 1) &&
           !CombiningMarks::IsMark(OvPlatform::Utf8::Decode(next, text.data() + text.size()));
}

std::size_t BoundaryAtOrBefore(std::wstring_view text, std::size_t at) {
    while (!IsBoundary(text, at))
        --at;
    return at;
}

std::size_t BoundaryAfter(std::wstring_view text, std::size_t at) {
    do
        ++at;
    while (!IsBoundary(text, at));
    return at;
}

std::size_t EndWithoutBlanks(std::wstring_view text, std::size_t end) {
    const std::size_t last = text.substr(0, end).find_last_not_of(blank);
    return last == std::wstring_view::npos ? 0 : last + 1;
}

std::size_t SkipBlanks(std::wstring_view text, std::size_t at) {
    return std::min(text.find_first_not_of(blank, at), text.size());
}

} // namespace

/// The most units, up to a boundary, that fit. It looks a little beyond what the line before had, so that it
/// never measures the whole of a long text.
std::size_t LineBreaker::FittingUnits(std::wstring_view text) const {
    std::size_t fitting = 0;
    std::size_t tooMany = text.size() + 1;
    for (std::size_t tried = m_expectedUnits; tooMany > text.size(); tried *= 2) {
        const std::size_t units = tried < text.size() ? BoundaryAtOrBefore(text, tried) : text.size();
        if (units <= fitting) continue;
        if (!m_fits(text.substr(0, units)))
            tooMany = units;
        else if (units == text.size())
            return units;
        else
            fitting = units;
    }
    while (true) {
        std::size_t middle = BoundaryAtOrBefore(text, fitting + (tooMany - fitting) / 2);
        if (middle <= fitting) middle = BoundaryAfter(text, fitting);
        if (middle >= tooMany) return fitting;
        (m_fits(text.substr(0, middle)) ? fitting : tooMany) = middle;
    }
}

LineBreaker::Line LineBreaker::NextLine(std::wstring_view text, std::size_t start) {
    start = SkipBlanks(text, std::min(start, text.size()));
    const std::wstring_view rest = text.substr(start);
    if (rest.empty()) return {rest, start};
    std::size_t end = FittingUnits(rest);
    if (end < rest.size() && rest[end] != blank) {
        const std::size_t lastBlank = rest.substr(0, end).find_last_of(blank);
        if (lastBlank != std::wstring_view::npos) end = lastBlank;
    }
    if (end == 0) end = BoundaryAfter(rest, 0);
    end = EndWithoutBlanks(rest, end);
    m_expectedUnits = end + end / 4 + 1;
    return {rest.substr(0, end), SkipBlanks(text, start + end)};
}
