#pragma once

#include "Package/PackageReader.h"
#include "Package/ZipItemReader.h"

#include <atomic>
#include <optional>
#include <span>
#include <vector>

namespace OvPlatform {

/// One item that holds a part, or a piece of one: where the directory describes it, and whether its bytes
/// have been read and found right. Small, since a package may have very many.
class StoredPiece {
public:
    explicit StoredPiece(std::uint64_t position) : m_value(position << 1) {}
    StoredPiece(const StoredPiece& other) : m_value(other.m_value.load(std::memory_order_relaxed)) {}
    StoredPiece& operator=(const StoredPiece&) = delete;

    std::uint64_t Position() const { return m_value.load(std::memory_order_relaxed) >> 1; }
    bool IsSound() const { return (m_value.load(std::memory_order_relaxed) & 1) != 0; }
    void NoteSound() const { m_value.fetch_or(1, std::memory_order_relaxed); }

private:
    mutable std::atomic<std::uint64_t> m_value;
};

/// The bytes of a part from its pieces in their order.
class PieceStream final : public PackagePartStream {
public:
    /// pieces: must live as long as owner, which the stream holds.
    PieceStream(std::shared_ptr<const void> owner, std::shared_ptr<const ZipArchive> archive,
                std::string part, std::span<const StoredPiece> pieces);

    std::size_t Read(void* buffer, std::size_t size) override;
    void Seek(std::uint64_t position) override;
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() const override { return m_size; }

private:
    void Skip(std::uint64_t count);

    std::shared_ptr<const void> m_owner;
    std::shared_ptr<const ZipArchive> m_archive;
    std::string m_part;
    std::span<const StoredPiece> m_pieces;
    std::vector<ZipItem> m_items; // of the pieces, in step
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    std::size_t m_next = 0; // the piece to open when the present one ends
    std::optional<ZipItemReader> m_reader;
};

} // namespace OvPlatform
