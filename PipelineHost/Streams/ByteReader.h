#pragma once

#include <Package/PackageReader.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace OvPipeline {

/// Bytes that are read from their start, with a position. One thread at a time. Everything throws: HostError,
/// or OvPlatform::PackageError for the bytes of a package.
class ByteReader {
public:
    virtual ~ByteReader() = default;
    /// Up to size bytes; 0 only at the end.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
    /// May lie beyond the end; reading there gives nothing.
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t Position() const = 0;
    /// May have to wait for the end of what is still being written.
    virtual std::uint64_t Size() = 0;
    virtual bool AtEnd() = 0;
};

/// The bytes of a part, wherever they lie: opened anew for each reading.
class Content {
public:
    virtual ~Content() = default;
    virtual std::unique_ptr<ByteReader> Open() const = 0;
    /// The same as it lies in the job's package, without unpacking it; null for what lies elsewhere, or there
    /// in pieces.
    virtual std::unique_ptr<OvPlatform::PackedPartStream> OpenPacked() const { return {}; }
    /// The same for the same bytes of the same part, so that what many pages share is known again.
    virtual std::uint64_t Identity() const = 0;
};

/// Reads all that is left, a chunk at a time.
void Drain(ByteReader& from, const std::function<void(const void* bytes, std::size_t size)>& take);

} // namespace OvPipeline
