#include "Fonts/EmbeddedOpenType.h"

#include "Fonts/FontTables.h"

#include <hb-ot.h>
#include <t2embapi.h>

#include <algorithm>
#include <string>

namespace OvPlatform {
namespace {

// In fsType. A font that says several things allows the most generous of them.
constexpr std::uint16_t permissions = 0x000E;
constexpr std::uint16_t isRestricted = 0x0002;
constexpr std::uint16_t isEditable = 0x0008;
constexpr std::uint16_t forbidsSubsets = 0x0100;
constexpr std::uint16_t bitmapsOnly = 0x0200;

constexpr std::uint32_t containerVersion = 0x00020001;
constexpr std::uint16_t magicNumber = 0x504C;

std::uint32_t BigEndian(std::span<const std::byte> bytes, std::size_t offset, std::size_t size) {
    if (offset + size > bytes.size()) return 0; // a shorter table of an older version
    std::uint32_t number = 0;
    for (const std::byte byte : bytes.subspan(offset, size))
        number = number << 8 | std::to_integer<std::uint32_t>(byte);
    return number;
}

class LittleEndianBytes {
public:
    void Add16(std::uint16_t number) { Add(number, 2); }
    void Add32(std::uint32_t number) { Add(number, 4); }
    void Add8(std::uint8_t number) { Add(number, 1); }
    /// With its size in bytes before it.
    void AddText(std::u16string_view text) {
        Add16(static_cast<std::uint16_t>(text.size() * 2));
        for (const char16_t unit : text)
            Add16(unit);
    }
    void Set32(std::size_t offset, std::uint32_t number) {
        for (std::size_t byte = 0; byte < 4; ++byte)
            bytes[offset + byte] = static_cast<std::byte>(number >> 8 * byte);
    }

    std::vector<std::byte> bytes;

private:
    void Add(std::uint32_t number, int size) {
        for (int byte = 0; byte < size; ++byte)
            bytes.push_back(static_cast<std::byte>(number >> 8 * byte));
    }
};

std::u16string NameOf(const FontFace& face, hb_ot_name_id_t name) {
    constexpr unsigned longest = 1000;
    const hb_language_t english = hb_language_from_string("en", -1);
    std::u16string text(longest + 1, u'\0'); // the library puts a zero behind the text
    unsigned length = longest + 1;
    hb_ot_name_get_utf16(face.Shaper(), name, english, &length,
                         reinterpret_cast<std::uint16_t*>(text.data()));
    text.resize(std::min(length, longest));
    return text;
}

std::uint32_t CheckSumAdjustment(std::span<const std::byte> font) {
    constexpr std::size_t directoryHeader = 12;
    constexpr std::size_t recordSize = 16;
    constexpr std::size_t inHead = 8;
    const std::size_t count = BigEndian(font, 4, 2);
    for (std::size_t table = 0; table < count; ++table) {
        const std::size_t record = directoryHeader + table * recordSize;
        if (BigEndian(font, record, 4) == FontTag("head"))
            return BigEndian(font, std::size_t{BigEndian(font, record + 8, 4)} + inHead, 4);
    }
    return 0;
}

} // namespace

std::optional<EmbeddingFacts> EmbeddingFacts::Of(const FontFace& face) {
    const HbBlob table = face.Table(FontTag("OS/2"));
    unsigned length = 0;
    const char* data = hb_blob_get_data(table.get(), &length);
    const auto bytes = std::as_bytes(std::span(data, length));
    constexpr std::size_t shortest = 68; // of version 0, as its first makers had it
    if (bytes.size() < shortest) return {};
    EmbeddingFacts facts;
    facts.weight = static_cast<std::uint16_t>(BigEndian(bytes, 4, 2));
    facts.permission = static_cast<std::uint16_t>(BigEndian(bytes, 8, 2));
    std::transform(bytes.begin() + 32, bytes.begin() + 42, facts.panose,
                   [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    for (std::size_t range = 0; range < 4; ++range)
        facts.unicodeRanges[range] = BigEndian(bytes, 42 + 4 * range, 4);
    facts.isItalic = (BigEndian(bytes, 62, 2) & 1) != 0;
    const bool hasCodePages = BigEndian(bytes, 0, 2) >= 1;
    for (std::size_t page = 0; hasCodePages && page < 2; ++page)
        facts.codePages[page] = BigEndian(bytes, 78 + 4 * page, 4);
    return facts;
}

bool EmbeddingFacts::MayBeEmbedded() const noexcept {
    return (permission & permissions) != isRestricted && (permission & bitmapsOnly) == 0;
}

bool EmbeddingFacts::MayBeCut() const noexcept { return (permission & forbidsSubsets) == 0; }

std::uint32_t EmbeddingFacts::Privilege() const noexcept {
    if (!MayBeEmbedded()) return EMBED_NOEMBEDDING;
    if ((permission & permissions) == 0) return EMBED_INSTALLABLE;
    return (permission & isEditable) != 0 ? EMBED_EDITABLE : EMBED_PREVIEWPRINT;
}

std::vector<std::byte> EmbeddedOpenTypeHeader(const FontFace& face, const EmbeddingFacts& facts,
                                              std::span<const std::byte> font, std::uint32_t flags) {
    LittleEndianBytes header;
    header.Add32(0); // of the whole, told at the end
    header.Add32(static_cast<std::uint32_t>(font.size()));
    header.Add32(containerVersion);
    header.Add32(flags);
    for (const std::uint8_t byte : facts.panose)
        header.Add8(byte);
    header.Add8(DEFAULT_CHARSET);
    header.Add8(facts.isItalic ? 1 : 0);
    header.Add32(facts.weight);
    header.Add16(facts.permission);
    header.Add16(magicNumber);
    for (const std::uint32_t range : facts.unicodeRanges)
        header.Add32(range);
    for (const std::uint32_t page : facts.codePages)
        header.Add32(page);
    header.Add32(CheckSumAdjustment(font));
    for (int reserved = 0; reserved < 4; ++reserved)
        header.Add32(0);
    for (const hb_ot_name_id_t name : {HB_OT_NAME_ID_FONT_FAMILY, HB_OT_NAME_ID_FONT_SUBFAMILY,
                                       HB_OT_NAME_ID_VERSION_STRING, HB_OT_NAME_ID_FULL_NAME}) {
        header.Add16(0);
        header.AddText(NameOf(face, name));
    }
    header.Add16(0);
    header.AddText({}); // the addresses that it is bound to
    header.Set32(0, static_cast<std::uint32_t>(header.bytes.size() + font.size()));
    return std::move(header.bytes);
}

} // namespace OvPlatform
