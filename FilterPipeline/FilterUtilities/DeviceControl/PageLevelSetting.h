#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <optional>

/// A setting of a page, as it stands in the list that a filter makes of a page's exceptions.
struct PageLevelSetting {
    enum class Kind { MediaSize, MediaType, MediaColor, Sides, Tray };

    /// None for a text that is no "name=value", has a name that nobody knows, or a size that is not two
    /// numbers.
    static std::optional<PageLevelSetting> Parse(const CXString& text);

    Kind kind;
    CXString value;
    /// Of a size, in microns.
    int width = 0;
    int height = 0;
};
