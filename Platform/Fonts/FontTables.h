#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace OvPlatform {

/// Four letters, the first in the highest byte.
constexpr std::uint32_t FontTag(const char (&letters)[5]) {
    std::uint32_t tag = 0;
    for (int index = 0; index < 4; ++index)
        tag = tag << 8 | static_cast<unsigned char>(letters[index]);
    return tag;
}

/// Where the tables of one font stand in a file, which may be a collection of several.
class OV_PLATFORM_API FontTables {
public:
    struct Table {
        std::uint32_t tag;
        std::uint32_t checksum;
        std::span<const std::byte> bytes;
    };

    static bool IsCollection(std::span<const std::byte> file) noexcept;

    /// Nothing if the file has no such font. Tables that do not lie within the file are passed over. Throws
    /// std::bad_alloc.
    static std::optional<FontTables> Read(std::span<const std::byte> file, std::uint32_t index);

    [[nodiscard]] bool Has(std::uint32_t tag) const noexcept;

    /// The font as a file of its own, with the tables as they are. Empty if they overlap, so that the file
    /// would be longer than the one that it came from. Throws std::bad_alloc.
    [[nodiscard]] std::vector<std::byte> FileOfItsOwn() const;

private:
    std::uint32_t m_version = 0;
    std::size_t m_fileSize = 0;
    std::vector<Table> m_tables;
};

} // namespace OvPlatform
