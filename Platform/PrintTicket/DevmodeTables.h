#pragma once

#include "PrintTicket/SchemaWords.h"

#include <wingdi.h>

#include <algorithm>
#include <array>
#include <span>

namespace OvPlatform {

// The numbers of a device mode and the public keywords for them, sorted by number.

struct DevmodePaper {
    int number;
    const char* option;
    int width; // tenths of a millimetre
    int height;
};
inline constexpr DevmodePaper devmodePapers[] = {
    {DMPAPER_LETTER, "NorthAmericaLetter", 2159, 2794},
    {DMPAPER_TABLOID, "NorthAmericaTabloid", 2794, 4318},
    {DMPAPER_LEGAL, "NorthAmericaLegal", 2159, 3556},
    {DMPAPER_STATEMENT, "NorthAmericaStatement", 1397, 2159},
    {DMPAPER_EXECUTIVE, "NorthAmericaExecutive", 1842, 2667},
    {DMPAPER_A3, "ISOA3", 2970, 4200},
    {DMPAPER_A4, "ISOA4", 2100, 2970},
    {DMPAPER_A5, "ISOA5", 1480, 2100},
    {DMPAPER_B4, "JISB4", 2570, 3640},
    {DMPAPER_B5, "JISB5", 1820, 2570},
    {DMPAPER_QUARTO, "NorthAmericaQuarto", 2150, 2750},
    {DMPAPER_10X14, "NorthAmerica10x14", 2540, 3556},
    {DMPAPER_11X17, "NorthAmericaTabloid", 2794, 4318},
    {DMPAPER_NOTE, "NorthAmericaNote", 2159, 2794},
    {DMPAPER_ENV_9, "NorthAmericaNumber9Envelope", 984, 2254},
    {DMPAPER_ENV_10, "NorthAmericaNumber10Envelope", 1048, 2413},
    {DMPAPER_ENV_11, "NorthAmericaNumber11Envelope", 1143, 2635},
    {DMPAPER_ENV_12, "NorthAmericaNumber12Envelope", 1207, 2794},
    {DMPAPER_ENV_14, "NorthAmericaNumber14Envelope", 1270, 2921},
    {DMPAPER_CSHEET, "NorthAmericaCSheet", 4318, 5588},
    {DMPAPER_DSHEET, "NorthAmericaDSheet", 5588, 8636},
    {DMPAPER_ESHEET, "NorthAmericaESheet", 8636, 11176},
    {DMPAPER_ENV_DL, "ISODLEnvelope", 1100, 2200},
    {DMPAPER_ENV_C5, "ISOC5Envelope", 1620, 2290},
    {DMPAPER_ENV_C3, "ISOC3Envelope", 3240, 4580},
    {DMPAPER_ENV_C4, "ISOC4Envelope", 2290, 3240},
    {DMPAPER_ENV_C6, "ISOC6Envelope", 1140, 1620},
    {DMPAPER_ENV_C65, "ISOC6C5Envelope", 1140, 2290},
    {DMPAPER_ENV_B4, "ISOB4Envelope", 2500, 3530},
    {DMPAPER_ENV_B5, "ISOB5Envelope", 1760, 2500},
    {DMPAPER_ENV_ITALY, "OtherMetricItalianEnvelope", 1100, 2300},
    {DMPAPER_ENV_MONARCH, "NorthAmericaMonarchEnvelope", 984, 1905},
    {DMPAPER_ENV_PERSONAL, "NorthAmericaPersonalEnvelope", 921, 1651},
    {DMPAPER_ISO_B4, "ISOB4", 2500, 3530},
    {DMPAPER_JAPANESE_POSTCARD, "JapanHagakiPostcard", 1000, 1480},
    {DMPAPER_9X11, "NorthAmerica9x11", 2286, 2794},
    {DMPAPER_10X11, "NorthAmerica10x11", 2540, 2794},
    {DMPAPER_ENV_INVITE, "OtherMetricInviteEnvelope", 2200, 2200},
    {DMPAPER_LETTER_EXTRA, "NorthAmericaLetterExtra", 2413, 3048},
    {DMPAPER_LEGAL_EXTRA, "NorthAmericaLegalExtra", 2413, 3810},
    {DMPAPER_A2, "ISOA2", 4200, 5940},
    {DMPAPER_DBL_JAPANESE_POSTCARD, "JapanDoubleHagakiPostcard", 2000, 1480},
    {DMPAPER_A6, "ISOA6", 1050, 1480},
    {DMPAPER_B6_JIS, "JISB6", 1280, 1820},
};

struct DevmodeKeyword {
    int number;
    const char* option;
};
inline constexpr DevmodeKeyword devmodeOrientations[] = {{DMORIENT_PORTRAIT, "Portrait"},
                                                         {DMORIENT_LANDSCAPE, "Landscape"}};
inline constexpr DevmodeKeyword devmodeSources[] = {{DMBIN_MANUAL, "Manual"},
                                                    {DMBIN_AUTO, "AutoSelect"},
                                                    {DMBIN_TRACTOR, "Tractor"},
                                                    {DMBIN_CASSETTE, "Cassette"},
                                                    {DMBIN_FORMSOURCE, "AutoSelect"}};
inline constexpr DevmodeKeyword devmodeQualities[] = {
    {DMRES_HIGH, "High"}, {DMRES_MEDIUM, "Normal"}, {DMRES_LOW, "Normal"}, {DMRES_DRAFT, "Draft"}};
inline constexpr DevmodeKeyword devmodeColors[] = {{DMCOLOR_MONOCHROME, "Monochrome"},
                                                   {DMCOLOR_COLOR, "Color"}};
inline constexpr DevmodeKeyword devmodeDuplexes[] = {{DMDUP_SIMPLEX, "OneSided"},
                                                     {DMDUP_VERTICAL, "TwoSidedLongEdge"},
                                                     {DMDUP_HORIZONTAL, "TwoSidedShortEdge"}};
inline constexpr DevmodeKeyword devmodeCollations[] = {{DMCOLLATE_FALSE, "Uncollated"},
                                                       {DMCOLLATE_TRUE, "Collated"}};
inline constexpr DevmodeKeyword devmodeColorManagements[] = {{DMICMMETHOD_NONE, SchemaKeyword::None},
                                                             {DMICMMETHOD_SYSTEM, "System"},
                                                             {DMICMMETHOD_DRIVER, "Driver"},
                                                             {DMICMMETHOD_DEVICE, "Device"}};
inline constexpr DevmodeKeyword devmodeIntents[] = {{DMICM_SATURATE, "BusinessGraphics"},
                                                    {DMICM_CONTRAST, "Photographs"},
                                                    {DMICM_COLORIMETRIC, "RelativeColorimetric"},
                                                    {DMICM_ABS_COLORIMETRIC, "AbsoluteColorimetric"}};
inline constexpr DevmodeKeyword devmodeMedia[] = {{DMMEDIA_STANDARD, "Plain"},
                                                  {DMMEDIA_TRANSPARENCY, "Transparency"},
                                                  {DMMEDIA_GLOSSY, "PhotographicGlossy"}};

/// The row of that number, or null.
template <typename Row>
const Row* FindDevmodeRow(std::span<const Row> rows, long long number) {
    const auto found = std::lower_bound(rows.begin(), rows.end(), number,
                                        [](const Row& row, long long wanted) { return row.number < wanted; });
    return found != rows.end() && found->number == number ? &*found : nullptr;
}

/// A field that names an option of one feature outright.
struct DevmodeField {
    DWORD flag;
    long long (*number)(const DEVMODEW&);
    const char* feature;
    std::span<const DevmodeKeyword> keywords;
};
inline constexpr std::array<DevmodeField, 11> devmodeFields{{
    {DM_ORIENTATION, [](const DEVMODEW& mode) -> long long { return mode.dmOrientation; }, "PageOrientation",
     devmodeOrientations},
    {DM_DEFAULTSOURCE, [](const DEVMODEW& mode) -> long long { return mode.dmDefaultSource; }, "PageInputBin",
     devmodeSources},
    {DM_DEFAULTSOURCE, [](const DEVMODEW& mode) -> long long { return mode.dmDefaultSource; }, "JobInputBin",
     devmodeSources},
    {DM_PRINTQUALITY, [](const DEVMODEW& mode) -> long long { return mode.dmPrintQuality; },
     "PageOutputQuality", devmodeQualities},
    {DM_COLOR, [](const DEVMODEW& mode) -> long long { return mode.dmColor; }, "PageOutputColor",
     devmodeColors},
    {DM_DUPLEX, [](const DEVMODEW& mode) -> long long { return mode.dmDuplex; },
     "JobDuplexAllDocumentsContiguously", devmodeDuplexes},
    {DM_COLLATE, [](const DEVMODEW& mode) -> long long { return mode.dmCollate; }, "DocumentCollate",
     devmodeCollations},
    {DM_COLLATE, [](const DEVMODEW& mode) -> long long { return mode.dmCollate; }, "JobCollateAllDocuments",
     devmodeCollations},
    {DM_ICMMETHOD, [](const DEVMODEW& mode) -> long long { return mode.dmICMMethod; }, "PageColorManagement",
     devmodeColorManagements},
    {DM_ICMINTENT, [](const DEVMODEW& mode) -> long long { return mode.dmICMIntent; },
     "PageICMRenderingIntent", devmodeIntents},
    {DM_MEDIATYPE, [](const DEVMODEW& mode) -> long long { return mode.dmMediaType; }, "PageMediaType",
     devmodeMedia},
}};

} // namespace OvPlatform
