#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <filterpipeline.h>
#include <gdiplus.h>
#include <msxml6.h>

#include <string>
#include <string_view>

/// What the root element of a page's markup says.
struct OV_FILTER_UTILITIES_API PageRoot {
    Gdiplus::SizeF size = {}; // XPS units
    std::wstring prefix = {}; // of the page's own elements, with its colon; often empty

    /// Of the first element that a SAX reader tells of. Throws CPExceptionInvalidArgument, with words, if it
    /// is not that of a page, or has no size.
    [[nodiscard]] static PageRoot Of(std::wstring_view uri, std::wstring_view localName,
                                     std::wstring_view qualifiedName, ISAXAttributes& attributes);
    /// Reads no further than that element. Throws CPComException too, for a page that cannot be read.
    [[nodiscard]] static PageRoot Read(IFixedPage& page);
};
