#pragma once

#include <xpsobjectmodel.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// A figure of a geometry: where it begins, and its segments with their numbers, one behind the other. A line
/// has 2 numbers, a quadratic curve 4, a cubic one 6, an arc 5 (end, radii, angle).
struct FigureData {
    XPS_POINT start{};
    bool isClosed = false;
    bool isFilled = true;
    std::vector<XPS_SEGMENT_TYPE> types;
    std::vector<FLOAT> data;
    std::vector<BOOL> strokes;

    void Add(XPS_SEGMENT_TYPE type, const std::vector<FLOAT>& numbers, bool isStroked = true);
};

/// How many numbers a segment has; 0 for what is no type.
std::size_t NumbersOf(XPS_SEGMENT_TYPE type) noexcept;

struct PathData {
    XPS_FILL_RULE fillRule = XPS_FILL_RULE_EVENODD;
    std::vector<FigureData> figures;
};

/// From the short form, as "F1 M 0,0 L 9,9 Z". Nothing where it is no such text.
std::optional<PathData> ParsePathData(std::string_view text);

/// Whether the short form can say it: it has no segment without a stroke, and no figure without a filling.
bool HasShortForm(const std::vector<FigureData>& figures) noexcept;
/// Without the fill rule.
std::string FormatFigures(const std::vector<FigureData>& figures);

} // namespace OvPlatform
