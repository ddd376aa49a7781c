#include "Package/ZipWriter.h"

#include "Package/PackageError.h"
#include "Package/ZipRecords.h"

#include <algorithm>
#include <vector>

namespace OvPlatform {

namespace {

// The first moment that a zip archive can name: packages do not differ by when they were made.
constexpr std::uint32_t fixedTime = 0x00210000; // 1 January 1980
constexpr std::uint16_t version = 20;           // of the format: with folders and deflate
constexpr std::uint16_t wideVersion = 45;       // with numbers of 64 bits
constexpr std::size_t chunkSize = 64u << 10;

bool IsWide(std::uint64_t number) { return number >= wideNumber; }
std::uint64_t Narrow(std::uint64_t number) { return IsWide(number) ? wideNumber : number; }

// Numbers that are too large for a record, in the order of the format.
class WideNumbers {
public:
    void Add(std::uint64_t number) {
        if (IsWide(number)) m_numbers.push_back(number);
    }
    bool IsEmpty() const { return m_numbers.empty(); }
    std::size_t Size() const { return IsEmpty() ? 0 : 4 + 8 * m_numbers.size(); }
    void PutInto(RecordWriter& record) const {
        if (IsEmpty()) return;
        record.Put16(wideField).Put16(8 * m_numbers.size());
        for (const std::uint64_t number : m_numbers)
            record.Put64(number);
    }

private:
    std::vector<std::uint64_t> m_numbers;
};

std::uint16_t MethodOf(const ZipHeader& entry) { return entry.isDeflated ? deflatedMethod : storedMethod; }

} // namespace

ZipWriter::ZipWriter(ByteOutput& output) : m_output(output), m_directory(output.Folder(), output.Name()) {}

void ZipWriter::Put(const std::string& bytes) { Write(bytes.data(), bytes.size()); }

void ZipWriter::Write(const void* bytes, std::size_t size) {
    m_output.Write(bytes, size);
    m_position += size;
}

void ZipWriter::Begin(const ZipHeader& entry) {
    m_isUnknown = false;
    PutHeader(entry);
}

void ZipWriter::BeginUnknown(const ZipHeader& entry) {
    m_isUnknown = true;
    PutHeader({entry.name, entry.isDeflated});
}

void ZipWriter::PutHeader(const ZipHeader& entry) {
    m_header = m_position;
    // Here the field has both sizes, or neither.
    const bool isWide = IsWide(entry.size) || IsWide(entry.storedSize);
    RecordWriter extra;
    if (isWide) extra.Put16(wideField).Put16(16).Put64(entry.size).Put64(entry.storedSize);
    RecordWriter record;
    record.Put32(localHeaderMark)
        .Put16(isWide ? wideVersion : version)
        .Put16(m_isUnknown ? sizesBehindFlag : 0)
        .Put16(MethodOf(entry))
        .Put32(fixedTime)
        .Put32(entry.checksum)
        .Put32(isWide ? wideNumber : entry.storedSize)
        .Put32(isWide ? wideNumber : entry.size)
        .Put16(entry.name.size())
        .Put16(extra.Bytes().size())
        .PutBytes(entry.name)
        .PutBytes(extra.Bytes());
    Put(record.Bytes());
}

void ZipWriter::End(const ZipHeader& entry) {
    if (m_isUnknown) {
        RecordWriter record;
        record.Put32(descriptorMark).Put32(entry.checksum);
        // Whoever reads by the directory does not look here; whoever does not has no other way to know.
        if (IsWide(entry.size) || IsWide(entry.storedSize))
            record.Put64(entry.storedSize).Put64(entry.size);
        else
            record.Put32(entry.storedSize).Put32(entry.size);
        Put(record.Bytes());
    }
    WideNumbers wide;
    wide.Add(entry.size);
    wide.Add(entry.storedSize);
    wide.Add(m_header);
    RecordWriter record;
    record.Put32(directoryMark)
        .Put16(version)
        .Put16(wide.IsEmpty() ? version : wideVersion)
        .Put16(m_isUnknown ? sizesBehindFlag : 0)
        .Put16(MethodOf(entry))
        .Put32(fixedTime)
        .Put32(entry.checksum)
        .Put32(Narrow(entry.storedSize))
        .Put32(Narrow(entry.size))
        .Put16(entry.name.size())
        .Put16(wide.Size())
        .Put16(0) // of a comment
        .Put16(0) // disk
        .Put16(0) // attributes
        .Put32(0)
        .Put32(Narrow(m_header))
        .PutBytes(entry.name);
    wide.PutInto(record);
    m_directory.Append(record.Bytes().data(), record.Bytes().size());
    ++m_count;
    m_isUnknown = false;
}

void ZipWriter::Finish(const std::function<bool()>& isStopped) {
    const std::uint64_t start = m_position, size = m_directory.End();
    std::vector<char> chunk(static_cast<std::size_t>((std::min)(size, std::uint64_t{chunkSize})));
    for (std::uint64_t done = 0; done != size;) {
        if (isStopped && isStopped()) throw PackageError(E_ABORT, m_output.Name().string(), "it is given up");
        const auto step = static_cast<std::size_t>((std::min)(size - done, std::uint64_t{chunkSize}));
        m_directory.Read(done, chunk.data(), step);
        Write(chunk.data(), step);
        done += step;
    }
    PutEnd(start, size);
}

void ZipWriter::PutEnd(std::uint64_t directory, std::uint64_t size) {
    RecordWriter record;
    const std::uint64_t position = m_position;
    if (m_count >= wideCount || IsWide(size) || IsWide(directory))
        record.Put32(wideEndMark)
            .Put64(wideEndSize - 12)
            .Put16(wideVersion)
            .Put16(wideVersion)
            .Put32(0) // disks
            .Put32(0)
            .Put64(m_count)
            .Put64(m_count)
            .Put64(size)
            .Put64(directory)
            .Put32(wideEndLocatorMark)
            .Put32(0)
            .Put64(position)
            .Put32(1);
    const auto count = (std::min)(m_count, std::uint64_t{wideCount});
    record.Put32(endMark)
        .Put16(0)
        .Put16(0)
        .Put16(count)
        .Put16(count)
        .Put32(Narrow(size))
        .Put32(Narrow(directory));
    record.Put16(0); // of a comment
    Put(record.Bytes());
}

} // namespace OvPlatform
