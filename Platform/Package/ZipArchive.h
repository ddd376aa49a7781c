#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

struct zip;
struct zip_file;

namespace OvPlatform {

/// One item of a zip archive, as its directory describes it.
struct ZipItem {
    std::string name;       // UTF-8
    std::uint64_t size = 0; // inflated, as declared
    std::uint64_t storedSize = 0;
    bool encrypted = false;
    bool supported = true; // stored or deflated
    bool compressed = false;
};

/// A zip archive open for reading, over libzip. Calls may come from several threads; they wait for one
/// another.
class ZipArchive {
public:
    /// Throws PackageError.
    explicit ZipArchive(const std::filesystem::path& file);
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;
    ~ZipArchive();

    std::size_t Count() const;
    ZipItem Item(std::size_t index) const;
    const std::filesystem::path& File() const { return m_path; }

private:
    friend class ZipItemReader;

    std::filesystem::path m_path;
    mutable std::mutex m_lock;
    zip* m_archive = nullptr;
};

/// The inflated bytes of one item, exactly as many as the directory declares, the checksum checked at the
/// end.
class ZipItemReader {
public:
    /// part: the name for messages. Throws PackageError.
    ZipItemReader(std::shared_ptr<const ZipArchive> archive, std::size_t index, std::uint64_t declaredSize,
                  std::string part);
    ZipItemReader(const ZipItemReader&) = delete;
    ZipItemReader& operator=(const ZipItemReader&) = delete;
    ~ZipItemReader();

    /// 0 at the end only. Throws PackageError.
    std::size_t Read(void* buffer, std::size_t size);

private:
    /// The caller holds the archive's lock.
    std::size_t ReadRaw(void* buffer, std::size_t size);
    void CheckEnd();
    [[noreturn]] void Fail(int zipError, const std::string& text) const;

    std::shared_ptr<const ZipArchive> m_archive;
    std::string m_part;
    std::uint64_t m_left;
    zip_file* m_file = nullptr;
    bool m_checked = false;
};

} // namespace OvPlatform
