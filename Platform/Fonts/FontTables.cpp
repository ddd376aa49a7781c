#include "Fonts/FontTables.h"

#include <algorithm>
#include <bit>

namespace OvPlatform {
namespace {

constexpr std::size_t directoryHeaderSize = 12;
constexpr std::size_t recordSize = 16;

// Outlines in TrueType's form, the same as another system names it, and those in CFF's form.
constexpr std::uint32_t versions[] = {0x00010000, FontTag("true"), FontTag("OTTO")};

std::uint32_t Number(std::span<const std::byte> bytes, std::size_t offset, std::size_t size) {
    std::uint32_t number = 0;
    for (const std::byte byte : bytes.subspan(offset, size))
        number = number << 8 | std::to_integer<std::uint32_t>(byte);
    return number;
}

void Append(std::vector<std::byte>& bytes, std::uint32_t number, int size) {
    while (--size >= 0)
        bytes.push_back(static_cast<std::byte>(number >> 8 * size));
}

constexpr std::size_t Padded(std::size_t size) { return (size + 3) / 4 * 4; }

/// Where the font's directory stands; beyond the file if there is no such font.
std::size_t DirectoryOffset(std::span<const std::byte> file, std::uint32_t index) {
    if (!FontTables::IsCollection(file)) return index == 0 ? 0 : file.size();
    constexpr std::size_t headerSize = 12;
    if (file.size() < headerSize || index >= Number(file, 8, 4) || index >= (file.size() - headerSize) / 4)
        return file.size();
    return Number(file, headerSize + std::size_t{4} * index, 4);
}

} // namespace

bool FontTables::IsCollection(std::span<const std::byte> file) noexcept {
    return file.size() >= 4 && Number(file, 0, 4) == FontTag("ttcf");
}

std::optional<FontTables> FontTables::Read(std::span<const std::byte> file, std::uint32_t index) {
    const std::size_t offset = DirectoryOffset(file, index);
    if (offset >= file.size() || file.size() - offset < directoryHeaderSize) return {};
    const auto directory = file.subspan(offset);
    FontTables font;
    font.m_fileSize = file.size();
    font.m_version = Number(directory, 0, 4);
    if (std::find(std::begin(versions), std::end(versions), font.m_version) == std::end(versions)) return {};
    const std::size_t count = Number(directory, 4, 2);
    if (count > (directory.size() - directoryHeaderSize) / recordSize) return {};
    for (std::size_t table = 0; table < count; ++table) {
        const auto record = directory.subspan(directoryHeaderSize + table * recordSize, recordSize);
        const std::size_t start = Number(record, 8, 4);
        const std::size_t length = Number(record, 12, 4);
        if (start > file.size() || length > file.size() - start) continue;
        font.m_tables.push_back({Number(record, 0, 4), Number(record, 4, 4), file.subspan(start, length)});
    }
    return font;
}

bool FontTables::Has(std::uint32_t tag) const noexcept {
    return std::any_of(m_tables.begin(), m_tables.end(),
                       [tag](const Table& table) { return table.tag == tag; });
}

std::vector<std::byte> FontTables::FileOfItsOwn() const {
    const std::size_t directorySize = directoryHeaderSize + m_tables.size() * recordSize;
    std::size_t size = directorySize;
    for (const Table& table : m_tables)
        size += Padded(table.bytes.size());
    if (m_tables.empty() || size > directorySize + Padded(m_fileSize)) return {};

    std::vector<std::byte> file;
    file.reserve(size);
    const auto count = static_cast<std::uint32_t>(m_tables.size());
    const std::uint32_t largestPower = std::bit_floor(count);
    Append(file, m_version, 4);
    Append(file, count, 2);
    Append(file, largestPower * recordSize, 2);
    Append(file, static_cast<std::uint32_t>(std::bit_width(count) - 1), 2);
    Append(file, (count - largestPower) * recordSize, 2);
    std::size_t start = directorySize;
    for (const Table& table : m_tables) {
        Append(file, table.tag, 4);
        Append(file, table.checksum, 4);
        Append(file, static_cast<std::uint32_t>(start), 4);
        Append(file, static_cast<std::uint32_t>(table.bytes.size()), 4);
        start += Padded(table.bytes.size());
    }
    for (const Table& table : m_tables) {
        file.insert(file.end(), table.bytes.begin(), table.bytes.end());
        file.resize(Padded(file.size()));
    }
    return file;
}

} // namespace OvPlatform
