#include "Package/ArchivedParts.h"

#include <algorithm>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t memoryBound = 256u << 10; // of one item
constexpr std::size_t chunkSize = 64u << 10;

} // namespace

ArchivedParts::ArchivedParts(ZipWriter& archive, ByteOutput& output)
    : m_archive(archive), m_spool(output.Folder(), output.Name()) {}

void ArchivedParts::Append(Item& item, const ZipHeader& entry, const void* bytes, std::size_t size) {
    if (item.m_isStraight) return m_archive.Write(bytes, size);
    const bool isLarge = !item.m_spooled.empty() || item.m_bytes.size() + size > memoryBound;
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    if (!isLarge) {
        item.m_bytes.insert(item.m_bytes.end(), first, first + size);
    } else if (!m_isTaken && (item.m_isKnown || entry.isDeflated)) { // the others' ends would not be known
        GoStraight(item, entry);
        m_archive.Write(bytes, size);
    } else {
        SpoolBytes(item);
        Spool(item, bytes, size);
    }
}

void ArchivedParts::GoStraight(Item& item, const ZipHeader& entry) {
    item.m_isKnown ? m_archive.Begin(entry) : m_archive.BeginUnknown(entry);
    m_isTaken = item.m_isStraight = true;
    WriteBytes(item);
}

void ArchivedParts::Complete(Item item, const ZipHeader& entry) {
    if (item.m_isStraight) {
        m_archive.End(entry);
        return EndStraight();
    }
    if (!m_isTaken) return Write(item, entry);
    SpoolBytes(item);
    m_waiting.push_back({std::move(item), entry});
}

void ArchivedParts::Abandon(Item item) {
    LetGo(item);
    if (!item.m_isStraight) return;
    m_archive.Drop();
    EndStraight();
}

// Those that had to wait for it.
void ArchivedParts::EndStraight() {
    m_isTaken = false;
    for (Waiting& waiting : std::exchange(m_waiting, {}))
        Write(waiting.item, waiting.entry);
}

void ArchivedParts::Write(Item& item, const ZipHeader& entry) {
    m_archive.Begin(entry);
    WriteBytes(item);
    m_archive.End(entry);
}

void ArchivedParts::WriteBytes(Item& item) {
    std::vector<std::uint8_t> chunk;
    for (const Item::Extent& extent : item.m_spooled)
        for (std::uint64_t done = 0; done != extent.size; done += chunk.size()) {
            chunk.resize(static_cast<std::size_t>((std::min)(extent.size - done, std::uint64_t{chunkSize})));
            m_spool.Read(extent.offset + done, chunk.data(), chunk.size());
            m_archive.Write(chunk.data(), chunk.size());
        }
    LetGo(item);
    m_archive.Write(item.m_bytes.data(), item.m_bytes.size());
    item.m_bytes = {};
}

void ArchivedParts::Spool(Item& item, const void* bytes, std::size_t size) {
    if (size == 0) return;
    if (item.m_spooled.empty()) ++m_spooledItems;
    const std::uint64_t offset = m_spool.End();
    m_spool.Append(bytes, size);
    if (!item.m_spooled.empty() && item.m_spooled.back().offset + item.m_spooled.back().size == offset)
        item.m_spooled.back().size += size;
    else
        item.m_spooled.push_back({offset, size});
}

void ArchivedParts::SpoolBytes(Item& item) {
    Spool(item, item.m_bytes.data(), item.m_bytes.size());
    item.m_bytes = {};
}

// What it has in the spool file is needed no more.
void ArchivedParts::LetGo(Item& item) {
    if (item.m_spooled.empty()) return;
    item.m_spooled = {};
    if (--m_spooledItems == 0) m_spool.Clear();
}

} // namespace OvPlatform
