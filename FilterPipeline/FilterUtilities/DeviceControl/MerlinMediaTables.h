#pragma once

#include "DeviceControl/CommandRow.h"

/// What the Merlin family calls the material of covers.
namespace MerlinMediaTables {

inline constexpr ValueText mediaTypes[] = {
    {DataModelIds::VAL_UNSPECIFIED, L"Unspecified"},
    {DataModelIds::VAL_MEDIA_TYPE_SYSTEM_DEFAULT, L"System-Default"},
    {DataModelIds::VAL_MEDIA_TYPE_PLAIN, L"Standard"},
    {DataModelIds::VAL_MEDIA_TYPE_TRANSPARENCY, L"Transparency"},
    {DataModelIds::VAL_MEDIA_TYPE_LABEL, L"Labels"},
    {DataModelIds::VAL_MEDIA_TYPE_STATIONERY_PRE_PUNCHED, L"Drilled"},
    {DataModelIds::VAL_MEDIA_TYPE_STATIONERY_PRE_PRINTED, L"PrePrinted"},
    {DataModelIds::VAL_MEDIA_TYPE_ENVELOPE_PLAIN, L"Envelopes"},
    {DataModelIds::VAL_MEDIA_TYPE_ARCHIVAL, L"Archive"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT, L"Heavyweight"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_RELOADED, L"Heavyweight Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_CARD_STOCK, L"Extra Heavyweight"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_RELOADED, L"Extra Heavyweight Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT, L"Extra Heavyweight Plus"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_RELOADED, L"Extra Heavyweight Plus Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_LABELS_HEAVYWEIGHT, L"Heavyweight Labels"},
    {DataModelIds::VAL_MEDIA_TYPE_LABELS_EXTRA_HEAVYWEIGHT, L"Extra Heavyweight Labels"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_GLOSSY, L"Gloss"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_LIGHTWEIGHT_GLOSSY_RELOADED, L"Gloss Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_GLOSSY, L"Heavyweight Gloss"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_GLOSSY_RELOADED, L"Heavyweight Gloss Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_GLOSSY, L"Extra Heavyweight Gloss"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_HEAVYWEIGHT_GLOSSY_RELOADED, L"Extra Heavyweight Gloss Reloaded"},
    {DataModelIds::VAL_MEDIA_TYPE_BOND, L"Bond"},
    {DataModelIds::VAL_MEDIA_TYPE_TAB_STOCK, L"Tabs"},
    {DataModelIds::VAL_MEDIA_TYPE_TAB_STOCK_PRE_CUT, L"PrecutTabs"},
    {DataModelIds::VAL_MEDIA_TYPE_STATIONERY_LETTERHEAD, L"Letterhead"},
    {DataModelIds::VAL_MEDIA_TYPE_STATIONERY_RECYCLED, L"Recycled"},
    {DataModelIds::VAL_MEDIA_TYPE_STATIONERY_ROUGH_SURFACE, L"Rough"},
    {DataModelIds::VAL_MEDIA_TYPE_CARDSTOCK_POSTCARD, L"Postcard"},
    {DataModelIds::VAL_MEDIA_TYPE_OTHER, L"Other"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM1, L"Custom1"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM2, L"Custom2"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM3, L"Custom3"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM4, L"Custom4"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM5, L"Custom5"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM6, L"Custom6"},
    {DataModelIds::VAL_MEDIA_TYPE_CUSTOM7, L"Custom7"},
};

inline constexpr ValueText mediaColors[] = {
    {DataModelIds::VAL_UNSPECIFIED, L"Unspecified"},
    {DataModelIds::VAL_MEDIA_COLOR_SYSTEM_DEFAULT, L"System-Default"},
    {DataModelIds::VAL_MEDIA_COLOR_NO_COLOR, L"Clear"},
    {DataModelIds::VAL_MEDIA_COLOR_WHITE, L"White"},
    {DataModelIds::VAL_MEDIA_COLOR_PINK, L"Pink"},
    {DataModelIds::VAL_MEDIA_COLOR_YELLOW, L"Yellow"},
    {DataModelIds::VAL_MEDIA_COLOR_BLUE, L"Blue"},
    {DataModelIds::VAL_MEDIA_COLOR_GREEN, L"Green"},
    {DataModelIds::VAL_MEDIA_COLOR_BUFF, L"Buff"},
    {DataModelIds::VAL_MEDIA_COLOR_GOLDENROD, L"Goldenrod"},
    {DataModelIds::VAL_MEDIA_COLOR_RED, L"Red"},
    {DataModelIds::VAL_MEDIA_COLOR_GRAY, L"Gray"},
    {DataModelIds::VAL_MEDIA_COLOR_IVORY, L"Ivory"},
    {DataModelIds::VAL_MEDIA_COLOR_ORANGE, L"Orange"},
    {DataModelIds::VAL_MEDIA_COLOR_OTHER, L"Other"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM1, L"Custom1"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM2, L"Custom2"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM3, L"Custom3"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM4, L"Custom4"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM5, L"Custom5"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM6, L"Custom6"},
    {DataModelIds::VAL_MEDIA_COLOR_CUSTOM7, L"Custom7"},
};

} // namespace MerlinMediaTables
