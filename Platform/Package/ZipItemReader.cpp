#include "Package/ZipItemReader.h"

#include "Package/PackageError.h"

#include <msopc.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace OvPlatform {

namespace {

constexpr std::size_t chunkSize = 64u << 10;
// What is read with the header of an item: most pages are smaller.
constexpr std::size_t mostAhead = 16u << 10;
constexpr std::size_t usualName = 256;

std::size_t Least(std::uint64_t left, std::size_t right) {
    return static_cast<std::size_t>((std::min)(left, std::uint64_t{right}));
}

} // namespace

ZipItemReader::ZipItemReader(std::shared_ptr<const ZipArchive> archive, const ZipItem& item, std::string part)
    : m_archive(std::move(archive)), m_part(std::move(part)), m_isCompressed(item.compressed),
      m_wantedChecksum(item.checksum), m_left(item.size), m_storedLeft(item.storedSize) {
    const std::size_t wanted = Least(m_storedLeft, mostAhead);
    m_ahead = m_archive->ReadItem(item, usualName + wanted, m_part, m_aheadNext);
    m_place = item.header + (std::max)(m_aheadNext, m_ahead.size());
    if (m_aheadNext < m_ahead.size())
        m_ahead.resize((std::min)(m_ahead.size(), m_aheadNext + Least(m_storedLeft, m_ahead.size())));
    if (!m_isCompressed) return;
    m_input = std::make_unique<unsigned char[]>(Least(m_storedLeft, chunkSize));
    m_stream = std::make_unique<z_stream>();
    if (inflateInit2(m_stream.get(), -MAX_WBITS) != Z_OK) throw std::bad_alloc();
}

ZipItemReader::~ZipItemReader() {
    if (m_stream) inflateEnd(m_stream.get());
}

void ZipItemReader::Fail(HRESULT result, const char* problem) const {
    throw PackageError(result, m_part, problem);
}

// Stored bytes; 0 behind the last.
std::size_t ZipItemReader::Fetch(void* buffer, std::size_t size) {
    const std::size_t wanted = Least(m_storedLeft, size);
    if (wanted == 0) return 0;
    if (m_aheadNext < m_ahead.size()) {
        const std::size_t count = (std::min)(wanted, m_ahead.size() - m_aheadNext);
        std::memcpy(buffer, m_ahead.data() + m_aheadNext, count);
        m_aheadNext += count;
        m_storedLeft -= count;
        return count;
    }
    if (m_archive->ReadAt(m_place, buffer, wanted) != wanted)
        Fail(OPC_E_ZIP_CORRUPTED_ARCHIVE, "its data ends too early");
    m_place += wanted;
    m_storedLeft -= wanted;
    return wanted;
}

// What there is in the input at hand.
std::size_t ZipItemReader::Inflate(void* buffer, std::size_t size) {
    if (m_hasEnded) return 0;
    m_stream->next_out = static_cast<Bytef*>(buffer);
    m_stream->avail_out = static_cast<uInt>(Least(size, (std::numeric_limits<uInt>::max)()));
    const uInt room = m_stream->avail_out;
    const int result = inflate(m_stream.get(), Z_NO_FLUSH);
    if (result == Z_MEM_ERROR) throw std::bad_alloc();
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
        Fail(OPC_E_ZIP_DECOMPRESSION_FAILED, "its compressed data is damaged");
    m_hasEnded = result == Z_STREAM_END;
    return room - m_stream->avail_out;
}

// 0 at the end only.
std::size_t ZipItemReader::Unpack(void* buffer, std::size_t size) {
    if (!m_isCompressed) return Fetch(buffer, size);
    for (;;) {
        if (const std::size_t count = Inflate(buffer, size); count != 0 || m_hasEnded) return count;
        m_stream->next_in = m_input.get();
        m_stream->avail_in = static_cast<uInt>(Fetch(m_input.get(), chunkSize));
        if (m_stream->avail_in == 0) Fail(OPC_E_ZIP_CORRUPTED_ARCHIVE, "its data ends too early");
    }
}

// What stands behind the end of the compressed bytes would go on into another package, unseen.
bool ZipItemReader::IsAtEnd() const {
    return m_storedLeft == 0 && (!m_isCompressed || (m_hasEnded && m_stream->avail_in == 0));
}

void ZipItemReader::CheckEnd() {
    if (m_isChecked) return;
    char more = 0;
    if (Unpack(&more, 1) != 0)
        Fail(OPC_E_ZIP_INCORRECT_DATA_SIZE, "it inflates to more than the directory declares");
    if (m_checksum != m_wantedChecksum)
        Fail(OPC_E_ZIP_CORRUPTED_ARCHIVE, "its data is damaged (wrong checksum)");
    m_isChecked = true;
}

std::size_t ZipItemReader::Read(void* buffer, std::size_t size) {
    if (size == 0 || (m_left == 0 && m_isChecked)) return 0;
    const std::size_t wanted = Least(m_left, size);
    const std::size_t count = wanted == 0 ? 0 : Unpack(buffer, wanted);
    if (wanted != 0 && count == 0)
        Fail(OPC_E_ZIP_INCORRECT_DATA_SIZE, "it inflates to less than the directory declares");
    m_left -= count;
    m_checksum = static_cast<std::uint32_t>(crc32_z(m_checksum, static_cast<const Bytef*>(buffer), count));
    // The checksum is known only when the end was seen, and a caller that knows the size would stop before
    // it.
    if (m_left == 0) CheckEnd();
    return count;
}

std::size_t ZipItemReader::ReadStored(void* buffer, std::size_t size, bool isToBeChecked) {
    if (size == 0) return 0;
    const std::size_t count = Fetch(buffer, size);
    if (!isToBeChecked) return count;
    Check(buffer, count);
    if (m_storedLeft != 0 || m_isChecked) return count;
    if (m_left != 0) Fail(OPC_E_ZIP_INCORRECT_DATA_SIZE, "it inflates to less than the directory declares");
    if (!IsAtEnd())
        Fail(OPC_E_ZIP_INCORRECT_DATA_SIZE, "its compressed data ends elsewhere than the directory declares");
    CheckEnd();
    return count;
}

void ZipItemReader::Check(const void* stored, std::size_t size) {
    const auto count = [this](const void* bytes, std::size_t found) {
        if (found > m_left)
            Fail(OPC_E_ZIP_INCORRECT_DATA_SIZE, "it inflates to more than the directory declares");
        m_left -= found;
        m_checksum = static_cast<std::uint32_t>(crc32_z(m_checksum, static_cast<const Bytef*>(bytes), found));
    };
    if (!m_isCompressed) return count(stored, size);
    unsigned char scratch[chunkSize];
    m_stream->next_in = const_cast<Bytef*>(static_cast<const Bytef*>(stored));
    m_stream->avail_in = static_cast<uInt>(size);
    while (const std::size_t found = Inflate(scratch, sizeof scratch))
        count(scratch, found);
}

} // namespace OvPlatform
