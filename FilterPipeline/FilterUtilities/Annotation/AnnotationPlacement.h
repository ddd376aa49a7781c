#pragma once

#include "Annotation/AnnotationElementSettings.h"
#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <gdiplus.h>

/// Where an annotation stands on a page. Lengths are XPS units; x runs to the right, y downward.
struct AnnotationPlacement {
    Gdiplus::RectF box; // upright, before it is turned
    int angle = 0;      // degrees clockwise, around the middle of the box
};

/// What the flags of justification say. An annotation without any of them stands around the middle of the
/// page; one with flags for one direction only is in the middle in the other.
namespace AnnotationJustification {
inline constexpr int left = 1;
inline constexpr int right = 2;
inline constexpr int top = 4;
inline constexpr int bottom = 8;
} // namespace AnnotationJustification

/// Of something that is so large. An element with justification flags stands upright at that distance from
/// the edge; any other is turned, with its middle so many inches to the right of the page's and below it.
[[nodiscard]] OV_FILTER_UTILITIES_API AnnotationPlacement
PlaceAnnotation(const AnnotationElementSettings& element, Gdiplus::SizeF page, Gdiplus::SizeF size);
