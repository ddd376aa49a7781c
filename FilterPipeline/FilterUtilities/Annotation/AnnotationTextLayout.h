#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FontsAndImages/TextShaper.h"

#include <windows.h>
#include <gdiplus.h>

#include <vector>

/// A text as it is drawn: its lines below one another. Lengths are XPS units.
struct AnnotationTextLayout {
    struct Line {
        std::vector<GlyphRun> runs; // from left to right
        float width = 0;
    };

    std::vector<Line> lines = {};
    Gdiplus::SizeF size = {};
    float emSize = 0;
    float ascent = 0; // from the top of a line to its base line
    float lineHeight = 0;

    /// Of a length in a run.
    [[nodiscard]] float InXpsUnits(int length) const {
        return static_cast<float>(length) * emSize / TextShaper::unitsPerEm;
    }
};

/// What a page can hold of a text, with its line feeds: half of a surrogate pair and what is no character
/// becomes U+FFFD, a control character a blank. A carriage return before a line feed goes.
[[nodiscard]] OV_FILTER_UTILITIES_API CXString DrawableText(const CXString& text);

/// In a face, at a size in points, what is drawable of the text. Line feeds part the lines. Throws what
/// TextShaper throws.
[[nodiscard]] OV_FILTER_UTILITIES_API AnnotationTextLayout LayOutText(const TextShaper& shaper,
                                                                      const CXString& text, int sizeInPoints);
