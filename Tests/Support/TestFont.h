#pragma once

// Fonts made by tests: small, whole, and with what a case needs to be odd.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Numbers as font files have them, the highest byte first.
class FontBytes {
public:
    FontBytes& Add(std::uint64_t number, int size) {
        while (--size >= 0)
            m_bytes += size < 8 ? static_cast<char>(number >> 8 * size) : char{};
        return *this;
    }
    FontBytes& Add16(std::initializer_list<int> numbers) {
        for (const int number : numbers)
            Add(static_cast<std::uint16_t>(number), 2);
        return *this;
    }
    FontBytes& AddText(const std::string& text) {
        m_bytes += text;
        return *this;
    }
    [[nodiscard]] const std::string& Text() const { return m_bytes; }

private:
    std::string m_bytes;
};

/// A font with TrueType outlines, 1,000 units to the em. Glyph n + 1 stands for character n, and is a square
/// with sides of 100 * (n + 1), with an advance of 500; glyph 0 is empty.
struct TestFont {
    std::vector<std::pair<int, std::u16string>> families = {{0x409, u"Test"}}; // by language
    std::vector<std::uint32_t> characters = {u'A', u'B', u'C'};
    int permission = 0; // fsType
    bool isVariable = false;
    bool isColored = false;
    std::vector<std::string> leftOut = {}; // tables

    using Tables = std::map<std::string, std::string>;

    [[nodiscard]] Tables GetTables() const {
        const int glyphs = static_cast<int>(characters.size()) + 1;
        FontBytes locations;
        FontBytes outlines;
        FontBytes advances;
        for (int glyph = 0; glyph < glyphs; ++glyph) {
            locations.Add(outlines.Text().size(), 4);
            advances.Add16({500, 0});
            const int side = 100 * glyph;
            if (glyph == 0) continue;
            outlines.Add16({1, 0, 0, side, side, 3, 0}).Add(0x01010101, 4);
            outlines.Add16({0, 0, side, 0, 0, side, 0, -side}); // steps in x; then in y
            outlines.Text().size() % 4 != 0 ? outlines.Add(0, 2) : outlines;
        }
        locations.Add(outlines.Text().size(), 4);

        Tables tables;
        tables["head"] = FontBytes()
                             .Add(0x00010000, 4)
                             .Add(0x00010000, 4)
                             .Add(0, 4)
                             .Add(0x5F0F3CF5, 4)
                             .Add16({0, 1000})
                             .Add(0, 8)
                             .Add(0, 8)
                             .Add16({0, 0, 1000, 1000, 0, 8, 2, 1, 0})
                             .Text();
        tables["hhea"] = FontBytes()
                             .Add(0x00010000, 4)
                             .Add16({800, -200, 0, 500, 0, 0, 1000, 1, 0, 0, 0, 0, 0, 0, 0, glyphs})
                             .Text();
        tables["maxp"] =
            FontBytes().Add(0x00010000, 4).Add16({glyphs, 4, 1, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0}).Text();
        tables["hmtx"] = advances.Text();
        tables["loca"] = locations.Text();
        tables["glyf"] = outlines.Text();
        tables["cmap"] = CharacterMap();
        tables["name"] = Names();
        tables["OS/2"] = FontBytes()
                             .Add16({4, 500, 400, 5, permission, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})
                             .AddText("\1\2\3\4\5\6\7\10\11\12")
                             .Add(0x80000001, 4)
                             .Add(2, 4)
                             .Add(3, 4)
                             .Add(4, 4)
                             .AddText("TEST")
                             .Add16({0x40, u'A', u'C', 800, -200, 0, 900, 300})
                             .Add(0x20000001, 4)
                             .Add(6, 4)
                             .Add16({500, 700, 0, u' ', 0})
                             .Text();
        tables["post"] = FontBytes().Add(0x00030000, 4).Add(0, 28).Text();
        if (isVariable) AddVariations(tables, glyphs);
        if (isColored) AddColors(tables);
        for (const std::string& table : leftOut)
            tables.erase(table);
        return tables;
    }

    /// The font, with its tables at the offset where it will stand.
    [[nodiscard]] std::string Bytes(std::size_t offset = 0) const {
        const Tables tables = GetTables();
        FontBytes directory;
        directory.Add(0x00010000, 4).Add16({static_cast<int>(tables.size()), 0, 0, 0});
        std::string bodies;
        for (const auto& [tag, body] : tables) {
            std::uint32_t sum = 0;
            std::string padded = body;
            padded.resize((body.size() + 3) / 4 * 4);
            for (std::size_t byte = 0; byte < padded.size(); ++byte)
                sum += static_cast<std::uint32_t>(static_cast<unsigned char>(padded[byte]))
                       << 8 * (3 - byte % 4);
            directory.AddText(tag)
                .Add(sum, 4)
                .Add(offset + 12 + 16 * tables.size() + bodies.size(), 4)
                .Add(body.size(), 4);
            bodies += padded;
        }
        return directory.Text() + bodies;
    }

private:
    [[nodiscard]] std::string CharacterMap() const {
        FontBytes map;
        map.Add16({0, 1, 3, 10}).Add(12, 4).Add16({12, 0}).Add(16 + 12 * characters.size(), 4).Add(0, 4);
        map.Add(characters.size(), 4);
        for (std::size_t index = 0; index < characters.size(); ++index)
            map.Add(characters[index], 4).Add(characters[index], 4).Add(index + 1, 4);
        return map.Text();
    }

    [[nodiscard]] std::string Names() const {
        FontBytes records;
        FontBytes texts;
        int count = 0;
        for (const int name : {1, 2, 4, 5, 6})
            for (const auto& [language, family] : families) {
                const std::u16string text = name == 1 || name == 4 ? family
                                            : name == 2            ? u"Regular"
                                                                   : u"Test-1";
                records.Add16({3, 1, language, name, static_cast<int>(text.size() * 2),
                               static_cast<int>(texts.Text().size())});
                for (const char16_t unit : text)
                    texts.Add(unit, 2);
                ++count;
            }
        return FontBytes().Add16({0, count, 6 + 12 * count}).AddText(records.Text() + texts.Text()).Text();
    }

    static void AddVariations(Tables& tables, int glyphs) {
        tables["fvar"] = FontBytes()
                             .Add16({1, 0, 16, 2, 1, 20, 0, 8})
                             .AddText("wght")
                             .Add(100 << 16, 4)
                             .Add(400 << 16, 4)
                             .Add(900 << 16, 4)
                             .Add16({0, 2})
                             .Text();
        tables["gvar"] = FontBytes()
                             .Add16({1, 0, 1, 0})
                             .Add(20 + 2 * (glyphs + 1), 4)
                             .Add16({glyphs, 0})
                             .Add(20 + 2 * (glyphs + 1), 4)
                             .AddText(std::string(std::size_t{2} * (glyphs + 1), '\0'))
                             .Text();
    }

    static void AddColors(Tables& tables) {
        // Glyph 1 is painted with glyph 2, in the one colour that there is.
        tables["COLR"] = FontBytes().Add16({0, 1}).Add(14, 4).Add(20, 4).Add16({1, 1, 0, 1, 2, 0}).Text();
        tables["CPAL"] = FontBytes().Add16({0, 1, 1, 1}).Add(14, 4).Add16({0}).Add(0xFF0000FF, 4).Text();
    }
};

inline std::string TestCollection(const std::vector<TestFont>& fonts) {
    FontBytes header;
    header.AddText("ttcf").Add(0x00010000, 4).Add(fonts.size(), 4);
    std::string bodies;
    for (const TestFont& font : fonts) {
        const std::size_t offset = 12 + 4 * fonts.size() + bodies.size();
        header.Add(offset, 4);
        bodies += font.Bytes(offset);
    }
    return header.Text() + bodies;
}
