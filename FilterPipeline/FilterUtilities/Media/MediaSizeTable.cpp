#include "Media/MediaSizeTable.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace DataModelIds;
using namespace PrintSchema::Keywords;

namespace {

struct Size {
    std::int32_t width;
    std::int32_t height;
};

constexpr std::int32_t micronsPerInch = 25400;
constexpr std::int32_t devicePixelsPerInch = 1200;

consteval std::int32_t Microns(double inches) {
    const double exact = inches * micronsPerInch;
    const auto whole = static_cast<std::int32_t>(exact);
    return exact - whole < 0.5 ? whole : whole + 1; // 12.6 is a little less in binary
}
consteval Size Inches(double width, double height) { return {Microns(width), Microns(height)}; }
consteval Size Millimeters(std::int32_t width, std::int32_t height) { return {width * 1000, height * 1000}; }

/// What a device without partial pixels makes of a length: cut down to whole pixels, to the nearest micron,
/// halves up.
constexpr std::int32_t DeviceLength(std::int32_t microns) {
    const std::int64_t pixels = std::int64_t{microns} * devicePixelsPerInch / micronsPerInch;
    return static_cast<std::int32_t>((pixels * micronsPerInch + devicePixelsPerInch / 2) /
                                     devicePixelsPerInch);
}

constexpr std::wstring_view published = KEYWORDS_NS_PREFIX;
constexpr std::wstring_view own = USER_KEYWORDS_NS_PREFIX;

struct Row {
    tagValueEnum value;
    std::wstring_view prefix;
    std::wstring_view name;
    Size size;
    std::wstring_view formName = {};
};

// The order counts: of two sizes that lie close, the first is found.
constexpr Row rows[] = {
    {VAL_MEDIA_SIZE_OPTIONS_LETTER_8_5X11, published, PageMediaSize::NorthAmericaLetter, Inches(8.5, 11),
     L"LETTER"},
    {VAL_MEDIA_SIZE_OPTIONS_A4_210X297, published, PageMediaSize::ISOA4, Millimeters(210, 297), L"A4"},
    {VAL_MEDIA_SIZE_OPTIONS_TABLOID_11X17, published, PageMediaSize::NorthAmericaTabloid, Inches(11, 17),
     L"TABLOID"},
    {VAL_MEDIA_SIZE_OPTIONS_LEGAL_8_5X14, published, PageMediaSize::NorthAmericaLegal, Inches(8.5, 14),
     L"LEGAL"},
    {VAL_MEDIA_SIZE_OPTIONS_STATEMENT_5_5X8_5, published, PageMediaSize::NorthAmericaStatement,
     Inches(5.5, 8.5), L"STATEMENT"},
    {VAL_MEDIA_SIZE_OPTIONS_EXECUTIVE_7_25X10_5, published, PageMediaSize::NorthAmericaExecutive,
     Inches(7.25, 10.5), L"EXECUTIVE"},
    {VAL_MEDIA_SIZE_OPTIONS_A3_297X420, published, PageMediaSize::ISOA3, Millimeters(297, 420), L"A3"},
    {VAL_MEDIA_SIZE_OPTIONS_A5_148X210, published, PageMediaSize::ISOA5, Millimeters(148, 210), L"A5"},
    {VAL_MEDIA_SIZE_OPTIONS_JIS_B4_257X364, published, PageMediaSize::JISB4, Millimeters(257, 364), L"B4"},
    {VAL_MEDIA_SIZE_OPTIONS_JIS_B5_182X257, published, PageMediaSize::JISB5, Millimeters(182, 257), L"B5"},
    {VAL_MEDIA_SIZE_OPTIONS_FOLIO_8_5X13, published, PageMediaSize::OtherMetricFolio, Inches(8.5, 13),
     L"FOLIO"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_10_4_125X9_5, published, PageMediaSize::NorthAmericaNumber10Envelope,
     Inches(4.125, 9.5), L"ENV_10"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_DL_110X220, published, PageMediaSize::ISODLEnvelope, Millimeters(110, 220),
     L"ENV_DL"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_C5_162X229, published, PageMediaSize::ISOC5Envelope, Millimeters(162, 229),
     L"ENV_C5"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_C4_229X324, published, PageMediaSize::ISOC4Envelope, Millimeters(229, 324),
     L"ENV_C4"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_C6_114X162, published, PageMediaSize::ISOC6Envelope, Millimeters(114, 162),
     L"ENV_C6"},
    {VAL_MEDIA_SIZE_OPTIONS_ISO_B4_250X353, published, PageMediaSize::ISOB4, Millimeters(250, 353),
     L"ISO_B4"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_MONARCH_3_875X7_5, published, PageMediaSize::NorthAmericaMonarchEnvelope,
     Inches(3.875, 7.5), L"ENV_MONARCH"},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_100X148, published, PageMediaSize::JapanHagakiPostcard,
     Millimeters(100, 148), L"JAPANESE_POSTCARD"},
    {VAL_MEDIA_SIZE_OPTIONS_9X11, published, PageMediaSize::NorthAmerica9x11, Inches(9, 11), L"9X11"},
    {VAL_MEDIA_SIZE_OPTIONS_OVERSIZED_TABLOID_12X18, own, PageMediaSize::NorthAmericaOversizedTabloid,
     Inches(12, 18)},
    {VAL_MEDIA_SIZE_OPTIONS_A6_105X148, published, PageMediaSize::ISOA6, Millimeters(105, 148), L"A6"},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_148X200, published, PageMediaSize::JapanDoubleHagakiPostcardRotated,
     Millimeters(148, 200), L"DBL_JAPANESE_POSTCARD_ROTATED"},
    {VAL_MEDIA_SIZE_OPTIONS_JIS_B6_128X182, published, PageMediaSize::JISB6, Millimeters(128, 182),
     L"B6_JIS"},
    {VAL_MEDIA_SIZE_OPTIONS_ISO_B5_176X250, own, PageMediaSize::ISOB5, Millimeters(176, 250)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_A7_5_25X7_25, own, PageMediaSize::NorthAmericaA7Envelope, Inches(5.25, 7.25)},
    {VAL_MEDIA_SIZE_OPTIONS_SRA3_320X450, published, PageMediaSize::ISOSRA3, Millimeters(320, 450)},
    {VAL_MEDIA_SIZE_OPTIONS_OVERSIZED_A4_223X297, own, PageMediaSize::OtherMetricOversizedA4,
     Millimeters(223, 297)},
    {VAL_MEDIA_SIZE_OPTIONS_5X7, published, PageMediaSize::NorthAmerica5x7, Inches(5, 7)},
    {VAL_MEDIA_SIZE_OPTIONS_ISO_B6_125X176, own, PageMediaSize::ISOB6, Millimeters(125, 176)},
    {VAL_MEDIA_SIZE_OPTIONS_8X10, published, PageMediaSize::NorthAmerica8x10, Inches(8, 10)},
    {VAL_MEDIA_SIZE_OPTIONS_8X10_5, own, PageMediaSize::NorthAmericaGovernmentLetter, Inches(8, 10.5)},
    {VAL_MEDIA_SIZE_OPTIONS_A4_TAB_225X297, own, PageMediaSize::OtherMetricA4Tab, Millimeters(225, 297)},
    {VAL_MEDIA_SIZE_OPTIONS_INDEXCARD_3X5, own, PageMediaSize::NorthAmerica3x5IndexCard, Inches(3, 5)},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_3_5X5_5, own, PageMediaSize::NorthAmerica3_5x5_5Postcard,
     Inches(3.5, 5.5)},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_4X6, own, PageMediaSize::NorthAmerica4x6Postcard, Inches(4, 6)},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_4_5X6, own, PageMediaSize::NorthAmerica4_5x6Postcard, Inches(4.5, 6)},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_6X9, own, PageMediaSize::NorthAmerica6x9Postcard, Inches(6, 9)},
    {VAL_MEDIA_SIZE_OPTIONS_8X13, own, PageMediaSize::NorthAmerica8x13, Inches(8, 13)},
    {VAL_MEDIA_SIZE_OPTIONS_11X15, own, PageMediaSize::NorthAmerica11x15, Inches(11, 15)},
    {VAL_MEDIA_SIZE_OPTIONS_12X19, own, PageMediaSize::NorthAmerica12x19, Inches(12, 19)},
    {VAL_MEDIA_SIZE_OPTIONS_12_5X18_5, own, PageMediaSize::NorthAmerica12_5x18_5, Inches(12.5, 18.5)},
    {VAL_MEDIA_SIZE_OPTIONS_12_6X19_2, own, PageMediaSize::NorthAmerica12_6x19_2, Inches(12.6, 19.2)},
    {VAL_MEDIA_SIZE_OPTIONS_13X18, own, PageMediaSize::NorthAmerica13x18, Inches(13, 18)},
    {VAL_MEDIA_SIZE_OPTIONS_13X19, own, PageMediaSize::NorthAmerica13x19, Inches(13, 19)},
    {VAL_MEDIA_SIZE_OPTIONS_215X315, own, PageMediaSize::OtherMetric215x315, Millimeters(215, 315)},
    {VAL_MEDIA_SIZE_OPTIONS_8K_267X388, own, PageMediaSize::OtherMetric8K267x388, Millimeters(267, 388)},
    {VAL_MEDIA_SIZE_OPTIONS_8K_270X390, own, PageMediaSize::OtherMetric8K270x390, Millimeters(270, 390)},
    {VAL_MEDIA_SIZE_OPTIONS_16K_194X267, own, PageMediaSize::OtherMetric16K194x267, Millimeters(194, 267)},
    {VAL_MEDIA_SIZE_OPTIONS_16K_195X270, own, PageMediaSize::OtherMetric16K195x270, Millimeters(195, 270)},
    {VAL_MEDIA_SIZE_OPTIONS_220X330, own, PageMediaSize::OtherMetric220x330, Millimeters(220, 330)},
    {VAL_MEDIA_SIZE_OPTIONS_226X310, own, PageMediaSize::OtherMetric226x310, Millimeters(226, 310)},
    {VAL_MEDIA_SIZE_OPTIONS_310X432, own, PageMediaSize::OtherMetric310x432, Millimeters(310, 432)},
    {VAL_MEDIA_SIZE_OPTIONS_328X453, own, PageMediaSize::OtherMetric328x453, Millimeters(328, 453)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_6X9, own, PageMediaSize::NorthAmerica6x9Envelope, Inches(6, 9)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_9X12, own, PageMediaSize::NorthAmerica9x12Envelope, Inches(9, 12)},
    {VAL_MEDIA_SIZE_OPTIONS_5_5X7, own, PageMediaSize::NorthAmerica5_5x7, Inches(5.5, 7)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_5_5_4_375X5_75, own, PageMediaSize::NorthAmericaNumber5_5Envelope,
     Inches(4.375, 5.75)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_6_75_3_625_6_5, published, PageMediaSize::NorthAmericaPersonalEnvelope,
     Inches(3.625, 6.5), L"ENV_PERSONAL"},
    {VAL_MEDIA_SIZE_OPTIONS_POSTCARD_4_25X5_5, own, PageMediaSize::NorthAmerica4_25x5_5Postcard,
     Inches(4.25, 5.5)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_KAKUGATA_2_GOU_240X332, published, PageMediaSize::JapanKaku2Envelope,
     Millimeters(240, 332), L"JENV_KAKU2"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_CHOUKEI_3_GOU_120X235, published, PageMediaSize::JapanChou3Envelope,
     Millimeters(120, 235), L"JENV_CHOU3"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_CHOUKEI_4_GOU_90X205, published, PageMediaSize::JapanChou4Envelope,
     Millimeters(90, 205), L"JENV_CHOU4"},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_9_3_875X8_875, published, PageMediaSize::NorthAmericaNumber9Envelope,
     Inches(3.875, 8.875), L"ENV_9"},
    {VAL_MEDIA_SIZE_JAPAN_YOU_2_ENVELOPE, published, PageMediaSize::JapanYou2Envelope, Millimeters(114, 162)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_YOUKEI_3_GOU_98X148, published, PageMediaSize::JapanYou3Envelope,
     Millimeters(98, 148)},
    {VAL_MEDIA_SIZE_JAPAN_YOU_4_ENVELOPE, published, PageMediaSize::JapanYou4Envelope, Millimeters(105, 235)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_KAKUGATA_20_GOU_229X324, own, PageMediaSize::JapanKaku20Envelope,
     Millimeters(229, 324)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_KAKUGATA_6_GOU_162X229, own, PageMediaSize::JapanKaku6Envelope,
     Millimeters(162, 229)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_YOU_CHOUKEI_3_GOU_120X235, own, PageMediaSize::JapanYouChou3Envelope,
     Millimeters(120, 235)},
    {VAL_MEDIA_SIZE_OPTIONS_216X340, own, PageMediaSize::SouthAmericaOficio, Millimeters(216, 340)},
    {VAL_MEDIA_SIZE_NORTH_AMERICA_8_5X13_4, own, PageMediaSize::NorthAmerica8_5x13_4, Inches(8.5, 13.4)},
    {VAL_MEDIA_SIZE_OPTIONS_210X900_BANNER, own, PageMediaSize::OtherMetric210x900, Millimeters(210, 900)},
    {VAL_MEDIA_SIZE_OPTIONS_297X1200_BANNER, own, PageMediaSize::OtherMetric297x1200, Millimeters(297, 1200)},
    {VAL_MEDIA_SIZE_OPTIONS_215X330, own, PageMediaSize::OtherMetric215x330, Millimeters(215, 330)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_220X312, own, PageMediaSize::OtherMetric220x312Envelope,
     Millimeters(220, 312)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_OPEN_CAT_6X9, own, PageMediaSize::NorthAmerica6x9EnvelopeOpenCatalog,
     Inches(6, 9)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_OPEN_CAT_7X10, own, PageMediaSize::NorthAmerica7x10EnvelopeOpenCatalog,
     Inches(7, 10)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_OPEN_CAT_178X254, own, PageMediaSize::OtherMetric178x254EnvelopeOpenCatalog,
     Millimeters(178, 254)},
    {VAL_MEDIA_SIZE_OPTIONS_ENV_OPEN_CAT_C5_162X262, own, PageMediaSize::OtherMetricC5EnvelopeOpenCatalog,
     Millimeters(162, 262)},
    {VAL_MEDIA_SIZE_OPTIONS_252X358, own, PageMediaSize::OtherMetric252x358, Millimeters(252, 358)},
    {VAL_MEDIA_SIZE_OPTIONS_210X270, own, PageMediaSize::OtherMetric210x270, Millimeters(210, 270)},
    {VAL_MEDIA_SIZE_OPTIONS_210X330, published, PageMediaSize::OtherMetricA4Plus, Millimeters(210, 330),
     L"A4_PLUS"},
    {VAL_MEDIA_SIZE_OPTIONS_215X275, own, PageMediaSize::OtherMetric215x275, Millimeters(215, 275)},
    {VAL_MEDIA_SIZE_OPTIONS_SRA4_225X320, own, PageMediaSize::ISOSRA4, Millimeters(225, 320)},
    {VAL_MEDIA_SIZE_OPTIONS_ISO_B3_353X500, published, PageMediaSize::ISOB3, Millimeters(353, 500)},
    {VAL_MEDIA_SIZE_OPTIONS_OVERSIZED_A5_161X210, own, PageMediaSize::OtherMetricOversizedA5,
     Millimeters(161, 210)},
    {VAL_MEDIA_SIZE_OPTIONS_9X14, own, PageMediaSize::NorthAmerica9x14, Inches(9, 14)},
    {VAL_MEDIA_SIZE_OPTIONS_FOLIOPAC_9_25X11_75, own, PageMediaSize::NorthAmerica9_25x11_75FolioPac,
     Inches(9.25, 11.75)},
    {VAL_MEDIA_SIZE_OPTIONS_9_5X11, own, PageMediaSize::NorthAmerica9_5x11, Inches(9.5, 11)},
    {VAL_MEDIA_SIZE_OPTIONS_2UP_6X9, own, PageMediaSize::NorthAmerica2Up6x9, Inches(9, 12)},
    {VAL_MEDIA_SIZE_OPTIONS_7X10, own, PageMediaSize::NorthAmerica7x10, Inches(7, 10)},
    {VAL_MEDIA_SIZE_OPTIONS_12X18_5, own, PageMediaSize::NorthAmerica12x18_5, Inches(12, 18.5)},
    {VAL_MEDIA_SIZE_OPTIONS_12_6X18_5, own, PageMediaSize::NorthAmerica12_6x18_5, Inches(12.6, 18.5)},
};

constexpr std::size_t LengthOf(const Row& row) { return row.prefix.size() + row.name.size(); }

constexpr std::size_t lengthOfKeywords = [] {
    std::size_t length = 0;
    for (const Row& row : rows)
        length += LengthOf(row) + 1;
    return length;
}();

/// Prefixes and names joined, one behind the other, each closed by a zero.
constexpr auto keywords = [] {
    std::array<wchar_t, lengthOfKeywords> all{};
    auto place = all.begin();
    for (const Row& row : rows) {
        place = std::ranges::copy(row.prefix, place).out;
        place = std::ranges::copy(row.name, place).out + 1;
    }
    return all;
}();

constexpr MediaSizeRecord RecordOf(const Row& row, std::wstring_view keyword) {
    const bool isEnvelope = row.name.find(L"Envelope") != std::wstring_view::npos;
    return {row.value,
            row.size.width,
            row.size.height,
            isEnvelope ? MediaSizeClass::Envelope : MediaSizeClass::Sheet,
            keyword,
            DeviceLength(row.size.width),
            DeviceLength(row.size.height),
            row.formName};
}

constexpr auto records = [] {
    std::array<MediaSizeRecord, std::size(rows)> all{};
    const wchar_t* keyword = keywords.data();
    for (std::size_t index = 0; index < all.size(); ++index) {
        const std::size_t length = LengthOf(rows[index]);
        all[index] = RecordOf(rows[index], {keyword, length});
        keyword += length + 1;
    }
    return all;
}();

/// The sizes of a ticket are rounded in one place or another; this much may be lost.
constexpr std::int64_t tolerance = 100;

bool IsNear(std::int32_t left, int right) {
    return std::abs(std::int64_t{left} - std::int64_t{right}) < tolerance;
}

template <class Condition>
const MediaSizeRecord* Find(int width, int height, Condition isWanted) {
    const auto found = std::find_if(records.begin(), records.end(), [&](const MediaSizeRecord& record) {
        return isWanted(record) && IsNear(record.width, width) && IsNear(record.height, height);
    });
    return found == records.end() ? nullptr : &*found;
}

} // namespace

std::span<const MediaSizeRecord> MediaSizeTable::GetRecords() noexcept { return records; }

const MediaSizeRecord* MediaSizeTable::FindBySize(int width, int height) noexcept {
    return Find(width, height, [](const MediaSizeRecord&) { return true; });
}

const MediaSizeRecord* MediaSizeTable::FindBySize(int width, int height, MediaSizeClass mediaClass) noexcept {
    return Find(width, height,
                [mediaClass](const MediaSizeRecord& record) { return record.mediaClass == mediaClass; });
}
