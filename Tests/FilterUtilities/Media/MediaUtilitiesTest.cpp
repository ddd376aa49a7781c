#include "Support/Rows.h"

#include <Finishing/OcptImportAndExport.h>
#include <Media/MediaUtilities.h>

#include <gtest/gtest.h>

using namespace DataModelIds;

namespace {

TEST(MediaUtilities, KnowsLayoutsAndOrientationsByName) {
    const std::pair<int, int> layouts[] = {{2, 7241}, {4, 7242}, {6, 7243},  {9, 7244},  {16, 7245},
                                           {1, 7240}, {3, 7240}, {17, 7240}, {-2, 7240}, {0, 7240}};
    for (const auto& [count, value] : layouts)
        EXPECT_EQ(MediaUtilities::GetValueEnumFromNUpCount(count), value) << count;

    const std::pair<const wchar_t*, int> orientations[] = {{L"Portrait", 5010},  {L"Landscape", 5011},
                                                           {L"landscape", 5010}, {L"ReverseLandscape", 5010},
                                                           {L"", 5010},          {nullptr, 5010}};
    for (const auto& [name, value] : orientations)
        EXPECT_EQ(MediaUtilities::GetValueEnumFromPageOrientation(name), value);
}

TEST(MediaUtilities, TurnsSheetsForBookletsAndSomeLayouts) {
    constexpr tagValueEnum portrait = VAL_MS_ORIENTATION_PORTRAIT;
    constexpr tagValueEnum landscape = VAL_MS_ORIENTATION_LANDSCAPE;
    const Rows<tagValueEnum, tagValueEnum, int, int, bool, bool> cases{
        {VAL_PAGE_LAYOUT_NUP_1, VAL_BOOKLET_OFF, 215900, 279400, false, false},
        {VAL_PAGE_LAYOUT_NUP_1, VAL_BOOKLET_ON, 215900, 279400, true, false},
        {VAL_PAGE_LAYOUT_NUP_2, VAL_BOOKLET_ON, 215900, 279400, true, true}, // once only
        {VAL_PAGE_LAYOUT_NUP_4, VAL_UNSPECIFIED, 279400, 215900, false, false},
        {VAL_PAGE_LAYOUT_NUP_6, VAL_UNSPECIFIED, 279400, 215900, true, true},
        {VAL_PAGE_LAYOUT_NUP_6, VAL_UNSPECIFIED, 210000, 900000, false, false},
        {VAL_PAGE_LAYOUT_NUP_6, VAL_UNSPECIFIED, 2, 3, false, false}, // just fits: 1 and 1
        {VAL_PAGE_LAYOUT_NUP_6, VAL_UNSPECIFIED, 3, 4, true, true},   // by a hair that integers would lose
    };
    for (const auto& row : cases) {
        const auto& [layout, booklet, width, height, isTurned, isRotatedInside] = row;
        SCOPED_TRACE(&row - cases.data());
        for (const auto effective :
             {&MediaUtilities::GetEffectiveOrientation, &OcptImportAndExport::GetEffectiveOrientation}) {
            EXPECT_EQ(effective(portrait, layout, booklet, width, height), isTurned ? landscape : portrait);
            EXPECT_EQ(effective(landscape, layout, booklet, width, height), isTurned ? portrait : landscape);
            EXPECT_EQ(effective(VAL_UNSPECIFIED, layout, booklet, width, height),
                      isTurned ? portrait : VAL_UNSPECIFIED);
        }
        for (const auto doesRotate : {&MediaUtilities::DoesNupNeedInternalRotate90,
                                      &OcptImportAndExport::DoesNupNeedInternalRotate90})
            EXPECT_EQ(doesRotate(layout, width, height), isRotatedInside);
    }
}

} // namespace
