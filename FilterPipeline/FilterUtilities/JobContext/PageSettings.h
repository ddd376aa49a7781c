#pragma once

// What a ticket says of pages, sheets and scaling, as filters get it. A record begins with what holds where
// the ticket says nothing.

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"

#include <windows.h>
#include <gdiplus.h>

#include <cstdint>

namespace PrintSchema {

namespace PageOrientation {

enum class EOrientationOption : std::int32_t { Landscape, Portrait, ReverseLandscape, ReversePortrait };

} // namespace PageOrientation

namespace PageMediaSize {

/// The sheet that a page is made for, in microns.
struct OV_FILTER_UTILITIES_API PageMediaSizeData {
    std::int32_t width = 215'900;
    std::int32_t height = 279'400;

    /// In 96ths of an inch.
    [[nodiscard]] Gdiplus::SizeF GetPageSizeInXpsUnits() const;
};

} // namespace PageMediaSize

namespace OutputPaperSize {

/// The sheet that comes out, in microns.
struct OutputPaperSizeData {
    std::int32_t width = 215'900;
    std::int32_t height = 279'400;
    bool isSpecified = false; ///< a sheet of its own is chosen; otherwise it is that of the page
};

} // namespace OutputPaperSize

namespace PageScaling {

/// In the order of the ticket's keywords.
enum class EScalingType : std::int32_t { FitApplicationMediaSizeToPageMediaSize = 5, None = 6 };

struct PageScalingData {
    EScalingType scalingType = EScalingType::None;
    std::int32_t scalingWord = 0;  ///< not set by the library
    std::int32_t scaleWidth = 100; ///< percent
    std::int32_t scaleHeight = 100;
    std::int32_t offsetAlignment = 3; ///< place in the ticket's keywords: the centre
    bool isFitToSize = false;
    DataModelIds::tagValueEnum scaleToFit = static_cast<DataModelIds::tagValueEnum>(7261); ///< 7260: on
    DataModelIds::tagValueEnum scalingValue =
        static_cast<DataModelIds::tagValueEnum>(5600); ///< not set by the library
};

} // namespace PageScaling

} // namespace PrintSchema
