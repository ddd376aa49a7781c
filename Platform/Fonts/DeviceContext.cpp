#include "Fonts/DeviceContext.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace OvPlatform {
namespace {

struct StockFont {
    StockFont() {
        LOGFONTW asked = {};
        asked.lfHeight = 16;
        asked.lfWeight = FW_NORMAL;
        asked.lfCharSet = DEFAULT_CHARSET;
        font = std::make_shared<FontObject>(asked, true);
        handle = HandleTable::Open(font);
    }

    std::shared_ptr<FontObject> font;
    HGDIOBJ handle = nullptr;
};

const StockFont& Stock() {
    static const StockFont& stock = *new StockFont;
    return stock;
}

/// A negative height is that of the em square, a positive one that of a line, and 0 the display's own.
double PixelsPerEm(LONG height, const FontFace::Design& design) {
    if (height < 0) return -static_cast<double>(height);
    const double line = height > 0 ? height : Stock().font->Asked().lfHeight;
    const int lineUnits = design.ascent + design.descent;
    return lineUnits > 0 ? line * design.unitsPerEm / lineUnits : line;
}

} // namespace

DeviceContext::DeviceContext() : m_handle(Stock().handle), m_font(Stock().font) { ++m_font->selections; }

DeviceContext::~DeviceContext() { --m_font->selections; }

std::shared_ptr<DeviceContext> DeviceContext::Find(HDC handle) noexcept {
    return HandleTable::FindAs<DeviceContext>(handle);
}

HGDIOBJ DeviceContext::Select(HGDIOBJ handle) {
    auto font = HandleTable::FindAs<FontObject>(handle);
    if (!font) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    // The display's own font is looked for when it is used, so that whoever puts it back always can.
    std::shared_ptr<const SystemFonts::Choice> choice;
    if (!font->IsStock()) {
        choice = SystemFonts::Instance().Choose(font->Asked());
        if (!choice) {
            SetLastError(ERROR_NOT_FOUND);
            return nullptr;
        }
    }
    const std::lock_guard guard(m_lock);
    ++font->selections;
    --m_font->selections;
    m_font = std::move(font);
    m_choice = std::move(choice);
    return std::exchange(m_handle, handle);
}

DeviceContext::Selection DeviceContext::Selected() {
    const std::lock_guard guard(m_lock);
    if (!m_choice) m_choice = SystemFonts::Instance().Choose(m_font->Asked());
    Selection selection = {m_choice, 0, m_font->Asked().lfCharSet};
    if (m_choice) selection.pixelsPerEm = PixelsPerEm(m_font->Asked().lfHeight, m_choice->face->GetDesign());
    return selection;
}

LONG DeviceContext::Selection::Pixels(std::int64_t units) const {
    constexpr LONG largest = std::numeric_limits<LONG>::max() / 2; // so that two can be added
    const double pixels =
        std::round(static_cast<double>(units) * pixelsPerEm / choice->face->GetDesign().unitsPerEm);
    return static_cast<LONG>(std::clamp<double>(pixels, -largest, largest));
}

} // namespace OvPlatform
