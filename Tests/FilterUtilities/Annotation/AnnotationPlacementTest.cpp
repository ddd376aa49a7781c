// Where an annotation stands, what it says on a page, and how its text is laid out.

#include "Support/Rows.h"

#include <Annotation/AnnotationNumbering.h>
#include <Annotation/AnnotationPlacement.h>
#include <Annotation/AnnotationTextLayout.h>

#include <gtest/gtest.h>

using namespace DataModelIds;

namespace {

TEST(AnnotationPlacement, IsByTheEdgesOrAroundTheMiddle) {
    struct Row {
        int flags;
        float x, y;
        int angle;
    };
    // A page of 800 by 1000 and something of 100 by 50, 10 and 20 from the edges; half an inch from the
    // middle.
    const Row rows[] = {{0, 398, 427, 315}, {1, 10, 495, 0}, {2, 690, 495, 0}, {4, 360, 20, 0},
                        {8, 360, 930, 0},   {5, 10, 20, 0},  {10, 690, 930, 0}};
    for (const Row& row : rows) {
        AnnotationElementSettings element;
        element.angle = 315 + 720;
        element.offsetFromCenterX = 0.5F;
        element.offsetFromCenterY = -0.5F;
        element.justificationFlags = row.flags;
        element.justificationX = 10;
        element.justificationY = 20;
        const AnnotationPlacement placement = PlaceAnnotation(element, {800, 1000}, {100, 50});
        EXPECT_FLOAT_EQ(placement.box.X, row.x) << row.flags;
        EXPECT_FLOAT_EQ(placement.box.Y, row.y) << row.flags;
        EXPECT_EQ(placement.angle, row.angle);
        EXPECT_FLOAT_EQ(placement.box.Width + placement.box.Height, 150);
    }
}

TEST(AnnotationNumbering, CountsUpTheLastDigits) {
    const Rows<tagValueEnum, std::wstring, unsigned, std::wstring> cases{
        {VAL_ANNOTATION_TYPE_TEXT, L"Page 7", 5, L"Page 7"},
        {VAL_ANNOTATION_TYPE_PAGE_NUMBERS, L"", 0, L"1"},
        {VAL_ANNOTATION_TYPE_PAGE_NUMBERS, L"Page ", 98, L"Page 99"},
        {VAL_ANNOTATION_TYPE_PAGE_NUMBERS, L"2 of 12 sheets", 1, L"2 of 13 sheets"},
        {VAL_ANNOTATION_TYPE_BATES_STAMP, L"OV-", 0, L"OV-000001"},
        {VAL_ANNOTATION_TYPE_BATES_STAMP, L"OV-0099", 1, L"OV-0100"},
        {VAL_ANNOTATION_TYPE_BATES_STAMP, L"99", 4'294'967'295U, L"4294967394"},
        {VAL_ANNOTATION_TYPE_BATES_STAMP, std::wstring(60, L'9'), 1, L'1' + std::wstring(60, L'0')},
    };
    for (const auto& [type, text, page, wanted] : cases) {
        AnnotationElementSettings element;
        element.type = type;
        element.text = CXString(text.c_str());
        EXPECT_EQ(AnnotationTextOfPage(element, page).View(), wanted);
    }
}

TEST(AnnotationTextLayout, HasALineForEachAndOnlyWhatMarkupCanHold) {
    const TextShaper shaper(L"DejaVu Sans", DEFAULT_CHARSET);
    const AnnotationTextLayout one = LayOutText(shaper, L"wide", 30);
    const AnnotationTextLayout two = LayOutText(shaper, L"wide\r\n\nx", 30);
    EXPECT_FLOAT_EQ(one.emSize, 40);
    ASSERT_EQ(two.lines.size(), 3u);
    EXPECT_TRUE(two.lines[1].runs.empty());
    EXPECT_FLOAT_EQ(two.size.Width, one.size.Width);
    EXPECT_FLOAT_EQ(two.size.Height, 3 * one.size.Height);
    EXPECT_FLOAT_EQ(two.size.Height, 3 * two.lineHeight);
    EXPECT_GT(one.ascent, one.lineHeight / 2);
    EXPECT_LT(one.ascent, one.lineHeight);
    EXPECT_FLOAT_EQ(one.InXpsUnits(TextShaper::unitsPerEm / 2), 20);

    const std::wstring odd = {L'a', 1, 0xD800, L'b', 0xDC00, 0xFFFF, 0xFFFE, L'\t'};
    const AnnotationTextLayout drawable = LayOutText(shaper, CXString(odd.c_str()), 30);
    std::wstring text;
    for (const GlyphRun& run : drawable.lines.at(0).runs)
        text += run.text;
    EXPECT_EQ(text, L"a \xFFFD"
                    L"b\xFFFD\xFFFD\xFFFD ");
    EXPECT_TRUE(LayOutText(shaper, L"", 30).lines.empty());
}

} // namespace
