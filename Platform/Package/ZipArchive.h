#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// One item of a zip archive, as its directory describes it.
struct ZipItem {
    std::string name;       // UTF-8
    std::uint64_t size = 0; // inflated, as declared
    std::uint64_t storedSize = 0;
    std::uint32_t checksum = 0;
    bool encrypted = false;
    bool supported = true; // stored or deflated
    bool compressed = false;
    std::uint64_t header = 0;   // where its own header stands in the file
    std::uint64_t position = 0; // of its record in the directory
};

/// A zip archive open for reading. Its directory stays in the file: it is walked through, and an item whose
/// position has been noted is looked up there again, so that memory does not grow with the items. Any thread;
/// nobody waits for another.
class OV_PLATFORM_API ZipArchive {
public:
    /// name: what the file is called in messages. Throws PackageError for what is no archive, or has a
    /// directory that cannot be.
    explicit ZipArchive(const std::filesystem::path& file, std::filesystem::path name);
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;
    ~ZipArchive();

    std::uint64_t Count() const { return m_count; }
    const std::filesystem::path& File() const { return m_path; }
    /// Bytes of the file.
    std::uint64_t Size() const { return m_fileSize; }
    /// position: that of an item that came before. Throws PackageError.
    ZipItem ItemAt(std::uint64_t position) const;
    /// Reads from the item's own header on, at least that and at most size bytes behind it. dataStart: where
    /// in what was read its stored bytes begin, or would begin. part: its name for messages. Throws
    /// PackageError.
    std::string ReadItem(const ZipItem& item, std::size_t size, const std::string& part,
                         std::size_t& dataStart) const;

    /// Up to size bytes; fewer only at the end of the file. Throws PackageError.
    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t size) const;

    /// Goes through the directory.
    class OV_PLATFORM_API Walk {
    public:
        explicit Walk(const ZipArchive& archive);
        /// False at the end. Throws PackageError.
        bool Next(ZipItem& item);

    private:
        const ZipArchive& m_archive;
        std::uint64_t m_left;     // items
        std::uint64_t m_position; // in the file
        std::vector<char> m_window;
        std::uint64_t m_windowStart = 0;
        std::size_t m_windowSize = 0;
    };

private:
    /// What the end of the directory says of it.
    struct End {
        std::uint64_t disks = 0; // numbers of disks, all in one: zero for an archive in one file
        std::uint64_t countHere = 0;
        std::uint64_t count = 0;
        std::uint64_t size = 0;
        std::uint64_t offset = 0;
    };

    void FindDirectory();
    bool TakeEnd(std::string_view bytes, std::uint64_t position);
    bool TakeWideEnd(std::uint64_t position, End& end) const;
    /// Reads one record from bytes that begin with it; how many more bytes it needs, if it needs some.
    std::size_t Parse(std::string_view bytes, std::uint64_t position, ZipItem& item, std::size_t& size) const;
    [[noreturn]] void Contradict() const;

    std::filesystem::path m_path;
    int m_file = -1;
    std::uint64_t m_fileSize = 0;
    std::uint64_t m_count = 0;
    std::uint64_t m_directory = 0;
    std::uint64_t m_directoryEnd = 0;
};

} // namespace OvPlatform
