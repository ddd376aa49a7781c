#pragma once

#include "Com/PlatformExport.h"
#include "Fonts/FontFace.h"

#include <cstdint>
#include <vector>

namespace OvPlatform {

/// A part of a font: the glyphs of some characters, all that shaping may put in their place, and some glyphs
/// by id. Glyphs keep their ids, so that text that was laid out with the whole font still fits.
///
/// For printed pages, which readers draw from glyph ids: instructions for low resolutions, tables for places
/// of glyphs and for colour, and bitmaps are left out. A variable font with TrueType outlines becomes its
/// default instance.
struct OV_PLATFORM_API FontSubset {
    std::vector<std::uint32_t> characters;
    std::vector<std::uint32_t> glyphs;
    std::uint16_t language = 0; // of the names to keep; 0 keeps all

    /// Null if the font cannot be cut. Throws std::bad_alloc.
    [[nodiscard]] HbBlob CutFrom(const FontFace& face) const;
};

} // namespace OvPlatform
