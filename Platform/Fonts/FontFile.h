#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace OvPlatform {

/// The bytes of a font's file, mapped into memory for the life of the object.
class OV_PLATFORM_API FontFile {
public:
    /// Null if the file cannot be read or has no bytes. Throws std::bad_alloc.
    static std::shared_ptr<const FontFile> Open(const std::filesystem::path& path);

    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;
    ~FontFile();

    [[nodiscard]] std::span<const std::byte> Bytes() const noexcept { return m_bytes; }

private:
    explicit FontFile(std::span<const std::byte> bytes) noexcept : m_bytes(bytes) {}

    std::span<const std::byte> m_bytes;
};

} // namespace OvPlatform
