#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One item of a zip archive to be built by hand, with what may be wrong about it.
struct ZipEntry {
    std::string name;
    std::string data;
    std::uint16_t method = 0;            // data is stored as given: deflate it beforehand
    std::uint16_t flags = 0;             // 1 encrypted, 8 sizes behind the data
    std::optional<std::uint32_t> size{}; // declared, in place of the true one
    std::optional<std::uint32_t> checksum{};
    bool zip64 = false;       // sizes in the extra field
    std::uint64_t size64 = 0; // declared there, if not 0
    std::string other{};      // a name under which the directory describes the same bytes again
};

namespace ZipBuilderDetail {

inline void Put(std::string& bytes, std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

inline std::uint32_t Checksum(const std::string& data) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : data) {
        crc ^= static_cast<unsigned char>(c);
        for (int i = 0; i < 8; ++i)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

} // namespace ZipBuilderDetail

/// A zip archive, byte by byte, so that tests can say what libraries would not write.
inline std::string BuildZip(const std::vector<ZipEntry>& entries) {
    using ZipBuilderDetail::Put;
    std::string zip, directory;
    std::size_t count = 0;
    for (const ZipEntry& entry : entries) {
        const std::uint64_t offset = zip.size();
        const std::uint32_t crc = entry.checksum.value_or(ZipBuilderDetail::Checksum(entry.data));
        const auto stored = static_cast<std::uint32_t>(entry.data.size());
        const std::uint32_t size = entry.size.value_or(stored);
        const bool descriptor = entry.flags & 8;
        std::string extra;
        if (entry.zip64) {
            Put(extra, 1, 2);
            Put(extra, 16, 2);
            Put(extra, entry.size64 ? entry.size64 : size, 8);
            Put(extra, stored, 8);
        }
        const auto common = [&](std::string& header, const std::string& name, bool local) {
            const bool sizes = !(local && descriptor);
            Put(header, entry.zip64 ? 45 : 20, 2);
            Put(header, entry.flags, 2);
            Put(header, entry.method, 2);
            Put(header, 0x00210000, 4); // 1 January 1980
            Put(header, sizes ? crc : 0, 4);
            Put(header, !sizes ? 0 : entry.zip64 ? 0xFFFFFFFF : stored, 4);
            Put(header, !sizes ? 0 : entry.zip64 ? 0xFFFFFFFF : size, 4);
            Put(header, name.size(), 2);
            Put(header, extra.size(), 2);
        };
        Put(zip, 0x04034B50, 4);
        common(zip, entry.name, true);
        zip += entry.name + extra + entry.data;
        if (descriptor) {
            Put(zip, 0x08074B50, 4);
            Put(zip, crc, 4);
            Put(zip, stored, 4);
            Put(zip, size, 4);
        }
        const auto describe = [&](const std::string& name) {
            Put(directory, 0x02014B50, 4);
            Put(directory, 45, 2);
            common(directory, name, false);
            Put(directory, 0, 2 + 2); // comment, disk
            Put(directory, 0, 2 + 4); // attributes
            Put(directory, offset, 4);
            directory += name + extra;
            ++count;
        };
        describe(entry.name);
        if (!entry.other.empty()) describe(entry.other);
    }
    const std::uint64_t start = zip.size();
    zip += directory;
    Put(zip, 0x06054B50, 4);
    Put(zip, 0, 4);
    Put(zip, count, 2);
    Put(zip, count, 2);
    Put(zip, directory.size(), 4);
    Put(zip, start, 4);
    Put(zip, 0, 2);
    return zip;
}

inline const std::string typesHead =
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)";
/// The type of relationships in an unusual case: types are compared without regard to it.
inline const std::string typesXml =
    typesHead +
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.Relationships+xml"/>)"
    R"(<Default Extension="XML" ContentType="text/xml"/><Override PartName="/Special.xml" ContentType="special"/></Types>)";
inline const std::string relsHead =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)";

/// The entries with content types before them.
inline std::vector<ZipEntry> WithTypes(std::vector<ZipEntry> entries) {
    entries.insert(entries.begin(), ZipEntry{"[Content_Types].xml", typesXml});
    return entries;
}
