#pragma once

#include "Package/SpoolFile.h"
#include "System/ByteOutput.h"

#include <cstdint>
#include <functional>
#include <string>

namespace OvPlatform {

/// What a zip archive says of an item.
struct ZipHeader {
    std::string name; // UTF-8
    bool isDeflated = true;
    std::uint32_t checksum = 0;
    std::uint64_t size = 0; // inflated
    std::uint64_t storedSize = 0;
};

/// Writes a zip archive from its first byte to its last without going back, so that it may be a stream. The
/// same calls give the same bytes. Its directory waits in a temporary file, so that memory does not grow with
/// the items. Throws PackageError and FileError. One thread at a time.
class OV_PLATFORM_API ZipWriter {
public:
    /// output: must outlive the writer, which does not finish it.
    explicit ZipWriter(ByteOutput& output);

    /// An item of which all is known.
    void Begin(const ZipHeader& entry);
    /// One of which only the name is known, and that it is deflated: the rest is written behind its bytes.
    void BeginUnknown(const ZipHeader& entry);
    /// The item's bytes as they are stored.
    void Write(const void* bytes, std::size_t size);
    /// entry: the one that was begun, now all of it.
    void End(const ZipHeader& entry);
    /// In place of End: the item is not to be in the archive. What has been written of it stays as bytes that
    /// nobody reads.
    void Drop() { m_isUnknown = false; }

    /// Behind the last item. isStopped: asked now and then; true gives it up with E_ABORT.
    void Finish(const std::function<bool()>& isStopped);

    /// Bytes written so far.
    std::uint64_t Size() const { return m_position; }

private:
    void PutHeader(const ZipHeader& entry);
    void Put(const std::string& bytes);
    void PutEnd(std::uint64_t directory, std::uint64_t size);

    ByteOutput& m_output;
    SpoolFile m_directory;
    std::uint64_t m_count = 0;
    std::uint64_t m_position = 0;
    std::uint64_t m_header = 0; // where that of the present item stands
    bool m_isUnknown = false;
};

} // namespace OvPlatform
