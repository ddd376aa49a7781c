#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <gtest/gtest.h>

namespace {

using namespace DataModelIds;
using enum FeatureQuestionKind;

TEST(FeatureRuleTable, FindsEachRuleAndNoOther) {
    for (const FeatureRule& rule : GetFeatureRules()) {
        EXPECT_EQ(FindFeatureRule(rule.kind, rule.path), &rule);
        EXPECT_EQ(FindFeatureRule(rule.kind, rule.path.At(3)), &rule)
            << "an entry's position does not matter";
    }
    const FeatureRule* const anyLength = FindFeatureRule(Length, FEAT_LIGHTNESS);
    const struct {
        FeatureQuestionKind kind;
        FeaturePath path;
        const FeatureRule* expected;
    } rows[] = {
        {Option, FEAT_MEDIA_COLOR, nullptr}, // only in its collection
        {Option, {FEAT_MEDIA_COL, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}, nullptr},
        {Option, FeatureRule::anyFeature, nullptr},
        {Integer, FEAT_X1_IMAGE_SHIFT, nullptr},
        {Length, FEAT_COPIES, anyLength},
        {Collection, {FEAT_MEDIA_COL, FEAT_ANNOTATION_COL}, FindFeatureRule(Collection, FEAT_MEDIA_COL)},
    };
    ASSERT_NE(anyLength, nullptr);
    for (const auto& row : rows)
        EXPECT_EQ(FindFeatureRule(row.kind, row.path), row.expected) << &row - rows;
}

// A place would know no name for it, or throw at the first question.
TEST(FeatureRuleTable, HasNoFeatureWithoutNames) {
    const auto* const dictionary = NativeXmlConfigFeatureDictionary::Instance();
    for (const FeatureRule& rule : GetFeatureRules()) {
        const bool isNamed = rule.path.Feature() == FeatureRule::anyFeature ||
                             rule.path.Feature() == FEAT_START_SHEET_FROM_APPLICATION ||
                             dictionary->IsFeaturePresent(rule.path.Feature());
        EXPECT_TRUE(isNamed) << static_cast<int>(rule.kind) << " of " << rule.path.Feature();
    }
}

} // namespace
