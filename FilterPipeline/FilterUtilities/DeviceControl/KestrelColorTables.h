#pragma once

#include "DeviceControl/CommandRow.h"

#include <string_view>

/// The colour intents of the Kestrel family, by kind of object and source colour space.
namespace KestrelColorTables {

/// The dictionaries and feature names of the two snippets of a section: text and graphics first, then images.
struct Pair {
    std::wstring_view graphics;
    std::wstring_view graphicsFeature;
    std::wstring_view images;
    std::wstring_view imagesFeature;
};

inline constexpr Pair grayPair = {L"orvel$GrayGraphicsTransform", L"GrayText", L"orvel$GrayImagesTransform",
                                  L"GrayImages"};
inline constexpr Pair spotPair = {L"orvel$SpotGraphicsTransform", L"SpotColorText",
                                  L"orvel$SpotImagesTransform", L"SpotColorImages"};
/// Deliberate: the images' snippet sets the graphics' transform once more.
inline constexpr Pair rgbPair = {L"orvel$RGBGraphicsTransform", L"OfficeColorText",
                                 L"orvel$RGBGraphicsTransform", L"OfficeColorImages"};
/// Only where there is no intent the images' own transform is set.
inline constexpr Pair rgbPairWithoutIntent = {L"orvel$RGBGraphicsTransform", L"OfficeColorText",
                                              L"orvel$RGBImagesTransform", L"OfficeColorImages"};
inline constexpr Pair cmykPair = {L"orvel$CMYKGraphicsTransform", L"PressMatchText",
                                  L"orvel$CMYKImagesTransform", L"PressMatchImages"};
inline constexpr Pair ciePair = {L"orvel$CIEGraphicsTransform", L"CIEColorText", L"orvel$CIEImagesTransform",
                                 L"CIEColorImages"};

/// An intent in each section that has it; empty where one does not.
struct Intent {
    DataModelIds::tagValueEnum value;
    std::wstring_view option;
    std::wstring_view gray = {};
    std::wstring_view spot = {};
    std::wstring_view rgb = {};
    std::wstring_view cmyk = {};
};

namespace Detail {

constexpr Intent OfRgb(DataModelIds::tagValueEnum value, std::wstring_view intent, std::wstring_view option) {
    return {value, option, intent, intent, intent, {}};
}
constexpr Intent OfCmyk(DataModelIds::tagValueEnum value, std::wstring_view intent,
                        std::wstring_view option) {
    return {value, option, intent, intent, {}, intent};
}

} // namespace Detail

inline constexpr Intent intents[] = {
    Detail::OfRgb(DataModelIds::VAL_SOURCE_RGB_SRGB, L"Display-sRGB", L"sRGB-Display"),
    Detail::OfRgb(DataModelIds::VAL_SOURCE_RGB_SRGB_VIVID, L"Vivid", L"Vivid"),
    {DataModelIds::VAL_SOURCE_RGB_NONE, L"None", L"None", L"None", L"None", L"None"},
    {DataModelIds::VAL_SOURCE_RGB_BLACK_AND_WHITE, L"Black-and-White", {}, L"Mono-Image", L"Gray", L"Gray"},
    Detail::OfRgb(DataModelIds::VAL_SOURCE_RGB_LCD, L"Display-LCD", L"LCD-Display"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_SWOP, L"SWOP-Coated", L"SWOP-Press"),
    // Deliberate: the device knows it by this spelling.
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_COMMERCIAL, L"Commerical-Coated", L"Commercial"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_SNAP, L"SNAP-Newsprint", L"SNAP-Press"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_EURO_SCALE, L"Euroscale-Coated", L"Euroscale-Press"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_JAPAN_COLOR, L"JapanColor", L"Japan-Color"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_ISO_COATED, L"ISO-Coated", L"ISO-Coated"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_CMYK_ISO_UNCOATED, L"ISO-Uncoated", L"ISO-Uncoated"),
    Detail::OfCmyk(DataModelIds::VAL_SOURCE_SPOT_SPOT_COLOR, L"SpotColor", L"Spot-Color"),
    {DataModelIds::VAL_SOURCEG_GRAY_MONOCHROME_IMAGES, L"Black-and-White", L"Mono-Image", {}, {}, {}},
};

inline constexpr Intent renderings[] = {
    {DataModelIds::VAL_OUTPUT_RENDERING_SATURATION, L"Saturation", L"CIE-Saturation"},
    {DataModelIds::VAL_OUTPUT_RENDERING_RELATIVE_COLORIMETRIC, L"Colorimetric", L"CIE-Colorimetric"},
    {DataModelIds::VAL_OUTPUT_RENDERING_PERCEPTUAL, L"Perceptual", L"CIE-Perceptual"},
};

inline constexpr CommandRow embeddedProfiles[] = {
    {DataModelIds::VAL_CIE_PROFILES_ALWAYS, L"Always",
     L" userdict /orvel$automaticCIE1Limit 0.0 put\n userdict /orvel$automaticCIE3Limit 0.0 put\n "
     L"userdict /orvel$automaticCIE4Limit 0.0 put"},
    {DataModelIds::VAL_CIE_PROFILES_NEVER, L"Never",
     L" userdict /orvel$automaticCIE1Limit 1e30 put\n userdict /orvel$automaticCIE3Limit 1e30 put\n "
     L"userdict /orvel$automaticCIE4Limit 1e30 put"},
    {DataModelIds::VAL_CIE_PROFILES_AUTOMATIC, L"Automatic",
     L" userdict /orvel$automaticCIE1Limit 1.0 put\n userdict /orvel$automaticCIE3Limit 1.0 put\n "
     L"userdict /orvel$automaticCIE4Limit 1.0 put"},
};

} // namespace KestrelColorTables
