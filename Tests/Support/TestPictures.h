#pragma once

// Small pictures of every kind, made byte by byte, for tests on both systems.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TestPictures {

/// Numbers in the order that a format wants.
inline std::string Little(std::uint64_t number, int bytes) {
    std::string text;
    for (int index = 0; index < bytes; ++index)
        text += static_cast<char>(number >> (8 * index));
    return text;
}
inline std::string Big(std::uint64_t number, int bytes) {
    const std::string little = Little(number, bytes);
    return {little.rbegin(), little.rend()};
}

/// What the pictures show: the colour of a pixel, red, green and blue.
inline std::string Colour(std::uint32_t x, std::uint32_t y) {
    return {static_cast<char>(x * 16), static_cast<char>(y * 16), '\x40'};
}

/// 24 bits a pixel, the last row first.
inline std::string Bmp(std::uint32_t width, std::uint32_t height, std::uint32_t dotsPerMetre = 0) {
    std::string rows;
    for (std::uint32_t y = height; y-- > 0;) {
        for (std::uint32_t x = 0; x < width; ++x) {
            const std::string colour = Colour(x, y);
            rows.append(colour.rbegin(), colour.rend());
        }
        rows.append(width % 4, '\0');
    }
    return "BM" + Little(static_cast<std::uint32_t>(54 + rows.size()), 4) + Little(0, 4) + Little(54, 4) +
           Little(40, 4) + Little(width, 4) + Little(height, 4) + Little(1, 2) + Little(24, 2) +
           Little(0, 8) + Little(dotsPerMetre, 4) + Little(dotsPerMetre, 4) + Little(0, 8) + rows;
}

/// One image of a GIF file, all of the colour `index`: the codes are kept from growing.
inline std::string GifImage(std::uint32_t width, std::uint32_t height, std::uint32_t index) {
    constexpr std::uint32_t clear = 4, end = 5; // in 3 bits
    std::string data;
    std::uint32_t bits = 0;
    int count = 0;
    const auto put = [&](std::uint32_t code) {
        bits |= code << count;
        for (count += 3; count >= 8; count -= 8, bits >>= 8)
            data += static_cast<char>(bits);
    };
    for (std::uint32_t pixel = 0; pixel < width * height; ++pixel) {
        if (pixel % 2 == 0) put(clear);
        put(index);
    }
    put(end);
    data += static_cast<char>(bits);
    std::string blocks;
    for (std::size_t at = 0; at < data.size(); at += 255) {
        const std::string block = data.substr(at, 255);
        blocks += static_cast<char>(block.size()) + block;
    }
    return "," + Little(0, 4) + Little(width, 2) + Little(height, 2) + Little(0, 1) + '\x02' + blocks + '\0';
}

/// Two colours: 0 is red, 1 is blue.
inline std::string Gif(std::uint32_t width, std::uint32_t height, const std::string& images) {
    using namespace std::string_literals;
    return "GIF89a" + Little(width, 2) + Little(height, 2) + "\x81\0\0"s + "\xff\0\0\0\0\xff\0\0\0\0\0\0"s +
           images + ";";
}

inline std::uint32_t Crc(std::string_view bytes) {
    std::uint32_t crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

inline std::string Chunk(const std::string& name, const std::string& content) {
    return Big(static_cast<std::uint32_t>(content.size()), 4) + name + content + Big(Crc(name + content), 4);
}

/// Uncompressed rows as zlib has them; no more than 65,535 bytes.
inline std::string Stored(const std::string& bytes) {
    std::uint32_t low = 1, high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    const auto size = static_cast<std::uint32_t>(bytes.size());
    return "\x78\x01\x01" + Little(size, 2) + Little(~size, 2) + bytes + Big(high << 16 | low, 4);
}

/// With alpha (half of it) or without, in 8 or 16 bits a colour. `chunks` stand ahead of the pixels.
inline std::string Png(std::uint32_t width, std::uint32_t height, int bits = 8, bool hasAlpha = false,
                       const std::string& chunks = {}) {
    std::string rows;
    for (std::uint32_t y = 0; y < height; ++y) {
        rows += '\0';
        for (std::uint32_t x = 0; x < width; ++x)
            for (const char value : Colour(x, y) + (hasAlpha ? "\x80" : ""))
                rows += bits == 16 ? std::string{value, '\x11'} : std::string{value};
    }
    return "\x89PNG\r\n\x1a\n" +
           Chunk("IHDR", Big(width, 4) + Big(height, 4) + static_cast<char>(bits) +
                             (hasAlpha ? '\x06' : '\x02') + Big(0, 3)) +
           chunks + Chunk("IDAT", Stored(rows)) + Chunk("IEND", "");
}
inline std::string PngResolution(std::uint32_t dotsPerMetre, std::uint32_t unit = 1) {
    return Chunk("pHYs", Big(dotsPerMetre, 4) + Big(dotsPerMetre, 4) + Big(unit, 1));
}

inline std::string Segment(int marker, const std::string& content) {
    return "\xff" + Big(static_cast<std::uint32_t>(marker), 1) +
           Big(static_cast<std::uint32_t>(content.size() + 2), 2) + content;
}
/// All coefficients 0, so that each block takes two bits: grey for 1 or 3 colours, half of each ink for 4.
inline std::string Jpeg(std::uint32_t width, std::uint32_t height, std::uint32_t colours,
                        const std::string& segments = {}) {
    std::string frame = Big(8, 1) + Big(height, 2) + Big(width, 2) + Big(colours, 1);
    std::string scan = Big(colours, 1);
    for (std::uint32_t colour = 1; colour <= colours; ++colour) {
        frame += Big(colour, 1) + "\x11" + Big(0, 1);
        scan += Big(colour, 1) + Big(0, 1);
    }
    const std::string oneCode = "\x01" + std::string(16, '\0'); // of one bit, for the symbol 0
    const std::uint32_t blocks = (width + 7) / 8 * ((height + 7) / 8) * colours;
    return "\xff\xd8" + segments + Segment(0xdb, Big(0, 1) + std::string(64, '\1')) + Segment(0xc0, frame) +
           Segment(0xc4, Big(0x00, 1) + oneCode) + Segment(0xc4, Big(0x10, 1) + oneCode) +
           Segment(0xda, scan + Big(0x003f00, 3)) + std::string((blocks + 3) / 4, '\0') + "\xff\xd9";
}
inline std::string JfifDensity(std::uint32_t unit, std::uint32_t dots) {
    return Segment(0xe0,
                   std::string("JFIF\0\1\2", 7) + Big(unit, 1) + Big(dots, 2) + Big(dots, 2) + Big(0, 2));
}

/// A TIFF file's directory at its beginning, and what it points to behind it, at `Data`. SHORT and LONG
/// entries.
struct TiffEntry {
    std::uint32_t tag, type, value;
};
inline std::string TiffFile(const std::vector<TiffEntry>& entries, const std::string& data) {
    std::string file =
        std::string("II*\0", 4) + Little(8, 4) + Little(static_cast<std::uint32_t>(entries.size()), 2);
    for (const TiffEntry& entry : entries)
        file += Little(entry.tag, 2) + Little(entry.type, 2) + Little(1, 4) + Little(entry.value, 4);
    return file + Little(0, 4) + data;
}
/// Where the data of a file with so many entries begin.
inline std::uint32_t TiffData(std::size_t entries) { return static_cast<std::uint32_t>(14 + 12 * entries); }

/// The resolution as a fraction of `dots`, with the unit's number.
inline std::string TiffResolution(std::uint32_t dots, std::uint32_t divisor, std::uint32_t unit) {
    const std::uint32_t data = TiffData(3);
    return TiffFile({{282, 5, data}, {283, 5, data}, {296, 3, unit}}, Little(dots, 4) + Little(divisor, 4));
}
/// Grey, 8 bits a pixel.
inline std::string Tiff(std::uint32_t width, std::uint32_t height, std::uint32_t dots, std::uint32_t unit) {
    const std::uint32_t data = TiffData(11);
    return TiffFile({{256, 4, width},
                     {257, 4, height},
                     {258, 3, 8},
                     {259, 3, 1},
                     {262, 3, 1},
                     {273, 4, data + 8},
                     {278, 4, height},
                     {279, 4, width * height},
                     {282, 5, data},
                     {283, 5, data},
                     {296, 3, unit}},
                    Little(dots, 4) + Little(1, 4) + std::string(std::size_t{width} * height, '\x80'));
}

} // namespace TestPictures
