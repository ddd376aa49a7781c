#include "Media/MediaUtilities.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"

#include <string_view>

using namespace DataModelIds;

namespace {

/// Whether six pages, two in one direction and three in the other, fit a sheet better on their side.
bool DoSixPagesTurn(int width, int height) { return width * 0.5 > height / 3.0; }

} // namespace

tagValueEnum MediaUtilities::GetValueEnumFromNUpCount(int count) {
    switch (count) {
    case 2:
        return VAL_PAGE_LAYOUT_NUP_2;
    case 4:
        return VAL_PAGE_LAYOUT_NUP_4;
    case 6:
        return VAL_PAGE_LAYOUT_NUP_6;
    case 9:
        return VAL_PAGE_LAYOUT_NUP_9;
    case 16:
        return VAL_PAGE_LAYOUT_NUP_16;
    default:
        return VAL_PAGE_LAYOUT_NUP_1;
    }
}

tagValueEnum MediaUtilities::GetValueEnumFromPageOrientation(const wchar_t* name) {
    const bool isLandscape =
        name != nullptr && std::wstring_view(name) == PrintSchema::Keywords::PageOrientation::Landscape;
    return isLandscape ? VAL_MS_ORIENTATION_LANDSCAPE : VAL_MS_ORIENTATION_PORTRAIT;
}

bool MediaUtilities::DoesNupNeedInternalRotate90(tagValueEnum nUp, int width, int height) {
    return nUp == VAL_PAGE_LAYOUT_NUP_2 || (nUp == VAL_PAGE_LAYOUT_NUP_6 && DoSixPagesTurn(width, height));
}

tagValueEnum MediaUtilities::GetEffectiveOrientation(tagValueEnum orientation, tagValueEnum nUp,
                                                     tagValueEnum booklet, int width, int height) {
    if (booklet != VAL_BOOKLET_ON && !DoesNupNeedInternalRotate90(nUp, width, height)) return orientation;
    return orientation == VAL_MS_ORIENTATION_PORTRAIT ? VAL_MS_ORIENTATION_LANDSCAPE
                                                      : VAL_MS_ORIENTATION_PORTRAIT;
}
