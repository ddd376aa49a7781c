#include "StoredArchive.h"

#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <zlib.h>

#include <limits>
#include <utility>

namespace {

constexpr std::uint32_t itemSignature = 0x04034B50;
constexpr std::uint32_t entrySignature = 0x02014B50;
constexpr std::uint32_t endSignature = 0x06054B50;
constexpr std::uint16_t neededVersion = 10;
constexpr std::uint16_t namesAreUtf8 = 1 << 11;

// Little-endian, whatever the machine is.
class Fields {
public:
    Fields& Two(std::uint16_t value) { return Add(value, 2); }
    Fields& Four(std::uint32_t value) { return Add(value, 4); }
    Fields& Zeros(std::size_t count) {
        m_bytes.append(count, '\0');
        return *this;
    }
    Fields& Text(std::string_view text) {
        m_bytes += text;
        return *this;
    }
    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }

private:
    Fields& Add(std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            m_bytes += static_cast<char>(value >> (8 * i));
        return *this;
    }

    std::string m_bytes;
};

// What both headers of an item say: version, flags, method and time (none), checksum, both sizes, name's
// length.
void AddCommon(Fields& fields, const std::string& name, const CheckedBytes& content) {
    const auto size = static_cast<std::uint32_t>(content.bytes.size());
    fields.Two(neededVersion).Two(namesAreUtf8).Two(0).Zeros(4);
    fields.Four(content.checksum).Four(size).Four(size).Two(static_cast<std::uint16_t>(name.size()));
}

} // namespace

CheckedBytes::CheckedBytes(std::string content)
    : bytes(std::move(content)),
      checksum(static_cast<std::uint32_t>(
          crc32_z(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()))) {}

void StoredArchive::Add(const std::string& name, const CheckedBytes& content) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    if (m_size + content.bytes.size() + name.size() + 1024 > most || name.size() > 0xFFFF ||
        m_items == 0xFFFF)
        ThrowFailure<CPException>([] { return "the page and what it uses are too large to be imaged"; });
    Fields header;
    header.Four(itemSignature);
    AddCommon(header, name, content);
    header.Two(0).Text(name);
    Fields entry;
    entry.Four(entrySignature).Two(neededVersion);
    AddCommon(entry, name, content);
    entry.Zeros(12).Four(static_cast<std::uint32_t>(m_size)).Text(name);
    m_directory += entry.Bytes();
    m_file.Write(header.Bytes());
    m_file.Write(content.bytes);
    m_size += header.Bytes().size() + content.bytes.size();
    ++m_items;
}

void StoredArchive::Finish() {
    Fields end;
    end.Four(endSignature).Zeros(4).Two(m_items).Two(m_items);
    end.Four(static_cast<std::uint32_t>(m_directory.size())).Four(static_cast<std::uint32_t>(m_size)).Two(0);
    m_file.Write(m_directory);
    m_file.Write(end.Bytes());
}
