#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"

/// Rules about several pages on a sheet and their orientation. Widths and heights in any unit, the same for
/// both.
class OV_FILTER_UTILITIES_API MediaUtilities {
public:
    /// The page layout of so many pages per sheet; that of one page for a number that is no layout.
    static DataModelIds::tagValueEnum GetValueEnumFromNUpCount(int count);
    /// Of the ticket's keyword without prefix; portrait for any other text than "Landscape".
    static DataModelIds::tagValueEnum GetValueEnumFromPageOrientation(const wchar_t* name);
    /// The orientation of the sheet for pages of an orientation: booklets, two pages, and six pages on sheets
    /// that need it, turn it. Deliberate: what is neither orientation turns to portrait.
    static DataModelIds::tagValueEnum GetEffectiveOrientation(DataModelIds::tagValueEnum orientation,
                                                              DataModelIds::tagValueEnum nUp,
                                                              DataModelIds::tagValueEnum booklet, int width,
                                                              int height);
    /// Whether the pages of a layout stand turned on a sheet of this size.
    static bool DoesNupNeedInternalRotate90(DataModelIds::tagValueEnum nUp, int width, int height);
};
