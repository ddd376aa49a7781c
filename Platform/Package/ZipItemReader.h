#pragma once

#include "Package/ZipArchive.h"

#include <windows.h>

#include <memory>
#include <string>

struct z_stream_s;

namespace OvPlatform {

/// The inflated bytes of one item, exactly as many as the directory declares, the checksum checked at the
/// end. One thread at a time.
class OV_PLATFORM_API ZipItemReader {
public:
    /// part: the name for messages. Throws PackageError.
    ZipItemReader(std::shared_ptr<const ZipArchive> archive, const ZipItem& item, std::string part);
    ZipItemReader(const ZipItemReader&) = delete;
    ZipItemReader& operator=(const ZipItemReader&) = delete;
    ~ZipItemReader();

    /// 0 at the end only. Throws PackageError.
    std::size_t Read(void* buffer, std::size_t size);
    /// The bytes as they are stored instead; all of them are inflated aside, and held against size and
    /// checksum, unless that has been done before. For one item, one or the other.
    std::size_t ReadStored(void* buffer, std::size_t size, bool isToBeChecked);

    /// All bytes have been read, as they are stored too, and are as the directory says.
    bool IsSound() const { return m_isChecked && IsAtEnd(); }

private:
    std::size_t Unpack(void* buffer, std::size_t size);
    std::size_t Inflate(void* buffer, std::size_t size);
    std::size_t Fetch(void* buffer, std::size_t size);
    void Check(const void* stored, std::size_t size);
    void CheckEnd();
    bool IsAtEnd() const;
    [[noreturn]] void Fail(HRESULT result, const char* problem) const;

    std::shared_ptr<const ZipArchive> m_archive;
    std::string m_part;
    const bool m_isCompressed;
    const std::uint32_t m_wantedChecksum;
    std::uint64_t m_left;       // inflated bytes still to come
    std::uint64_t m_storedLeft; // stored bytes still to be fetched
    std::uint64_t m_place = 0;  // of the next one in the file
    std::string m_ahead;        // bytes that were read with the item's header
    std::size_t m_aheadNext = 0;
    std::uint32_t m_checksum = 0;
    bool m_isChecked = false;
    bool m_hasEnded = false;              // the compressed stream
    std::unique_ptr<z_stream_s> m_stream; // null for what is not compressed
    std::unique_ptr<unsigned char[]> m_input;
};

} // namespace OvPlatform
