#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "Media/MediaSizeRecord.h"

#include <span>

/// The paper sizes that the driver knows by name. Constant, for all threads.
class OV_FILTER_UTILITIES_API MediaSizeTable {
public:
    MediaSizeTable() = delete;

    /// In the order in which they are searched.
    static std::span<const MediaSizeRecord> GetRecords() noexcept;

    /// The first record whose nominal size differs from the given one, in microns, by less than 100 either
    /// way; null if there is none. A size on its side is another size.
    static const MediaSizeRecord* FindBySize(int width, int height) noexcept;
    /// The same among the records of one class.
    static const MediaSizeRecord* FindBySize(int width, int height, MediaSizeClass mediaClass) noexcept;
};
