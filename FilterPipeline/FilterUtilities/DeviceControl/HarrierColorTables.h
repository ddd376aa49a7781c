#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <string_view>

/// The colour intents of the Harrier family, by source colour space.
namespace HarrierColorTables {

/// The two snippets of a colour space: their slots in the device, and their feature names. That of the images
/// is spelled in two ways, of which each intent has one.
struct Section {
    DataModelIds::tagFeatureEnum feature;
    std::wstring_view graphicsSlot;
    std::wstring_view imagesSlot;
    std::wstring_view graphicsFeature;
    std::wstring_view imagesFeature;
    std::wstring_view imagesShortFeature;
    unsigned bit; // in Intent::sections
};

inline constexpr unsigned spot = 1;
inline constexpr unsigned rgb = 2;
inline constexpr unsigned cmyk = 4;

inline constexpr Section sections[] = {
    {DataModelIds::FEAT_SOURCE_SPOT_COLOR, L"5", L"6", L"Spot Text and Graphics Color Correction",
     L"Spot Images Color Correction", L"Spot Images Correction", spot},
    {DataModelIds::FEAT_SOURCE_RGB_COLOR, L"1", L"2", L"RGB Text and Graphics Color Correction",
     L"RGB Images Color Correction", L"RGB Images Correction", rgb},
    {DataModelIds::FEAT_SOURCE_CMYK_COLOR, L"3", L"4", L"CMYK Text and Graphics Color Correction",
     L"CMYK Images Color Correction", L"CMYK Images Correction", cmyk},
};

struct Intent {
    DataModelIds::tagValueEnum value;
    std::wstring_view name;
    unsigned sections; // that have it
    bool isShort;      // whether the images' feature name is
};

inline constexpr Intent intents[] = {
    {DataModelIds::VAL_SOURCE_RGB_SRGB, L"Display-sRGB", spot | rgb, false},
    {DataModelIds::VAL_SOURCE_RGB_SRGB_VIVID, L"Vivid", spot | rgb, false},
    {DataModelIds::VAL_SOURCE_RGB_NONE, L"TalonCMYK", spot | rgb | cmyk, false},
    {DataModelIds::VAL_SOURCE_RGB_BLACK_AND_WHITE, L"Gray", spot | rgb | cmyk, false},
    {DataModelIds::VAL_SOURCE_RGB_LCD, L"Display-LCD", spot | rgb, false},
    {DataModelIds::VAL_SOURCE_CMYK_SWOP, L"SWOP-Coated", spot | cmyk, false},
    {DataModelIds::VAL_SOURCE_CMYK_COMMERCIAL, L"Commercial-Coated", spot | cmyk, true},
    {DataModelIds::VAL_SOURCE_CMYK_SNAP, L"SNAP-Newsprint", spot | cmyk, false},
    {DataModelIds::VAL_SOURCE_CMYK_EURO_SCALE, L"Euroscale-Coated", spot | cmyk, true},
    {DataModelIds::VAL_SOURCE_CMYK_JAPAN_COLOR, L"JapanColor", spot | cmyk, true},
    {DataModelIds::VAL_SOURCE_CMYK_ISO_COATED, L"ISO-Coated", spot | cmyk, true},
    {DataModelIds::VAL_SOURCE_CMYK_ISO_UNCOATED, L"ISO-Uncoated", spot | cmyk, true},
    {DataModelIds::VAL_SOURCE_SPOT_SPOT_COLOR, L"SpotColor", spot, true},
};
/// Of whatever has no row in a section.
inline constexpr Intent automatic = {DataModelIds::VAL_UNSPECIFIED, L"Automatic", spot | rgb | cmyk, true};

} // namespace HarrierColorTables
