#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace DataModelIds;
using enum FeatureQuestionKind;
using Writing = FeatureRule::Writing;

TEST(FeatureRuleTable, FindsEachRuleAndNoOther) {
    for (const FeatureRule& rule : GetFeatureRules()) {
        EXPECT_EQ(FindFeatureRule(rule.kind, rule.path), &rule);
        EXPECT_EQ(FindFeatureRule(rule.kind, rule.path.At(3)), &rule)
            << "an entry's position does not matter";
    }
    const FeatureRule* const anyLength = FindFeatureRule(Length, FEAT_X1_IMAGE_SHIFT);
    const struct {
        FeatureQuestionKind kind;
        FeaturePath path;
        const FeatureRule* expected;
    } rows[] = {
        {Option, FEAT_COPIES, nullptr},
        {Option, FEAT_MEDIA_COLOR, nullptr}, // only in its collection
        {Option, {FEAT_FRONT_COVER, FEAT_MEDIA_COLOR}, nullptr},
        {Option, {FEAT_MEDIA_COL, FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}, nullptr},
        {Option, FeatureRule::anyFeature, nullptr},
        {Integer, FEAT_X1_IMAGE_SHIFT, nullptr},
        {Length, FEAT_COPIES, anyLength},
        {Collection, {FEAT_MEDIA_COL, FEAT_ANNOTATION_COL}, FindFeatureRule(Collection, FEAT_MEDIA_COL)},
        {Time, FEAT_JOB_NAME, nullptr},
    };
    ASSERT_NE(anyLength, nullptr);
    for (const auto& row : rows)
        EXPECT_EQ(FindFeatureRule(row.kind, row.path), row.expected) << &row - rows;
}

// A row that leaves out what its reading needs would answer nothing, or throw at the first question.
TEST(FeatureRuleTable, HasInEachRowWhatItsReadingAndWritingNeed) {
    const auto* const dictionary = NativeXmlConfigFeatureDictionary::Instance();
    for (const FeatureRule& rule : GetFeatureRules()) {
        SCOPED_TRACE(::testing::Message() << static_cast<int>(rule.kind) << " of " << rule.path.Feature());
        const auto& places = rule.reading.places;
        const bool isOdd = rule.oddity != FeatureRule::Oddity::None;
        EXPECT_TRUE(places.front() != FeaturePlace::Nowhere || isOdd);
        EXPECT_TRUE(std::ranges::is_partitioned(
            places, [](FeaturePlace place) { return place != FeaturePlace::Nowhere; }));
        for (const FeaturePlace place : {FeaturePlace::Ticket, FeaturePlace::DocumentSettings})
            EXPECT_LE(std::ranges::count(places, place), 1);
        // The attribute bytes hide nothing, and have the last word.
        const auto* const bytes = std::ranges::find(places, FeaturePlace::AttributeBytes);
        EXPECT_TRUE(bytes == places.end() || bytes + 1 == places.end() || bytes[1] == FeaturePlace::Nowhere);
        const bool isNamed = rule.path.Feature() == FeatureRule::anyFeature ||
                             rule.path.Feature() == FEAT_START_SHEET_FROM_APPLICATION ||
                             dictionary->IsFeaturePresent(rule.path.Feature());
        EXPECT_TRUE(isNamed);
        const bool writesWords = rule.writing == Writing::TicketOption ||
                                 rule.writing == Writing::KeywordElement ||
                                 rule.writing == Writing::NameElement;
        EXPECT_TRUE(!writesWords || !rule.words.Rows().empty());
        EXPECT_TRUE(rule.writing == Writing::None || rule.kind == Option || rule.kind == Text);
    }
}

} // namespace
