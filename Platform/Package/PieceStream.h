#pragma once

#include "Package/PackageReader.h"
#include "Package/ZipArchive.h"

#include <optional>
#include <span>

namespace OvPlatform {

/// One item that holds a part, or a piece of one.
struct StoredPiece {
    std::uint32_t item = 0;
    std::uint64_t size = 0;
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
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    std::size_t m_next = 0; // the piece to open when the present one ends
    std::optional<ZipItemReader> m_reader;
};

} // namespace OvPlatform
