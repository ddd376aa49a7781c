#include "MediaKeywordTables.h"

#include <DataModel/PrintSchemaKeywordLiterals.h>
#include <Media/MediaSizeTable.h>

using namespace DataModelIds;
using namespace PrintSchema::Keywords;
using FeatureKeywordTables::Row;
using FeatureKeywordTables::Rows;

namespace {

constexpr Row colors[] = {
    {L"blue", VAL_MEDIA_COLOR_BLUE},
    {L"buff", VAL_MEDIA_COLOR_BUFF},
    {L"custom1", VAL_MEDIA_COLOR_CUSTOM1},
    {L"custom2", VAL_MEDIA_COLOR_CUSTOM2},
    {L"custom3", VAL_MEDIA_COLOR_CUSTOM3},
    {L"custom4", VAL_MEDIA_COLOR_CUSTOM4},
    {L"custom5", VAL_MEDIA_COLOR_CUSTOM5},
    {L"custom6", VAL_MEDIA_COLOR_CUSTOM6},
    {L"custom7", VAL_MEDIA_COLOR_CUSTOM7},
    {L"goldenrod", VAL_MEDIA_COLOR_GOLDENROD},
    {L"gray", VAL_MEDIA_COLOR_GRAY},
    {L"green", VAL_MEDIA_COLOR_GREEN},
    {L"ivory", VAL_MEDIA_COLOR_IVORY},
    {L"no-color", VAL_MEDIA_COLOR_NO_COLOR},
    {L"orange", VAL_MEDIA_COLOR_ORANGE},
    {L"other", VAL_MEDIA_COLOR_OTHER},
    {L"pink", VAL_MEDIA_COLOR_PINK},
    {L"red", VAL_MEDIA_COLOR_RED},
    {L"system-default", VAL_MEDIA_COLOR_SYSTEM_DEFAULT},
    {L"unknown", VAL_MEDIA_COLOR_UNKNOWN},
    {L"use-ready", VAL_MEDIA_COLOR_USE_READY},
    {L"white", VAL_MEDIA_COLOR_WHITE},
    {L"yellow", VAL_MEDIA_COLOR_YELLOW},
    {L"Blue", VAL_MEDIA_COLOR_BLUE},
    {L"GoldenRod", VAL_MEDIA_COLOR_GOLDENROD},
    {L"Gray", VAL_MEDIA_COLOR_GRAY},
    {L"Green", VAL_MEDIA_COLOR_GREEN},
    {L"Ivory", VAL_MEDIA_COLOR_IVORY},
    {L"NoColor", VAL_MEDIA_COLOR_NO_COLOR},
    {L"Orange", VAL_MEDIA_COLOR_ORANGE},
    {L"Pink", VAL_MEDIA_COLOR_PINK},
    {L"Red", VAL_MEDIA_COLOR_RED},
    {L"White", VAL_MEDIA_COLOR_WHITE},
    {L"Yellow", VAL_MEDIA_COLOR_YELLOW},
    {L"media-color-print-ticket-custom", VAL_MEDIA_COLOR_PRINT_TICKET_CUSTOM},
};

constexpr Row types[] = {
    {L"bond-heavyweight", VAL_MEDIA_TYPE_BOND_HEAVYWEIGHT},
    {L"cardstock-extra-heavyweight", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT},
    {L"cardstock-extra-heavyweight-glossy", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT_GLOSSY},
    {L"cardstock-extra-heavyweight-pre-cut-tabs", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT_PRE_CUT_TABS},
    {L"cardstock-extra-heavyweight-pre-punched", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT_PRE_PUNCHED},
    {L"cardstock-extra-heavyweight-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT_RELOADED},
    {L"cardstock-extra-heavyweight-pre-printed", VAL_MEDIA_TYPE_CARDSTOCK_EXTRA_HEAVYWEIGHT_PRE_PRINTED},
    {L"cardstock-glossy", VAL_MEDIA_TYPE_CARDSTOCK_GLOSSY},
    {L"cardstock-glossy-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_GLOSSY_RELOADED},
    {L"cardstock-heavyweight", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT},
    {L"cardstock-heavyweight-glossy", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_GLOSSY},
    {L"cardstock-heavyweight-glossy-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_GLOSSY_RELOADED},
    {L"cardstock-heavyweight-pre-cut-tabs", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_PRE_CUT_TABS},
    {L"cardstock-heavyweight-pre-printed", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_PRE_PRINTED},
    {L"cardstock-heavyweight-pre-punched", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_PRE_PUNCHED},
    {L"cardstock-heavyweight-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_RELOADED},
    {L"cardstock-lightweight", VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT},
    {L"cardstock-lightweight-glossy", VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_GLOSSY},
    {L"cardstock-lightweight-glossy-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_GLOSSY_RELOADED},
    {L"cardstock-lightweight-pre-punched", VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_PRE_PUNCHED},
    {L"cardstock-lightweight-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_RELOADED},
    {L"cardstock-postcard", VAL_MEDIA_TYPE_CARDSTOCK_POSTCARD},
    {L"cardstock-pre-cut-tabs", VAL_MEDIA_TYPE_CARDSTOCK_PRE_CUT_TABS},
    {L"cardstock-pre-printed", VAL_MEDIA_TYPE_CARDSTOCK_PRE_PRINTED},
    {L"cardstock-pre-punched", VAL_MEDIA_TYPE_CARDSTOCK_PRE_PUNCHED},
    {L"cardstock-reloaded", VAL_MEDIA_TYPE_CARDSTOCK_RELOADED},
    {L"custom1", VAL_MEDIA_TYPE_CUSTOM1},
    {L"custom2", VAL_MEDIA_TYPE_CUSTOM2},
    {L"custom3", VAL_MEDIA_TYPE_CUSTOM3},
    {L"custom4", VAL_MEDIA_TYPE_CUSTOM4},
    {L"custom5", VAL_MEDIA_TYPE_CUSTOM5},
    {L"full-cut-tabs-textured", VAL_MEDIA_TYPE_FULL_CUT_TABS_TEXTURED},
    {L"labels-extra-heavyweight", VAL_MEDIA_TYPE_LABELS_EXTRA_HEAVYWEIGHT},
    {L"labels-heavyweight", VAL_MEDIA_TYPE_LABELS_HEAVYWEIGHT},
    {L"labels-standard", VAL_MEDIA_TYPE_LABELS_STANDARD},
    {L"ordered-textured", VAL_MEDIA_TYPE_ORDERED_TEXTURED},
    {L"other", VAL_MEDIA_TYPE_OTHER},
    {L"pre-cut-tabs-textured", VAL_MEDIA_TYPE_PRE_CUT_TABS_TEXTURED},
    {L"self-adhesive", VAL_MEDIA_TYPE_SELF_ADHESIVE},
    {L"special", VAL_MEDIA_TYPE_SPECIAL},
    {L"stationery-colored", VAL_MEDIA_TYPE_STATIONERY_COLORED},
    {L"stationery-glossy-reloaded", VAL_MEDIA_TYPE_STATIONERY_GLOSSY_RELOADED},
    {L"stationery-glossy", VAL_MEDIA_TYPE_STATIONERY_GLOSSY},
    {L"stationery-heavyweight", VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT},
    {L"HeavyweightPaper", VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT},
    {L"stationery-heavyweight-pre-printed", VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT_PRE_PRINTED},
    {L"stationery-heavyweight-reloaded", VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT_RELOADED},
    {L"stationery-letterhead", VAL_MEDIA_TYPE_STATIONERY_LETTERHEAD},
    {L"Letterhead", VAL_MEDIA_TYPE_STATIONERY_LETTERHEAD},
    {L"stationery-lightweight", VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT},
    {L"LightweightPaper", VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT},
    {L"stationery-lightweight-glossy", VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT_GLOSSY},
    {L"stationery-lightweight-glossy-reloaded", VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT_GLOSSY_RELOADED},
    {L"stationery-lightweight-pre-printed", VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT_PRE_PRINTED},
    {L"stationery-pre-printed", VAL_MEDIA_TYPE_STATIONERY_PRE_PRINTED},
    {L"stationery-pre-punched", VAL_MEDIA_TYPE_STATIONERY_PRE_PUNCHED},
    {L"stationery-recycled", VAL_MEDIA_TYPE_STATIONERY_RECYCLED},
    {L"stationery-reloaded", VAL_MEDIA_TYPE_STATIONERY_RELOADED},
    {L"stationery-rough-surface", VAL_MEDIA_TYPE_STATIONERY_ROUGH_SURFACE},
    {L"synthetic", VAL_MEDIA_TYPE_SYNTHETIC},
    {L"system-default", VAL_MEDIA_TYPE_SYSTEM_DEFAULT},
    {L"tab-stock", VAL_MEDIA_TYPE_TAB_STOCK},
    {L"textured", VAL_MEDIA_TYPE_TEXTURED},
    {L"use-any", VAL_MEDIA_TYPE_USE_ANY},
    {L"use-ready", VAL_MEDIA_TYPE_USE_READY},
    {L"Archival", VAL_MEDIA_TYPE_ARCHIVAL},
    {PageMediaType::Bond, VAL_MEDIA_TYPE_BOND},
    {PageMediaType::CardStock, VAL_MEDIA_TYPE_CARD_STOCK},
    {PageMediaType::EnvelopePlain, VAL_MEDIA_TYPE_ENVELOPE_PLAIN},
    {PageMediaType::Label, VAL_MEDIA_TYPE_LABEL},
    {PageMediaType::Photographic, VAL_MEDIA_TYPE_PHOTOGRAPHIC},
    {PageMediaType::Plain, VAL_MEDIA_TYPE_PLAIN},
    {PageMediaType::TabStockFull, VAL_MEDIA_TYPE_TAB_STOCK_FULL},
    {PageMediaType::TabStockPreCut, VAL_MEDIA_TYPE_TAB_STOCK_PRE_CUT},
    {PageMediaType::Transparency, VAL_MEDIA_TYPE_TRANSPARENCY},
    {PageMediaType::TShirtTransfer, VAL_MEDIA_TYPE_T_SHIRT_TRANSFER},
    {L"custom6", VAL_MEDIA_TYPE_CUSTOM6},
    {L"custom7", VAL_MEDIA_TYPE_CUSTOM7},
    {L"media-type-print-ticket-custom", VAL_MEDIA_TYPE_PRINT_TICKET_CUSTOM},
    {L"labels-plastic", VAL_MEDIA_TYPE_LABELS_PLASTIC},
};

constexpr Row trays[] = {
    {PageInputBin::AutoSelect, VAL_INPUT_TRAY_AUTO_SELECT},
    {PageInputBin::automatic, VAL_INPUT_TRAY_AUTO_SELECT},
    {L"tray-1", VAL_INPUT_TRAY_1},
    {L"tray-2", VAL_INPUT_TRAY_2},
    {L"tray-3", VAL_INPUT_TRAY_3},
    {L"tray-4", VAL_INPUT_TRAY_4},
    {L"tray-5", VAL_INPUT_TRAY_5},
    {L"tray-6", VAL_INPUT_TRAY_6},
    {L"tray-7", VAL_INPUT_TRAY_7},
    {L"tray-8", VAL_INPUT_TRAY_8},
    {L"tray-9", VAL_INPUT_TRAY_9},
    {L"bypass-tray", VAL_INPUT_TRAY_BYPASS_TRAY},
    {L"manual", VAL_INPUT_TRAY_MANUAL},
};

// Those that are not paper sizes with a name in the table of media sizes.
constexpr Row otherSizes[] = {
    {L"iso-b5-envelope-b5", VAL_MEDIA_SIZE_OPTIONS_ENV_B5_176X250},
    {L"12_99x18", VAL_MEDIA_SIZE_OPTIONS_12_99X18},
    {L"12_99x19", VAL_MEDIA_SIZE_OPTIONS_12_99X19},
    {L"12x17_99", VAL_MEDIA_SIZE_OPTIONS_OVERSIZED_TABLOID_12X17_99},
    {L"custom", VAL_MEDIA_SIZE_NAME_CUSTOM},
    {PageMediaSize::CustomMediaSize, VAL_MEDIA_SIZE_NAME_CUSTOM},
    {L"sef-paper-only", VAL_MEDIA_SIZE_SEF_PAPER_ONLY},
    {L"all-paper-sizes", VAL_MEDIA_SIZE_ALL_PAPER_SIZES},
    {L"OrvelCustom", VAL_MEDIA_SIZE_ORVEL_CUSTOM},
    {L"Transient", VAL_MEDIA_SIZE_TRANSIENT},
    {L"Mixed_Sizes", VAL_MEDIA_SIZE_OPTIONS_MIXED_SIZES},
    {L"pb-trim-custom", VAL_MEDIA_SIZE_PB_TRIM_CUSTOM},
};

tagValueEnum Find(Rows rows, std::wstring_view keyword) noexcept {
    const Row* const row = FeatureKeywordTables::FindKeyword(rows, keyword);
    return row != nullptr ? row->value : VAL_UNSPECIFIED;
}

std::wstring_view WithoutPrefix(std::wstring_view keyword) noexcept {
    return keyword.substr(keyword.find(L':') + 1);
}

} // namespace

tagValueEnum MediaKeywordTables::FindColor(std::wstring_view keyword) noexcept {
    return Find(colors, keyword);
}

tagValueEnum MediaKeywordTables::FindType(std::wstring_view keyword) noexcept { return Find(types, keyword); }

tagValueEnum MediaKeywordTables::FindInputTray(std::wstring_view keyword) noexcept {
    return Find(trays, keyword);
}

tagValueEnum MediaKeywordTables::FindSize(std::wstring_view keyword) noexcept {
    for (const MediaSizeRecord& record : MediaSizeTable::GetRecords())
        if (WithoutPrefix(record.keyword) == keyword) return record.value;
    return Find(otherSizes, keyword);
}

Rows MediaKeywordTables::GetRows(tagFeatureEnum feature) noexcept {
    switch (feature) {
    case FEAT_MEDIA_COLOR:
        return colors;
    case FEAT_EFFECTIVE_MEDIA_TYPE:
        return types;
    case FEAT_INPUT_TRAY:
        return trays;
    case FEAT_APPLICATION_MEDIA_SIZE_OPTION:
        return otherSizes;
    default:
        return {};
    }
}
