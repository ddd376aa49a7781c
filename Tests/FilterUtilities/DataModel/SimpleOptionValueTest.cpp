#include "Support/Rows.h"

#include <DataModel/FeatureIds.h>
#include <DataModel/SimpleOptionValue.h>

#include <gtest/gtest.h>

#include <cstring>

using namespace DataModelIds;

TEST(SimpleOptionValue, IsSpecifiedByItsValueUnlessToldOtherwise) {
    const Rows<SimpleOptionValue, bool, tagValueEnum, tagValueEnum> cases{
        {{}, false, VAL_UNSPECIFIED, VAL_UNSPECIFIED},
        {{VAL_SIDES_ONE_SIDED}, true, VAL_SIDES_ONE_SIDED, VAL_SIDES_ONE_SIDED},
        {{false, VAL_PAGE_LAYOUT_NUP_1}, false, VAL_PAGE_LAYOUT_NUP_1, VAL_UNSPECIFIED},
        {{true, VAL_UNSPECIFIED}, true, VAL_UNSPECIFIED, VAL_UNSPECIFIED},
    };
    for (const auto& [value, isSpecified, stored, withState] : cases) {
        EXPECT_EQ(value.IsSpecified(), isSpecified);
        EXPECT_EQ(value.GetValue(), stored);
        EXPECT_EQ(value.GetValuePlusSpecifiedState(), withState);
    }
    const SimpleOptionValue known(false, VAL_PAGE_LAYOUT_NUP_1);
    EXPECT_EQ(SimpleOptionValue(), SimpleOptionValue(VAL_UNSPECIFIED));
    EXPECT_NE(known, SimpleOptionValue());
    EXPECT_NE(known, SimpleOptionValue(VAL_PAGE_LAYOUT_NUP_1));
}

TEST(SimpleOptionValue, NeverBecomesASpecifiedNothing) {
    SimpleOptionValue value;
    value.SetIsSpecified(true);
    EXPECT_FALSE(value.IsSpecified());

    value.SetValue(VAL_JOB_TYPE_NORMAL_PRINT);
    EXPECT_TRUE(value.IsSpecified());
    value.SetIsSpecified(false);
    EXPECT_EQ(value.GetValue(), VAL_JOB_TYPE_NORMAL_PRINT);
    value.SetIsSpecified(true);
    EXPECT_TRUE(value.IsSpecified());
    value.SetValue(VAL_UNSPECIFIED);
    EXPECT_FALSE(value.IsSpecified());
}

// It crosses library boundaries by value: the flag first, then the value, nothing else.
TEST(SimpleOptionValue, KeepsItsLayout) {
    static_assert(sizeof(SimpleOptionValue) == 8);
    const SimpleOptionValue value(true, VAL_SIDES_ONE_SIDED);
    unsigned char bytes[sizeof value];
    std::memcpy(bytes, static_cast<const void*>(&value), sizeof value);
    EXPECT_EQ(bytes[0], 1);
    tagValueEnum stored{};
    std::memcpy(&stored, bytes + 4, sizeof stored);
    EXPECT_EQ(stored, VAL_SIDES_ONE_SIDED);
}

// Stored jobs hold these numbers: a renumbered enumerator is a fault that no compiler sees.
TEST(DataModelIds, KeepTheirNumbers) {
    const Rows<int, int> cases{
        {FEAT_MS_ORIENTATION, 3},
        {FEAT_AL_HANDLER, 1141},
        {FEAT_START_SHEET_FROM_APPLICATION, 390},
        {FEAT_BOOKLET_MAKING_TYPE, 90001},
        {FEAT_TRAPPING, 90037},
        {VAL_CIE_PROFILES_ALWAYS, 90038},
        {VAL_UNSPECIFIED, 5001},
        {VAL_AL_HANDLER_DISABLED, 11508},
        {VAL_PDL_XPS, 7364},
        {VAL_CPSS_FINISHING_6300, 6300},
        {VAL_CREATOR_NAME_WINDOWS_PSA_PRINT, 8860},
        {VAL_INPUT_TRAY_MANUAL, 9163},
        {VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT, 6807},
    };
    for (const auto& [identifier, number] : cases)
        EXPECT_EQ(identifier, number);
    static_assert(sizeof(tagFeatureEnum) == 4 && sizeof(tagValueEnum) == 4);
}
