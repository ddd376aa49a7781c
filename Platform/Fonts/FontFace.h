#pragma once

#include "Com/PlatformExport.h"
#include "Fonts/FontFile.h"
#include "Fonts/ShaperPointer.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// One font of a file, opened. Its bytes stay in the file, mapped. Threads may share it.
class OV_PLATFORM_API FontFace {
public:
    /// What the font says of itself, lengths in its own units.
    struct Design {
        int unitsPerEm = 0;
        int ascent = 0;
        int descent = 0; // below the baseline, counted down
        int lineGap = 0; // beyond ascent and descent
        int averageAdvance = 0;
        int maximumAdvance = 0;
        int weight = 400;
        wchar_t firstCharacter = 0;
        wchar_t lastCharacter = 0;
        wchar_t defaultCharacter = 0;
        wchar_t breakCharacter = L' ';
        bool isItalic = false;
        bool isFixedPitch = false;
    };

    /// Null if the bytes are no font with outlines. Throws std::bad_alloc.
    static std::shared_ptr<const FontFace> Open(std::shared_ptr<const FontFile> file, std::uint32_t index);

    /// The same for bytes that the caller keeps for the life of the face.
    static std::shared_ptr<const FontFace> Open(std::span<const std::byte> bytes, std::uint32_t index);

    [[nodiscard]] const Design& GetDesign() const noexcept { return m_design; }
    /// The whole file, with the fonts that stand beside this one in a collection.
    [[nodiscard]] std::span<const std::byte> File() const noexcept { return m_bytes; }
    [[nodiscard]] bool IsInCollection() const noexcept;
    /// The font as a file of its own; empty if the font cannot be taken out of its collection. Throws
    /// std::bad_alloc.
    [[nodiscard]] std::span<const std::byte> FileOfItsOwn() const;
    /// Empty if there is no such table.
    [[nodiscard]] HbBlob Table(std::uint32_t tag) const;

    /// 0 if the font has no glyph for the character.
    [[nodiscard]] std::uint32_t Glyph(std::uint32_t character) const noexcept;
    /// The width of the text in one line, shaped script by script, in the font's units. Throws
    /// std::bad_alloc.
    [[nodiscard]] std::int64_t Width(std::wstring_view text) const;

    /// In the font's units.
    [[nodiscard]] hb_font_t* Font() const noexcept { return m_font.get(); }

    /// A character that shaping makes of a letter and a mark.
    struct Composition {
        std::uint32_t whole;
        std::uint32_t letter;
        std::uint32_t mark;
    };
    /// Those whose whole the font has. Throws std::bad_alloc.
    [[nodiscard]] const std::vector<Composition>& Compositions() const;

    [[nodiscard]] hb_face_t* Shaper() const noexcept { return m_face.get(); }

private:
    FontFace() = default;
    bool Load(std::span<const std::byte> bytes, std::uint32_t index);

    std::shared_ptr<const FontFile> m_file; // null where the caller keeps the bytes
    std::span<const std::byte> m_bytes;
    std::uint32_t m_index = 0;
    Design m_design;
    HbFace m_face;
    HbFont m_font;
    mutable std::once_flag m_hasCompositions;
    mutable std::vector<Composition> m_compositions;
    mutable std::once_flag m_isTakenOut;
    mutable std::vector<std::byte> m_ownFile;
};

} // namespace OvPlatform
