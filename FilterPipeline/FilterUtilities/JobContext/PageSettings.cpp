#include "JobContext/PageSettings.h"

namespace PrintSchema::PageMediaSize {

Gdiplus::SizeF PageMediaSizeData::GetPageSizeInXpsUnits() const {
    // Deliberate: a hundredth, and no more, of the exact 264.5833.
    constexpr float micronsPerXpsUnit = 264.58F;
    return {static_cast<float>(width) / micronsPerXpsUnit, static_cast<float>(height) / micronsPerXpsUnit};
}

} // namespace PrintSchema::PageMediaSize
