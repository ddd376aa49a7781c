#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace OvPlatform {

/// Takes bytes at its end and gives them back: in memory while they are few, then in a temporary file that
/// has no name. One thread at a time.
class OV_PLATFORM_API SpoolFile {
public:
    /// folder: where the file is to be made, when it comes to that. target: what is called by name where it
    /// fails, as all throws PackageError.
    SpoolFile(std::filesystem::path folder, std::filesystem::path target);
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;
    ~SpoolFile();

    /// Where the next byte goes.
    std::uint64_t End() const { return m_written + m_buffer.size(); }
    void Append(const void* bytes, std::size_t size);
    /// offset and size: of bytes that are there.
    void Read(std::uint64_t offset, void* buffer, std::size_t size);
    /// Forgets all bytes.
    void Clear();

private:
    void Flush();
    void WriteOut(const void* bytes, std::size_t size);
    [[noreturn]] void Fail(int number) const;

    std::filesystem::path m_folder;
    std::filesystem::path m_target;
    int m_file = -1;
    std::uint64_t m_written = 0;
    std::vector<std::uint8_t> m_buffer;
};

} // namespace OvPlatform
