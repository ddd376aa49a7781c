#include "Imaging/PictureHeader.h"

#include "Imaging/ByteFields.h"
#include "Imaging/TiffDirectory.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace OvPlatform {
namespace {

using namespace std::string_view_literals;
using Order = ByteFields::Order;

constexpr double metresPerInch = 0.0254;

struct Mark {
    PictureKind kind;
    std::string_view bytes;
};
constexpr Mark marks[] = {
    {PictureKind::Png, "\x89PNG\r\n\x1a\n"sv},
    {PictureKind::Jpeg, "\xff\xd8\xff"sv},
    {PictureKind::Gif, "GIF87a"sv},
    {PictureKind::Gif, "GIF89a"sv},
    {PictureKind::Bmp, "BM"sv},
    {PictureKind::Tiff, "II*\0"sv},
    {PictureKind::Tiff, "MM\0*"sv},
};

/// Says whether the chunks reach the last one.
bool ReadPng(const ByteFields& png, PictureHeader& header) {
    constexpr std::size_t firstChunk = 8;
    constexpr std::size_t frameOfChunk = 12; // length, name and check
    constexpr std::uint32_t metre = 1;
    if (!png.HasText(firstChunk + 4, "IHDR")) return false;
    header.width = png.Long(firstChunk + 8);
    header.height = png.Long(firstChunk + 12);
    for (std::size_t at = firstChunk; png.Has(at, frameOfChunk);) {
        const std::size_t length = png.Long(at);
        if (png.HasText(at + 4, "IEND")) return true;
        if (png.HasText(at + 4, "pHYs") && length == 9 && png.Byte(at + 16) == metre) {
            header.dpiX = png.Long(at + 8) * metresPerInch;
            header.dpiY = png.Long(at + 12) * metresPerInch;
        }
        at += frameOfChunk + length;
    }
    return false;
}

void ReadJfif(const ByteFields& jpeg, std::size_t segment, PictureHeader& header) {
    enum Unit : std::uint8_t { Inch = 1, Centimetre = 2 };
    constexpr double centimetresPerInch = 2.54;
    const std::uint8_t unit = jpeg.Byte(segment + 9);
    const double perInch = unit == Inch ? 1 : unit == Centimetre ? centimetresPerInch : 0;
    header.dpiX = jpeg.Short(segment + 10) * perInch;
    header.dpiY = jpeg.Short(segment + 12) * perInch;
}

/// What a camera says; it counts where nothing else was said.
void ReadExif(PictureBytes block, PictureHeader& header) {
    const auto directory = TiffDirectory::Find(block);
    if (!directory || header.dpiX > 0 || header.dpiY > 0) return;
    header.dpiX = directory->DotsPerInch(TiffDirectory::XResolution);
    header.dpiY = directory->DotsPerInch(TiffDirectory::YResolution);
}

enum Marker : std::uint8_t {
    StartOfFrame = 0xc0,
    HuffmanTables = 0xc4,
    Extension = 0xc8,
    ArithmeticTables = 0xcc,
    LastStartOfFrame = 0xcf,
    FirstRestart = 0xd0,
    StartOfImage = 0xd8,
    EndOfImage = 0xd9,
    StartOfScan = 0xda,
    FirstApplication = 0xe0,
    SecondApplication = 0xe1,
    Comment = 0xfe,
    Temporary = 0x01
};

bool IsStartOfFrame(std::uint8_t marker) {
    return marker >= StartOfFrame && marker <= LastStartOfFrame && marker != HuffmanTables &&
           marker != Extension && marker != ArithmeticTables;
}

bool HasNoContent(std::uint8_t marker) {
    return marker == Temporary || (marker >= FirstRestart && marker <= StartOfImage);
}

/// The library takes the square of the number of segments that describe a picture.
constexpr std::uint32_t mostSegments = 4096;

/// Whether the pixels reach the marker of the end, which cannot stand among them by chance, in no more scans
/// than there may be. Each scan goes over the whole picture, however few bytes it has.
bool HasEnd(PictureBytes pixels, const PictureHeader& header, std::uint32_t segments) {
    constexpr std::uint64_t mostPixelsOfLaterScans = std::uint64_t{1} << 30;
    std::uint64_t pixelsOfLaterScans = 0;
    for (auto next = pixels.begin(); (next = std::find(next, pixels.end(), 0xff)) != pixels.end();) {
        if (++next == pixels.end()) return false;
        if (*next == EndOfImage) return true;
        if (*next == StartOfScan) pixelsOfLaterScans += std::uint64_t{header.width} * header.height;
        if (*next >= FirstApplication && *next <= Comment) ++segments;
        if (pixelsOfLaterScans > mostPixelsOfLaterScans || segments > mostSegments) return false;
    }
    return false;
}

bool ReadJpeg(const ByteFields& jpeg, PictureHeader& header) {
    std::uint32_t segments = 0;
    for (std::size_t at = 2; jpeg.Has(at, 2) && segments <= mostSegments;) {
        if (jpeg.Byte(at) != 0xff) return false;
        const std::uint8_t marker = jpeg.Byte(at + 1);
        if (marker == 0xff) {
            ++at; // filled up
            continue;
        }
        const std::size_t segment = at + 2;
        if (marker == StartOfScan) return HasEnd(jpeg.From(segment), header, segments);
        if (marker == EndOfImage) return false;
        if (HasNoContent(marker)) {
            at = segment;
            continue;
        }
        const std::size_t length = jpeg.Short(segment);
        if (length < 2 || !jpeg.Has(segment, length)) return false;
        if (marker == FirstApplication && jpeg.HasText(segment + 2, "JFIF\0"sv)) {
            ReadJfif(jpeg, segment, header);
        } else if (marker == SecondApplication && length > 8 && jpeg.HasText(segment + 2, "Exif\0\0"sv)) {
            ReadExif(jpeg.From(segment + 8).first(length - 8), header);
        } else if (IsStartOfFrame(marker)) {
            header.height = jpeg.Short(segment + 3);
            header.width = jpeg.Short(segment + 5);
        }
        at = segment + length;
        ++segments;
    }
    return false;
}

/// Behind blocks of up to 255 bytes, the last of them empty; 0 if there is no last one.
std::size_t BehindBlocks(const ByteFields& gif, std::size_t at) {
    while (gif.Has(at, 1)) {
        const std::size_t length = gif.Byte(at);
        at += 1 + length;
        if (length == 0) return at;
    }
    return 0;
}

/// Behind the table of colours that a field of flags announces.
std::size_t BehindColours(std::uint8_t flags, std::size_t at) {
    constexpr std::uint8_t hasTable = 0x80;
    return (flags & hasTable) != 0 ? at + (std::size_t{6} << (flags & 7)) : at;
}

bool ReadGif(const ByteFields& gif, PictureHeader& header) {
    constexpr std::uint8_t extension = '!';
    constexpr std::uint8_t image = ',';
    header.width = gif.Short(6);
    header.height = gif.Short(8);
    for (std::size_t at = BehindColours(gif.Byte(10), 13); at != 0;) {
        if (gif.Byte(at) == extension) {
            at = BehindBlocks(gif, at + 2);
            continue;
        }
        if (gif.Byte(at) != image) return false;
        const std::size_t codes = BehindColours(gif.Byte(at + 9), at + 10);
        header.firstPictureEnd = BehindBlocks(gif, codes + 1);
        return header.firstPictureEnd != 0;
    }
    return false;
}

/// Says whether all rows are there, if they are as long as they look.
bool HasRows(const ByteFields& bmp, const PictureHeader& header, std::uint32_t bitsPerPixel) {
    const std::uint64_t rowBytes = (std::uint64_t{header.width} * bitsPerPixel + 31) / 32 * 4;
    const std::uint64_t end = bmp.Long(10) + rowBytes * header.height;
    return end <= bmp.Size();
}

bool ReadBmp(const ByteFields& bmp, PictureHeader& header) {
    constexpr std::uint32_t oldHeaderBytes = 12;
    enum Compression : std::uint32_t { Rows = 0, RowsWithMasks = 3 };
    if (bmp.Long(14) == oldHeaderBytes) {
        header.width = bmp.Short(18);
        header.height = bmp.Short(20);
        return HasRows(bmp, header, bmp.Short(24));
    }
    // The library makes room for whatever these two announce.
    constexpr std::array<std::uint32_t, 6> headerBytes = {40, 52, 56, 64, 108, 124};
    if (std::find(headerBytes.begin(), headerBytes.end(), bmp.Long(14)) == headerBytes.end()) return false;
    if (!bmp.Has(0, 54) || bmp.Long(10) > bmp.Size()) return false;
    // Negative where the first row is the uppermost.
    const auto height = static_cast<std::int32_t>(bmp.Long(22));
    header.width = bmp.Long(18);
    header.height = height < 0 ? 0U - static_cast<std::uint32_t>(height) : static_cast<std::uint32_t>(height);
    header.dpiX = bmp.Long(38) * metresPerInch;
    header.dpiY = bmp.Long(42) * metresPerInch;
    const std::uint32_t compression = bmp.Long(30);
    return (compression != Rows && compression != RowsWithMasks) || HasRows(bmp, header, bmp.Short(28));
}

bool ReadTiff(PictureBytes bytes, PictureHeader& header) {
    const auto directory = TiffDirectory::Find(bytes);
    if (!directory) return false;
    header.width = directory->Number(TiffDirectory::Width);
    header.height = directory->Number(TiffDirectory::Height);
    header.dpiX = directory->DotsPerInch(TiffDirectory::XResolution);
    header.dpiY = directory->DotsPerInch(TiffDirectory::YResolution);
    return true;
}

bool Read(PictureBytes bytes, PictureHeader& header) {
    switch (header.kind) {
    case PictureKind::Png:
        return ReadPng({bytes, Order::BigEndian}, header);
    case PictureKind::Jpeg:
        return ReadJpeg({bytes, Order::BigEndian}, header);
    case PictureKind::Gif:
        return ReadGif({bytes, Order::LittleEndian}, header);
    case PictureKind::Bmp:
        return ReadBmp({bytes, Order::LittleEndian}, header);
    case PictureKind::Tiff:
        return ReadTiff(bytes, header);
    }
    return false;
}

} // namespace

std::optional<PictureKind> FindPictureKind(PictureBytes bytes) noexcept {
    const ByteFields fields(bytes, Order::BigEndian);
    for (const Mark& mark : marks)
        if (fields.HasText(0, mark.bytes)) return mark.kind;
    return std::nullopt;
}

std::optional<PictureHeader> ReadPictureHeader(PictureBytes bytes) noexcept {
    const auto kind = FindPictureKind(bytes);
    if (!kind) return std::nullopt;
    PictureHeader header{*kind};
    if (!Read(bytes, header) || header.width == 0 || header.height == 0) return std::nullopt;
    return header;
}

} // namespace OvPlatform
