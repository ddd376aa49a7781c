#pragma once

#include "Com/PlatformExport.h"
#include "Package/PackageError.h"
#include "Package/Relationships.h"
#include "Xml/DocumentBound.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// How a part is compressed, in the terms of packages; the numbers are those of the pipeline's compression
/// options.
enum class PackageCompression : std::uint8_t { None = 0, Normal = 1, Small = 2, Fast = 3 };

/// What bounds a package that is read, against input made to exhaust.
struct PackageLimits {
    std::uint64_t maxPartSize = std::uint64_t{4} << 30; // bytes inflated, one part
    std::uint64_t maxXmlPartSize =
        mostDocumentBytes; // the content types and each relationships part, which are held whole
    std::uint64_t maxRatio =
        1100; // inflated to stored bytes, beyond the first MiB; deflate itself ends at 1032
    std::uint64_t maxPackageSize = std::uint64_t{64} << 30; // bytes inflated, all parts
    std::size_t maxItems = 1'000'000;
};

/// One part, as the directory of the package describes it.
struct PackagePart {
    std::string name;               // "/Documents/1/FixedDoc.fdoc", as written in the package
    const std::string& contentType; // one text for all parts that have it; lives as long as the package
    std::uint64_t size = 0;         // bytes inflated, as declared
    std::uint64_t storedSize = 0;
    std::uint32_t pieces = 1;
    PackageCompression compression = PackageCompression::Normal;
    bool interleaved = false; // stored as pieces, be it one
};

/// What a zip directory says of the bytes of a part that lies in one item.
struct PackedForm {
    bool isDeflated = true;
    std::uint64_t size = 0; // inflated
    std::uint64_t storedSize = 0;
    std::uint32_t checksum = 0; // CRC-32 of the inflated bytes
};

/// The bytes of one part as they are stored, a chunk at a time. They are held against size and checksum on
/// the way, unless they were read to their end before. Belongs to one thread.
class OV_PLATFORM_API PackedPartStream {
public:
    virtual ~PackedPartStream() = default;
    virtual const PackedForm& Form() const = 0;
    /// Up to size bytes into buffer; 0 only at the end. Throws PackageError where the part is damaged, at the
    /// latest with its last bytes.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
};

/// The bytes of one part, from its start, a chunk at a time; memory does not grow with the part. Belongs to
/// the thread that reads it, one at a time; several streams of one package may be read on several threads.
class OV_PLATFORM_API PackagePartStream {
public:
    virtual ~PackagePartStream() = default;
    /// Up to size bytes into buffer; 0 only at the end. Throws PackageError: damaged data, sizes other than
    /// declared, limits passed.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
    /// The position to read from next, counted from the start; going back means to inflate again.
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t Position() const = 0;
    virtual std::uint64_t Size() const = 0;
};

/// A package opened for reading: its directory, content types, and relationships. Part names are looked up by
/// their equivalence (ASCII case does not count). Everything but opening may be called from several threads
/// at once.
class OV_PLATFORM_API PackageReader {
public:
    /// Reads the directory and the content types; throws PackageError for a file that is no package, or one
    /// whose directory cannot be trusted (names twice or aliased, invalid names, pieces missing, encrypted
    /// items).
    /// isStopped: asked now and then meanwhile; true gives it up with E_ABORT.
    /// name: what the file is called in messages; empty: by its path.
    static std::shared_ptr<const PackageReader> Open(const std::filesystem::path& file,
                                                     const PackageLimits& limits = {},
                                                     const std::function<bool()>& isStopped = {},
                                                     const std::filesystem::path& name = {});

    virtual ~PackageReader() = default;

    /// By its name in messages.
    virtual const std::filesystem::path& File() const = 0;

    /// All parts but the relationships parts, in the order of the directory (a part of pieces at its first).
    virtual const std::vector<PackagePart>& Parts() const = 0;

    /// Null where there is none.
    virtual const PackagePart* Find(std::string_view partName) const = 0;

    /// Throws PackageError with OPC_E_NO_SUCH_PART where there is none.
    virtual std::unique_ptr<PackagePartStream> OpenPart(std::string_view partName) const = 0;

    /// The same without unpacking it, for whoever puts it into another package as it is. Null for a part that
    /// lies in pieces.
    virtual std::unique_ptr<PackedPartStream> OpenPacked(std::string_view partName) const = 0;

    /// A whole part. Throws PackageError, also where it is larger than the given bound.
    virtual std::string ReadPart(std::string_view partName, std::uint64_t maxSize) const = 0;

    /// The relationships of a part, or of the package for "/". Empty where there are none. Read anew at each
    /// call.
    virtual std::vector<PackageRelationship> Relationships(std::string_view source) const = 0;

    /// The part that says them, as OpenPacked gives others. Null where there is none, where it lies in
    /// pieces, and where nobody has read it through, or more stands behind it than was read.
    virtual std::unique_ptr<PackedPartStream> OpenPackedRelationships(std::string_view source) const = 0;
};

/// A relationship's target that must be a part of the package. Throws PackageError that names the source, the
/// type and the target where it is external or there is no such part.
OV_PLATFORM_API const PackagePart& RequireTarget(const PackageReader& package, std::string_view source,
                                                 const PackageRelationship& relationship);

} // namespace OvPlatform
