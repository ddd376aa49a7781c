#pragma once

#include "MemoryFile.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Bytes with their checksum, which is worked out once for all archives that they go into.
struct CheckedBytes {
    std::string bytes;
    std::uint32_t checksum = 0;

    explicit CheckedBytes(std::string content);
};

/// Writes a zip archive whose items are stored as they are, straight into a file: for an archive of fonts and
/// pictures that is read once and dropped, and made anew for each page. (PKWARE's APPNOTE, without zip64.)
class StoredArchive {
public:
    /// The file must outlive this object.
    explicit StoredArchive(MemoryFile& file) : m_file(file) {}

    /// The name is UTF-8, and new. Throws CPException for what such an archive cannot hold.
    void Add(const std::string& name, const CheckedBytes& content);
    /// Once, at the end.
    void Finish();

private:
    MemoryFile& m_file;
    std::string m_directory;
    std::uint64_t m_size = 0;
    std::uint16_t m_items = 0;
};
