#pragma once

#include "Com/PlatformExport.h"
#include "Fonts/FontFace.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace OvPlatform {

/// What a font's "OS/2" table says of the font to those who embed it.
struct OV_PLATFORM_API EmbeddingFacts {
    /// Nothing if the font has no such table.
    static std::optional<EmbeddingFacts> Of(const FontFace& face);

    [[nodiscard]] bool MayBeEmbedded() const noexcept;
    [[nodiscard]] bool MayBeCut() const noexcept;
    /// EMBED_...
    [[nodiscard]] std::uint32_t Privilege() const noexcept;

    std::uint16_t weight = 0;
    std::uint16_t permission = 0; // fsType
    std::uint8_t panose[10] = {};
    bool isItalic = false;
    std::uint32_t unicodeRanges[4] = {};
    std::uint32_t codePages[2] = {};
};

/// What stands in front of the font's bytes in Embedded OpenType data (version 0x00020001, bound to no
/// address). Flags are TTEMBED_... Throws std::bad_alloc.
OV_PLATFORM_API std::vector<std::byte> EmbeddedOpenTypeHeader(const FontFace& face,
                                                              const EmbeddingFacts& facts,
                                                              std::span<const std::byte> font,
                                                              std::uint32_t flags);

} // namespace OvPlatform
