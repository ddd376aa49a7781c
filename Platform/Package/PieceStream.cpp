#include "Package/PieceStream.h"

#include <msopc.h>

#include <algorithm>

namespace OvPlatform {

PieceStream::PieceStream(std::shared_ptr<const void> owner, std::shared_ptr<const ZipArchive> archive,
                         std::string part, std::span<const StoredPiece> pieces)
    : m_owner(std::move(owner)), m_archive(std::move(archive)), m_part(std::move(part)), m_pieces(pieces) {
    m_items.reserve(pieces.size());
    for (const StoredPiece& piece : pieces) {
        m_items.push_back(m_archive->ItemAt(piece.Position()));
        m_items.back().name = {};
        m_size += m_items.back().size;
    }
}

std::size_t PieceStream::Read(void* buffer, std::size_t size) {
    if (size == 0) return 0;
    for (;;) {
        if (m_reader) {
            const std::size_t count = m_reader->Read(buffer, size);
            if (m_reader->IsSound()) m_pieces[m_next - 1].NoteSound();
            m_position += count;
            if (count != 0) return count;
            m_reader.reset();
        }
        if (m_next == m_items.size()) return 0;
        m_reader.emplace(m_archive, m_items[m_next++], m_part);
    }
}

void PieceStream::Seek(std::uint64_t position) {
    if (position > m_size)
        throw PackageError(HRESULT_FROM_WIN32(ERROR_INVALID_PARAMETER), m_part,
                           "a seek beyond the end of the part");
    // Forward within the open piece, or to the start of the piece that holds the position.
    std::uint64_t start = 0;
    std::size_t index = 0;
    while (index < m_items.size() && start + m_items[index].size <= position)
        start += m_items[index++].size;
    if (position < m_position || !m_reader || index + 1 != m_next) {
        m_reader.reset();
        m_next = index;
        m_position = start;
    }
    Skip(position - m_position);
}

void PieceStream::Skip(std::uint64_t count) {
    char scratch[8192];
    while (count != 0) {
        const std::size_t step =
            Read(scratch, static_cast<std::size_t>((std::min)(count, std::uint64_t{sizeof scratch})));
        if (step == 0) return;
        count -= step;
    }
}

} // namespace OvPlatform
