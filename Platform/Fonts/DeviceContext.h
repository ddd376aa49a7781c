#pragma once

#include "Fonts/SystemFonts.h"
#include "System/HandleTable.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace OvPlatform {

/// What a font handle stands for.
class FontObject final : public HandleObject {
public:
    FontObject(const LOGFONTW& asked, bool isStock) noexcept : m_asked(asked), m_isStock(isStock) {}

    [[nodiscard]] const LOGFONTW& Asked() const noexcept { return m_asked; }
    /// One that every context begins with, and that nobody can delete.
    [[nodiscard]] bool IsStock() const noexcept { return m_isStock; }

    std::atomic<int> selections{0}; // in how many contexts

private:
    const LOGFONTW m_asked;
    const bool m_isStock;
};

/// What the handle of a display's context stands for: the font that is selected in it.
class DeviceContext final : public HandleObject {
public:
    static constexpr int dotsPerInch = 96;

    /// Throws std::bad_alloc.
    DeviceContext();
    ~DeviceContext() override;

    /// Null if the handle is no context's.
    static std::shared_ptr<DeviceContext> Find(HDC handle) noexcept;

    /// The handle of the font before; null, and nothing changes, if the handle is no font's or the system
    /// has none. Throws std::bad_alloc.
    HGDIOBJ Select(HGDIOBJ font);

    /// The font in use and the pixels of its em square.
    struct Selection {
        std::shared_ptr<const SystemFonts::Choice> choice; // null if the system has no font
        double pixelsPerEm = 0;
        BYTE charset = DEFAULT_CHARSET;

        /// Of a length in the font's units.
        [[nodiscard]] LONG Pixels(std::int64_t units) const;
    };
    /// Throws std::bad_alloc.
    Selection Selected();

private:
    std::mutex m_lock;
    HGDIOBJ m_handle;
    std::shared_ptr<FontObject> m_font;
    std::shared_ptr<const SystemFonts::Choice> m_choice; // null until it is asked for
};

} // namespace OvPlatform
