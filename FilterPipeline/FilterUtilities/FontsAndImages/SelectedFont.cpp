#include "FontsAndImages/SelectedFont.h"

#include <algorithm>
#include <limits>
#include <string_view>

LOGFONTW AskedFont(const CXString& face, int charset, std::int64_t pixelsPerEm) {
    constexpr std::int64_t largest = std::numeric_limits<LONG>::max();
    LOGFONTW asked = {};
    // Negative: of the em, not of a line.
    asked.lfHeight = static_cast<LONG>(-std::clamp(pixelsPerEm, -largest, largest));
    asked.lfWeight = FW_NORMAL;
    asked.lfCharSet = static_cast<BYTE>(charset);
    asked.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    asked.lfQuality = CLEARTYPE_QUALITY;
    const std::wstring_view name = face.View().substr(0, LF_FACESIZE - 1);
    std::copy(name.begin(), name.end(), asked.lfFaceName);
    return asked;
}

SelectedFont::SelectedFont(HDC context, const LOGFONTW& asked)
    : m_context(context), m_font(CreateFontIndirectW(&asked)),
      m_before(m_font != nullptr ? SelectObject(context, m_font) : nullptr) {}

SelectedFont::~SelectedFont() {
    if (IsSelected()) SelectObject(m_context, m_before);
    if (m_font != nullptr) DeleteObject(m_font);
}
