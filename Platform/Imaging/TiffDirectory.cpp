#include "Imaging/TiffDirectory.h"

namespace OvPlatform {
namespace {

constexpr std::size_t entryBytes = 12; // tag, type, count, value or where it stands
enum Type : std::uint32_t { ShortType = 3, LongType = 4, RationalType = 5 };
enum Unit : std::uint32_t { NoUnit = 1, Inch = 2, Centimetre = 3 };
constexpr double centimetresPerInch = 2.54;

} // namespace

std::optional<TiffDirectory> TiffDirectory::Find(PictureBytes bytes) noexcept {
    const bool isBig = bytes.size() >= 2 && bytes[0] == 'M';
    const ByteFields fields(bytes, isBig ? ByteFields::Order::BigEndian : ByteFields::Order::LittleEndian);
    constexpr std::uint32_t mark = 42;
    if (!fields.HasText(0, isBig ? "MM" : "II") || fields.Short(2) != mark) return std::nullopt;
    const std::size_t start = fields.Long(4);
    if (start < 8 || !fields.Has(start, 2)) return std::nullopt;
    if (!fields.Has(start + 2, entryBytes * fields.Short(start))) return std::nullopt;
    return TiffDirectory(fields, start);
}

std::size_t TiffDirectory::Entry(Tag tag) const noexcept {
    const std::size_t count = m_fields.Short(m_start);
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = m_start + 2 + index * entryBytes;
        if (m_fields.Short(entry) == tag) return entry;
    }
    return 0;
}

std::uint32_t TiffDirectory::Number(Tag tag) const noexcept {
    const std::size_t entry = Entry(tag);
    if (entry == 0) return 0;
    const std::uint32_t type = m_fields.Short(entry + 2);
    return type == ShortType ? m_fields.Short(entry + 8) : type == LongType ? m_fields.Long(entry + 8) : 0;
}

double TiffDirectory::DotsPerInch(Tag tag) const noexcept {
    const std::size_t entry = Entry(tag);
    if (entry == 0 || m_fields.Short(entry + 2) != RationalType) return 0;
    const std::size_t place = m_fields.Long(entry + 8);
    const std::uint32_t divisor = m_fields.Long(place + 4);
    if (divisor == 0) return 0;
    const double dots = static_cast<double>(m_fields.Long(place)) / divisor;
    const std::uint32_t unit = Entry(ResolutionUnit) != 0 ? Number(ResolutionUnit) : std::uint32_t{Inch};
    return unit == Inch ? dots : unit == Centimetre ? dots * centimetresPerInch : 0;
}

} // namespace OvPlatform
