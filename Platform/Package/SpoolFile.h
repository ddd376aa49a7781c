#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace OvPlatform {

/// A nameless temporary file that takes bytes at its end and gives them back. One thread appends; reading
/// begins when appending is over.
class SpoolFile {
public:
    /// In the folder of the file that is going to be written, so that space runs out here first. Throws
    /// PackageError that names that file.
    SpoolFile(const std::filesystem::path& folder, std::filesystem::path target);
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;
    ~SpoolFile();

    const std::filesystem::path& Target() const { return m_target; }
    /// Where the next byte goes.
    std::uint64_t End() const { return m_written + m_buffer.size(); }
    void Append(const void* bytes, std::size_t size);
    /// Before the first Read.
    void Flush();

    /// False if the bytes cannot be read.
    bool Read(std::uint64_t offset, void* buffer, std::size_t size) const;

private:
    void WriteOut(const void* bytes, std::size_t size);

    std::filesystem::path m_target;
    int m_file = -1;
    std::uint64_t m_written = 0;
    std::vector<std::uint8_t> m_buffer;
};

} // namespace OvPlatform
