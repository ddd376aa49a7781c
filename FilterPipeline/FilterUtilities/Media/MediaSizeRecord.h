#pragma once

#include "DataModel/ValueIds.h"

#include <cstdint>
#include <string_view>

enum class MediaSizeClass : std::int32_t { Sheet = 25001, Envelope = 25002 };

/// A paper size in its three views: the identifier of the data model, the size, and the name of the Print
/// Schema option. Sizes are in microns, portrait.
struct MediaSizeRecord {
    DataModelIds::tagValueEnum value;
    std::int32_t width; // nominal
    std::int32_t height;
    MediaSizeClass mediaClass;
    std::wstring_view keyword; // with its prefix: "psk:" for public names, "ok:" for the driver's own
    std::int32_t deviceWidth;  // in whole steps of 1/1200 inch
    std::int32_t deviceHeight;
    std::wstring_view formName; // in capitals; empty for most
};
