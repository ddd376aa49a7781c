#pragma once

#include "Com/PlatformExport.h"
#include "Package/PackageError.h"
#include "Package/PackageReader.h"
#include "Package/Relationships.h"
#include "System/ByteOutput.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Takes the bytes of one new part. One thread at a time.
class OV_PLATFORM_API PackagePartSink {
public:
    /// Without Close the part is left out of the package, as if it had never been added.
    virtual ~PackagePartSink() = default;
    /// Throws PackageError.
    virtual void Write(const void* bytes, std::size_t size) = 0;
    /// The part is complete. Further calls do nothing; Write after it is an error.
    virtual void Close() = 0;
};

/// Writes a package as its parts come: in any order, several at a time if need be, relationships at any time
/// before Finish. A part is written when it is closed, or from where it has outgrown a bound; the content
/// types come last. In a file the bytes have no name until Commit; a writer that goes without Commit leaves
/// nothing behind. The same calls give the same bytes. Memory does not grow with the parts, nor, but for
/// their names, with how many they are. Calls may come from several threads.
class OV_PLATFORM_API PackageWriter {
public:
    /// Throws PackageError where no file can be made beside the target, or that is no file to be replaced;
    /// ThreadError where no thread can be had.
    static std::unique_ptr<PackageWriter> Create(const std::filesystem::path& target);
    /// Into any output, which need not be able to go back.
    static std::unique_ptr<PackageWriter> Create(std::unique_ptr<ByteOutput> output);

    virtual ~PackageWriter() = default;

    /// Throws PackageError for a name that is no part name, or is equivalent to one added before, or extends
    /// one or is extended by one (OPC_E_DUPLICATE_PART); relationships parts are not added by hand.
    virtual std::unique_ptr<PackagePartSink> AddPart(std::string_view name, std::string_view contentType,
                                                     PackageCompression compression) = 0;

    /// A part whose bytes are there as they are to be stored, from another package: the sink takes these, all
    /// of them, and does not look into them.
    virtual std::unique_ptr<PackagePartSink>
    AddPackedPart(std::string_view name, std::string_view contentType, const PackedForm& form) = 0;

    virtual bool HasPart(std::string_view name) const = 0;

    /// From a part, or "/" for the package. target: a part name (need not exist yet; checked by Finish) or,
    /// external, any URI. An empty id is replaced by one that is free: R1, R2, ... Returns the id. The same
    /// type, target and mode from one source twice, with no id asked for, gives the one that is there.
    virtual std::string AddRelationship(std::string_view source, std::string_view type,
                                        std::string_view target, bool external = false,
                                        std::string_view id = {}) = 0;

    /// All relationships of a part that is closed have been added: writes them now, so that they need not be
    /// kept. More of them are an error.
    virtual void CompleteRelationships(std::string_view source) = 0;

    /// Whether just these were added from a part, in whatever order and under whatever ids.
    virtual bool HasJust(std::string_view source,
                         const std::vector<PackageRelationship>& relationships) const = 0;

    /// CompleteRelationships where a part of another package says the same: it is written as it is packed
    /// there.
    virtual void CompleteRelationships(std::string_view source, const PackedForm& form,
                                       std::vector<std::uint8_t> bytes) = 0;

    /// Asked now and then while a package is finished; true ends it.
    using StopQuestion = std::function<bool()>;

    /// Writes what is left, relationships, content types and the archive's directory. Throws PackageError: a
    /// sink still open, a relationship from or to a part that is not there, no space; E_ABORT where the
    /// question says so.
    virtual void Finish(const StopQuestion& isStopped) = 0;
    void Finish() { Finish({}); }
    /// Behind Finish, once: puts the package under its name, which takes no time. Throws PackageError;
    /// nothing stands under that name then that was not there before.
    virtual void Commit() = 0;

    /// Bytes of parts taken so far, before compression.
    virtual std::uint64_t BytesWritten() const = 0;
    /// Behind Finish: bytes of the package.
    virtual std::uint64_t Size() const = 0;
};

/// Puts a part of another package into the writer's as it is stored there. Throws PackageError of either
/// side.
OV_PLATFORM_API void TakeOverPart(PackageWriter& writer, std::string_view name, std::string_view contentType,
                                  PackedPartStream& part);

} // namespace OvPlatform
