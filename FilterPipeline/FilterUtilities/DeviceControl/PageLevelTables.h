#pragma once

/// What a page's settings are called by devices and by interpreters.
namespace PageLevelTables {

struct Name {
    const wchar_t* from;
    const wchar_t* to;
};

/// From Print Schema to the device.
inline constexpr Name mediaTypes[] = {
    {L"Bond", L"bond"},
    {L"CardStock", L"cardstock"},
    {L"EnvelopePlain", L"envelope"},
    {L"TShirtTransfer", L"fabric-transfer"},
    {L"TabStockFull", L"full-cut-tabs"},
    {L"Label", L"labels"},
    {L"Photographic", L"photographic"},
    {L"TabStockPreCut", L"pre-cut-tabs"},
    {L"Plain", L"stationery"},
    {L"Transparency", L"transparency"},
};
inline constexpr Name mediaColors[] = {
    {L"Blue", L"blue"},   {L"GoldenRod", L"goldenrod"}, {L"Gray", L"gray"},     {L"Green", L"green"},
    {L"Ivory", L"ivory"}, {L"NoColor", L"no-color"},    {L"Orange", L"orange"}, {L"Pink", L"pink"},
    {L"White", L"white"}, {L"Yellow", L"yellow"},       {L"Red", L"red"},
};

/// From the device's name to the dictionary entry, for products that say nothing of a colour.
inline constexpr Name colorEntries[] = {
    {L"system-default", L"/MediaColor (System-Default)"},
    {L"blue", L"/MediaColor (Blue)"},
    {L"buff", L"/MediaColor (Buff)"},
    {L"custom1", L"/MediaColor (Custom1)"},
    {L"custom2", L"/MediaColor (Custom2)"},
    {L"custom3", L"/MediaColor (Custom3)"},
    {L"custom4", L"/MediaColor (Custom4)"},
    {L"custom5", L"/MediaColor (Custom5)"},
    {L"custom6", L"/MediaColor (Custom6)"},
    {L"custom7", L"/MediaColor (Custom7)"},
    {L"goldenrod", L"/MediaColor (Goldenrod)"},
    {L"gray", L"/MediaColor (Gray)"},
    {L"green", L"/MediaColor (Green)"},
    {L"ivory", L"/MediaColor (Ivory)"},
    {L"no-color", L"/MediaColor (Clear)"},
    {L"orange", L"/MediaColor (Orange)"},
    {L"other", L"/MediaColor (Other)"},
    {L"pink", L"/MediaColor (Pink)"},
    {L"red", L"/MediaColor (Red)"},
    {L"use-ready", L"/MediaColor (Unspecified)"},
    {L"white", L"/MediaColor (White)"},
    {L"yellow", L"/MediaColor (Yellow)"},
};

inline constexpr Name sides[] = {
    {L"one-sided", L"/Duplex false /Tumble false"},
    {L"two-sided-long-edge", L"/Duplex true /Tumble false"},
    {L"two-sided-short-edge", L"/Duplex true /Tumble true"},
};

/// In points. In the order in which they are searched.
struct SizeName {
    const wchar_t* name;
    int width;
    int height;
};
inline constexpr SizeName sizeNames[] = {
    {L"Letter", 612, 792},
    {L"A4", 595, 842},
    {L"Tabloid", 792, 1224},
    {L"Legal", 612, 1008},
    {L"Statement", 396, 612},
    {L"Executive", 522, 756},
    {L"A3", 842, 1191},
    {L"A5", 420, 595},
    {L"B4", 728, 1032},
    {L"B5", 516, 728},
    {L"FanFoldGermanLegal", 612, 936},
    {L"EnvC5", 459, 649},
    {L"EnvC4", 649, 918},
    {L"ISOB4", 709, 1001},
    {L"Postcard", 283, 420},
    {L"9x11", 648, 792},
    {L"TabloidExtra", 864, 1296},
    {L"A6", 298, 420},
    {L"DoublePostcardRotated", 420, 567},
    {L"B6", 363, 516},
    {L"SRA3", 907, 1276},
    {L"223x297mm", 632, 842},
    {L"5x7", 360, 504},
    {L"8x10", 576, 720},
    {L"4x6Postcard", 288, 432},
    {L"6x9", 432, 648},
    {L"8x13", 576, 936},
    {L"11x15", 792, 1080},
    {L"12x19", 864, 1368},
    {L"12.5x18.5", 900, 1332},
    {L"12.6x19.2", 907, 1382},
    {L"13x18", 936, 1296},
    {L"13x19", 936, 1368},
    {L"SpanishXE", 609, 893},
    {L"KAI8", 757, 1100},
    {L"8K", 765, 1106},
    {L"KAI16", 550, 757},
    {L"16K", 553, 765},
    {L"226x310mm", 641, 879},
    {L"310x432mm", 879, 1225},
    {L"328x453mm", 930, 1284},
    {L"jp-240x332-envelope-kakugata-2-gou", 680, 941},
    {L"EnvChou3", 340, 666},
    {L"ISOB3", 1001, 1417},
    {L"FolioPac", 666, 846},
};

} // namespace PageLevelTables
