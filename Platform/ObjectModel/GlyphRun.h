#pragma once

#include <xpsobjectmodel.h>

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// What a run of glyphs says beside where it stands and how it is filled.
struct GlyphRun {
    std::wstring text; ///< UTF-16
    std::vector<XPS_GLYPH_INDEX> indices;
    std::vector<XPS_GLYPH_MAPPING> mappings; ///< only those that are not one character for one glyph
    std::vector<UINT32> prohibitedCaretStops;
    UINT32 bidiLevel = 0;
    BOOL isSideways = FALSE;
    std::wstring deviceFont;

    /// XPS_E_MISSING_GLYPHS and what else the format does not allow, or S_OK.
    HRESULT Check() const;
};

// The attributes that say it. What is read throws MarkupFailure with XPS_E_INVALID_MARKUP where the text is
// no such value; what is written throws it with XPS_E_INVALID_MARKUP for text that XML cannot hold.

void ReadIndices(std::string_view value, GlyphRun& run);
std::string FormatIndices(const GlyphRun& run);

std::vector<UINT32> ReadCaretStops(std::string_view value);
std::string FormatCaretStops(const std::vector<UINT32>& prohibited);

/// A text that begins with "{" has "{}" before it, or it would be markup of its own.
std::wstring ReadUnicodeString(std::string_view value);
std::string FormatUnicodeString(std::wstring_view text);

/// UTF-8 of a text that is to stand in markup.
std::string ToMarkup(std::wstring_view text);

} // namespace OvPlatform
