#include "Package/ZipArchive.h"

#include "Package/PackageError.h"
#include "Package/ZipRecords.h"
#include "System/HandleTable.h"

#include <fcntl.h>
#include <msopc.h>
#include <sys/stat.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace OvPlatform {

namespace {

constexpr std::size_t mostCommentSize = 0xFFFF;
constexpr std::size_t windowSize = 256u << 10; // holds the largest record
constexpr std::size_t usualRecord = 512;

bool IsUtf8(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return true;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &error);
    return error == U_BUFFER_OVERFLOW_ERROR;
}

// What archives without a mark for UTF-8 are written in, where it is not UTF-8 all the same.
std::string FromOldCodePage(std::string_view text) {
    std::string utf8(text.size() * 3, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t size =
        ucnv_convert("UTF-8", "ibm-437", utf8.data(), static_cast<std::int32_t>(utf8.size()), text.data(),
                     static_cast<std::int32_t>(text.size()), &error);
    utf8.resize(U_FAILURE(error) ? 0 : static_cast<std::size_t>(size));
    return utf8;
}

// Numbers that had no room in the record stand in an extra field, in this order. False where they do not.
bool TakeWideNumbers(std::string_view extra, ZipItem& item) {
    std::uint64_t* const numbers[] = {&item.size, &item.storedSize, &item.header};
    const auto isMissing = [](const std::uint64_t* number) { return *number == wideNumber; };
    if (std::none_of(std::begin(numbers), std::end(numbers), isMissing)) return true;
    RecordReader fields(extra);
    while (fields.Left() >= 4) {
        const std::uint16_t kind = fields.Take16();
        RecordReader field(fields.TakeBytes(fields.Take16()));
        if (kind != wideField) continue;
        for (std::uint64_t* number : numbers)
            if (isMissing(number)) *number = field.Take64();
        return !field.IsShort();
    }
    // A number that just has that value needs no field.
    return true;
}

} // namespace

ZipArchive::ZipArchive(const std::filesystem::path& file, std::filesystem::path name)
    : m_path(std::move(name)) {
    // A pipe is not waited for.
    m_file = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const int error = errno;
    struct stat state {};
    try {
        if (m_file < 0 && (error == ENOENT || error == ENOTDIR))
            throw PackageError(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), m_path.string(),
                               "there is no such file");
        if (m_file < 0 || fstat(m_file, &state) != 0)
            throw PackageError(HRESULT_FROM_WIN32(ErrorFromErrno(error)), m_path.string(),
                               std::string("it cannot be read: ") + std::strerror(error));
        if (!S_ISREG(state.st_mode))
            throw PackageError(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), m_path.string(),
                               "this is not a file");
        m_fileSize = static_cast<std::uint64_t>(state.st_size);
        if (m_fileSize == 0)
            throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, m_path.string(), "the file is empty");
        FindDirectory();
    } catch (...) {
        if (m_file >= 0) close(m_file);
        throw;
    }
}

ZipArchive::~ZipArchive() { close(m_file); }

void ZipArchive::Contradict() const {
    throw PackageError(OPC_E_ZIP_INCONSISTENT_DIRECTORY, m_path.string(),
                       "the zip directory contradicts itself");
}

// It stands last in the file, but for a comment.
void ZipArchive::FindDirectory() {
    const auto size = static_cast<std::size_t>(
        (std::min)(m_fileSize, std::uint64_t{endSize + mostCommentSize + wideEndLocatorSize}));
    std::string tail(size, '\0');
    const std::uint64_t start = m_fileSize - size;
    tail.resize(ReadAt(start, tail.data(), size));
    bool isThere = false;
    for (std::size_t at = tail.size() < endSize ? 0 : tail.size() - endSize + 1; at-- > 0;) {
        if (RecordReader(std::string_view(tail).substr(at, 4)).Take32() != endMark) continue;
        isThere = true;
        if (TakeEnd(std::string_view(tail).substr(at), start + at)) return;
    }
    if (isThere) Contradict();
    char first[4] = {};
    ReadAt(0, first, sizeof first);
    if (RecordReader({first, 4}).Take32() == localHeaderMark)
        throw PackageError(OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY, m_path.string(),
                           "the package is cut short: its zip directory is missing");
    throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, m_path.string(),
                       "this is no package: it is not a zip archive");
}

// False where what looks like the end of a directory is none.
bool ZipArchive::TakeEnd(std::string_view bytes, std::uint64_t position) {
    RecordReader record(bytes.substr(4));
    End end;
    end.disks = std::uint64_t{record.Take16()} | record.Take16();
    end.countHere = record.Take16();
    end.count = record.Take16();
    end.size = record.Take32();
    end.offset = record.Take32();
    if (record.Take16() > record.Left()) return false;
    const bool isWide = end.count == wideCount || end.size == wideNumber || end.offset == wideNumber;
    if (isWide && !TakeWideEnd(position, end)) return false;
    if (end.disks != 0 || end.countHere != end.count)
        throw PackageError(OPC_E_ZIP_UNSUPPORTEDARCHIVE, m_path.string(),
                           "the zip archive is spread over several files");
    if (end.offset > position || end.size > position - end.offset ||
        end.count > end.size / directoryRecordSize)
        return false;
    m_count = end.count;
    m_directory = end.offset;
    m_directoryEnd = end.offset + end.size;
    return true;
}

// Of an archive that is small all the same, there is none.
bool ZipArchive::TakeWideEnd(std::uint64_t position, End& end) const {
    if (position < wideEndLocatorSize) return true;
    std::string bytes(wideEndLocatorSize, '\0');
    bytes.resize(ReadAt(position - wideEndLocatorSize, bytes.data(), bytes.size()));
    RecordReader locator(bytes);
    if (locator.Take32() != wideEndLocatorMark) return true;
    const std::uint32_t disk = locator.Take32();
    const std::uint64_t where = locator.Take64();
    if (where > position - wideEndLocatorSize) return false;
    bytes.resize(wideEndSize);
    bytes.resize(ReadAt(where, bytes.data(), bytes.size()));
    RecordReader record(bytes);
    if (record.Take32() != wideEndMark) return false;
    record.TakeBytes(8 + 2 + 2); // its size, versions
    end.disks = std::uint64_t{disk} | record.Take32() | record.Take32();
    end.countHere = record.Take64();
    end.count = record.Take64();
    end.size = record.Take64();
    end.offset = record.Take64();
    return !record.IsShort();
}

std::size_t ZipArchive::ReadAt(std::uint64_t offset, void* buffer, std::size_t size) const {
    auto* next = static_cast<char*>(buffer);
    std::size_t done = 0;
    while (done != size) {
        const ssize_t count = pread(m_file, next + done, size - done, static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0)
            throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, m_path.string(),
                               std::string("it cannot be read: ") + std::strerror(errno));
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::size_t ZipArchive::Parse(std::string_view bytes, std::uint64_t position, ZipItem& item,
                              std::size_t& size) const {
    RecordReader record(bytes);
    if (bytes.size() < directoryRecordSize) return directoryRecordSize;
    if (record.Take32() != directoryMark) Contradict();
    record.Take32(); // versions
    const std::uint16_t flags = record.Take16(), method = record.Take16();
    record.Take32(); // time and date
    item.checksum = record.Take32();
    item.storedSize = record.Take32();
    item.size = record.Take32();
    const std::uint16_t nameSize = record.Take16(), extraSize = record.Take16(),
                        commentSize = record.Take16();
    record.TakeBytes(2 + 2 + 4); // disk, attributes
    item.header = record.Take32();
    size = directoryRecordSize + nameSize + extraSize + commentSize;
    if (size > m_directoryEnd - position) Contradict();
    if (bytes.size() < size) return size;
    const std::string_view name = record.TakeBytes(nameSize);
    item.name = (flags & utf8Flag) != 0 || IsUtf8(name) ? std::string(name) : FromOldCodePage(name);
    if (!TakeWideNumbers(record.TakeBytes(extraSize), item)) Contradict();
    item.encrypted = (flags & encryptedFlag) != 0;
    item.supported = method == storedMethod || method == deflatedMethod;
    item.compressed = method != storedMethod;
    item.position = position;
    return 0;
}

ZipItem ZipArchive::ItemAt(std::uint64_t position) const {
    ZipItem item;
    std::string bytes(usualRecord, '\0');
    std::size_t size = 0;
    for (;;) {
        bytes.resize(ReadAt(position, bytes.data(), bytes.size()));
        const std::size_t needed = Parse(bytes, position, item, size);
        if (needed == 0) return item;
        if (bytes.size() < usualRecord || needed <= bytes.size()) Contradict(); // the file has changed
        bytes.resize(needed);
    }
}

std::string ZipArchive::ReadItem(const ZipItem& item, std::size_t size, const std::string& part,
                                 std::size_t& dataStart) const {
    std::string bytes(localHeaderSize + size, '\0');
    bytes.resize(item.header < m_fileSize ? ReadAt(item.header, bytes.data(), bytes.size()) : 0);
    RecordReader header(bytes);
    if (header.Take32() != localHeaderMark)
        throw PackageError(OPC_E_ZIP_INCONSISTENT_DIRECTORY, part,
                           "the zip directory says that it lies where there is nothing");
    header.TakeBytes(22);
    const std::size_t nameSize = header.Take16(), extraSize = header.Take16();
    if (header.IsShort()) throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, part, "its data ends too early");
    dataStart = localHeaderSize + nameSize + extraSize;
    return bytes;
}

ZipArchive::Walk::Walk(const ZipArchive& archive)
    : m_archive(archive), m_left(archive.m_count), m_position(archive.m_directory) {}

bool ZipArchive::Walk::Next(ZipItem& item) {
    if (m_left == 0) return false;
    std::size_t size = 0;
    for (bool isRead = false;; isRead = true) {
        const auto offset = static_cast<std::size_t>(m_position - m_windowStart);
        const std::string_view bytes = offset <= m_windowSize
                                           ? std::string_view(m_window.data() + offset, m_windowSize - offset)
                                           : std::string_view();
        if (!bytes.empty() && m_archive.Parse(bytes, m_position, item, size) == 0) break;
        if (isRead) m_archive.Contradict(); // the file has changed
        const std::uint64_t left = m_archive.m_directoryEnd - m_position;
        m_window.resize(static_cast<std::size_t>((std::min)(left, std::uint64_t{windowSize})));
        m_windowStart = m_position;
        m_windowSize = m_archive.ReadAt(m_position, m_window.data(), m_window.size());
    }
    m_position += size;
    --m_left;
    return true;
}

} // namespace OvPlatform
