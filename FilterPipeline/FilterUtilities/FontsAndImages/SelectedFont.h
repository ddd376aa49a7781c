#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>

#include <cstdint>

/// What fonts are asked for by here: outlines in normal weight, upright, with an em of so many pixels. Of the
/// face's name, 31 units count; the charset is GDI's.
[[nodiscard]] LOGFONTW AskedFont(const CXString& face, int charset, std::int64_t pixelsPerEm);

/// A font that is selected in a context for the life of this object, over whatever is. The context must live
/// longer.
class SelectedFont {
public:
    SelectedFont(HDC context, const LOGFONTW& asked);
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;
    ~SelectedFont();

    /// Not if the system refused; the last error may say why.
    [[nodiscard]] bool IsSelected() const { return m_before != nullptr && m_before != HGDI_ERROR; }

private:
    HDC m_context;
    HFONT m_font;
    HGDIOBJ m_before;
};
