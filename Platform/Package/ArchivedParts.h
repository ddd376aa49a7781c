#pragma once

#include "Package/ZipWriter.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace OvPlatform {

/// Puts items that come side by side into an archive that takes one at a time, in the order in which they are
/// complete. One that outgrows a bound goes straight into the archive, if no other does; the others are kept
/// in memory while they are small, and in a temporary file beyond that. Throws PackageError and FileError.
/// One thread at a time.
class ArchivedParts {
public:
    /// output: that the archive writes into.
    ArchivedParts(ZipWriter& archive, ByteOutput& output);

    /// The bytes of an item, as they are stored.
    class Item {
    public:
        explicit Item(bool isKnown) : m_isKnown(isKnown) {}

    private:
        friend class ArchivedParts;
        struct Extent {
            std::uint64_t offset = 0;
            std::uint64_t size = 0;
        };

        bool m_isKnown; // what its entry says, ahead of its bytes
        bool m_isStraight = false;
        std::vector<std::uint8_t> m_bytes;
        std::vector<Extent> m_spooled; // ahead of m_bytes
    };

    /// The next bytes. entry: of the item; of one that is not known ahead, only the name counts.
    void Append(Item& item, const ZipHeader& entry, const void* bytes, std::size_t size);
    /// The item is complete, and so is its entry.
    void Complete(Item item, const ZipHeader& entry);
    void Abandon(Item item);

private:
    struct Waiting {
        Item item;
        ZipHeader entry;
    };

    void GoStraight(Item& item, const ZipHeader& entry);
    void Write(Item& item, const ZipHeader& entry);
    void WriteBytes(Item& item);
    void Spool(Item& item, const void* bytes, std::size_t size);
    void SpoolBytes(Item& item);
    void LetGo(Item& item);
    void EndStraight();

    ZipWriter& m_archive;
    SpoolFile m_spool;
    std::uint64_t m_spooledItems = 0; // that have bytes there
    bool m_isTaken = false;           // the archive, by an item that goes straight into it
    std::vector<Waiting> m_waiting;   // complete ones, for the archive
};

} // namespace OvPlatform
