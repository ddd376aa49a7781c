#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <cstddef>

/// Where something stands below the root of a document.
struct ElementPlace {
    /// How many elements stand before it, among the children of the root.
    std::size_t elementsBefore = 0;
    /// The first element inside it is meant.
    bool isInner = false;
};

/// The line, counted from 1, of the element at that place: that on which its start tag ends; or of text that
/// stands in its stead. The line of the outer element where that has none inside; 0 where there is nothing,
/// or where it cannot be found, which is reported. The document tree knows no lines, so the text is read as
/// events once more, up to there.
[[nodiscard]] int FindElementLine(const CXString& xml, const ElementPlace& place);
