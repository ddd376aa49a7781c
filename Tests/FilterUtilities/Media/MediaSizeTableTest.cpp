#include "Support/Rows.h"

#include <Media/MediaSizeTable.h>
#include <Media/PageMediaSizePtPcHelper.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <regex>
#include <set>
#include <string>

using namespace DataModelIds;

namespace {

int Microns(const std::wstring& number, int unit) {
    return static_cast<int>(std::lround(std::stod(number) * unit));
}

// What a keyword itself says of the size must be what its row says.
TEST(MediaSizeTable, RowsAreWhatTheirKeywordsSay) {
    const auto records = MediaSizeTable::GetRecords();
    EXPECT_EQ(records.size(), 94U);
    std::set<tagValueEnum> values;
    std::set<std::wstring_view> keywords;
    int forms = 0;
    int measured = 0;
    const std::wregex dimensions(L"[a-zA-Z](?:8K|16K)?([0-9.]+)x([0-9.]+)");
    for (const MediaSizeRecord& record : records) {
        const std::wstring keyword(record.keyword);
        SCOPED_TRACE(std::string(keyword.begin(), keyword.end()));
        EXPECT_TRUE(values.insert(record.value).second);
        EXPECT_TRUE(keywords.insert(record.keyword).second);
        EXPECT_TRUE(keyword.starts_with(L"psk:") || keyword.starts_with(L"ok:"));
        EXPECT_LE(record.keyword.size(), 41U);
        EXPECT_LE(record.formName.size(), 39U);
        forms += record.formName.empty() ? 0 : 1;
        EXPECT_LE(record.width, record.height);
        // At most a pixel is lost, and no more than half a micron won.
        EXPECT_LT(record.width - record.deviceWidth, 22);
        EXPECT_LT(record.height - record.deviceHeight, 22);
        EXPECT_LE(record.deviceWidth, record.width);
        EXPECT_LE(record.deviceHeight, record.height);

        std::wsmatch match;
        if (keyword.find(L"2Up") != std::wstring::npos || !std::regex_search(keyword, match, dimensions))
            continue;
        const int unit = keyword.find(L"Metric") != std::wstring::npos ? 1000 : 25400;
        EXPECT_EQ(record.width, Microns(match[1], unit));
        EXPECT_EQ(record.height, Microns(match[2], unit));
        ++measured;
    }
    EXPECT_EQ(forms, 29);
    EXPECT_EQ(measured, 45);
}

TEST(MediaSizeTable, TellingRowsHoldAllTheirFacts) {
    using enum MediaSizeClass;
    const Rows<std::wstring_view, int, std::pair<int, int>, MediaSizeClass, std::wstring_view> cases{
        {L"psk:NorthAmericaLetter", 6430, {215900, 279400}, Sheet, L"LETTER"},
        {L"psk:ISOA4", 6436, {209995, 296990}, Sheet, L"A4"},
        {L"psk:NorthAmericaNumber10Envelope", 6441, {104775, 241300}, Envelope, L"ENV_10"},
        {L"ok:OtherMetricC5EnvelopeOpenCatalog", 6503, {161989, 261980}, Envelope, L""},
    };
    const auto records = MediaSizeTable::GetRecords();
    for (const auto& [keyword, value, deviceSize, mediaClass, formName] : cases) {
        SCOPED_TRACE(value);
        const auto found = std::ranges::find(records, keyword, &MediaSizeRecord::keyword);
        ASSERT_NE(found, records.end());
        EXPECT_EQ(found->value, value);
        EXPECT_EQ(std::pair(found->deviceWidth, found->deviceHeight), deviceSize);
        EXPECT_EQ(found->mediaClass, mediaClass);
        EXPECT_EQ(found->formName, formName);
    }
}

TEST(MediaSizeTable, FindsSizesWithinTheTolerance) {
    constexpr auto untouched = static_cast<tagValueEnum>(-1);
    // value: -1: none
    const Rows<int, int, int, bool> cases{
        {209901, 297099, 6436, false}, {209900, 297000, -1, false},
        {210000, 297100, -1, false},   {297000, 210000, -1, false},
        {114000, 162000, 6445, true},  {152400, 228600, 6466, true}, // a postcard and an envelope
        {162000, 229000, 6443, true},  {228600, 304800, 6497, true}, // an envelope before two-up
        {INT_MAX, INT_MAX, -1, false}, {INT_MIN, INT_MIN, -1, false},
    };
    for (const auto& [width, height, wantedValue, isEnvelope] : cases) {
        tagValueEnum value = untouched;
        EXPECT_EQ(PageMediaSizePtPcHelper::GetValueEnumForPageSizeBasedOnDims(width, height, value),
                  wantedValue != untouched)
            << width << " x " << height;
        EXPECT_EQ(value, wantedValue) << width << " x " << height;
        EXPECT_EQ(PageMediaSizePtPcHelper::IsEnvelopeSize(width, height), isEnvelope)
            << width << " x " << height;
    }
}

} // namespace
