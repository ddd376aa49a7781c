#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FontsAndImages/SelectedFont.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <usp10.h>

#include <optional>
#include <string>
#include <vector>

/// A piece of a line that runs in one direction: its text and the glyphs for it, both in the order of the
/// text. Lengths are in units of the em square (TextShaper::unitsPerEm).
struct GlyphRun {
    struct Glyph {
        WORD id = 0;
        int advance = 0;
        GOFFSET offset = {}; // along the line in its direction, and upward
    };

    std::wstring text = {}; // UTF-16
    bool isRightToLeft = false;
    std::vector<Glyph> glyphs = {};
    /// For each unit of the text the first glyph of the cluster that it is in.
    std::vector<WORD> clusters = {};
    int width = 0;
};

/// Makes glyphs of texts in one face of the system, with the font's ligatures, joined letters and marks, by
/// the same glyph ids that GdiDeviceContext::GetFontSubset keeps. Belongs to the thread that made it.
class OV_FILTER_UTILITIES_API TextShaper {
public:
    static constexpr int unitsPerEm = 2000;

    /// The face as GdiDeviceContext understands it. Throws CPComException where the system has none at all.
    TextShaper(const CXString& face, int charset);
    ~TextShaper();
    TextShaper(const TextShaper&) = delete;
    TextShaper& operator=(const TextShaper&) = delete;

    /// The runs of a line, from left to right as they stand. A text that begins with a letter of a script
    /// from right to left is a line in that direction. A character that the face lacks is glyph 0. Throws
    /// CPComException for what the system refuses.
    [[nodiscard]] std::vector<GlyphRun> Shape(const CXString& line) const;

    /// Of the face, above and below the base line.
    [[nodiscard]] int Ascent() const { return m_ascent; }
    [[nodiscard]] int Descent() const { return m_descent; }
    /// The face that the system chose; another one than was asked for where it lacks that.
    [[nodiscard]] const CXString& FaceInUse() const { return m_faceInUse; }

private:
    [[nodiscard]] GlyphRun ShapeItem(std::wstring_view text, SCRIPT_ANALYSIS analysis) const;
    void Close();

    HDC m_deviceContext = nullptr;
    std::optional<SelectedFont> m_font;
    mutable SCRIPT_CACHE m_cache = nullptr;
    int m_ascent = 0;
    int m_descent = 0;
    CXString m_faceInUse;
};
