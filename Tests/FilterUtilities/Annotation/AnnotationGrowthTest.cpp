#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "Support/Growth.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>

namespace {

/// The elements read from the settings of a ticket.
std::function<void()> Reading(const std::string& elements) {
    const auto ticket = std::make_shared<TicketAndSettings>(SettingsElements(elements));
    return [ticket] {
        OpenAnnotations annotations;
        EXPECT_EQ(annotations.Read(ticket->settings), S_OK);
    };
}

std::function<void()> ReadingNotes(const std::string& text) {
    const auto cover =
        Attributes({{FEAT_FAX_COVER_NOTES, AttributeValue::FromString(CXString(text.c_str()))}});
    const auto fax = Attributes({{FEAT_FAX_COVER_COL, Members(cover)}});
    return [job = Attributes({{FEAT_FAX_OUT_COL, Members(fax)}})] {
        OpenAnnotations annotations;
        annotations.SetFaxAnnotationSettings(true);
        EXPECT_EQ(annotations.Read(job), S_OK);
    };
}

std::string Repeated(std::size_t n, const char* item) {
    return Times(n, [=](std::size_t) { return item; });
}

const GrowthCase cases[] = {
    {"ElementsInSettings",
     [](std::size_t n) {
         return Reading(Repeated(n, "<e><type-api>type-text</type-api><angle-api>0</angle-api></e>"));
     }},
    {"MembersOfOneElement", [](std::size_t n) { return Reading("<e>" + Repeated(n, "<other/>") + "</e>"); }},
    {"WordsOfATimeStamp",
     [](std::size_t n) {
         return Reading(SettingsElement(
             {{"type", "type-timestamp"}, {"time-stamp-format-fields", Repeated(n, "date,never,")}}));
     }},
    {"TextsInAttributesAndOfTheClient",
     [](std::size_t n) {
         const auto stamp = TextElement(L"x", L"Arial", VAL_ANNOTATION_TYPE_TIME_STAMP);
         return [job = JobWith(std::vector<AttributeBytesIndexedList>(n, stamp))] {
             OpenAnnotations annotations;
             EXPECT_EQ(annotations.Read(job), S_OK);
             ClientJobData2ReaderWriter data;
             EXPECT_EQ(annotations.SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
             EXPECT_EQ(annotations.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
             EXPECT_EQ(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Arial"), L"x");
         };
     }},
    {"WordsOfNotes", [](std::size_t n) { return ReadingNotes(Repeated(n, "some words ")); }},
    {"OneWordOfNotes", [](std::size_t n) { return ReadingNotes(Repeated(n, "word")); }},
    {"MarksOfOneCharacter", [](std::size_t n) { return ReadingNotes(Repeated(n, "\u0301")); }},
    {"BlanksOfNotes", [](std::size_t n) { return ReadingNotes("x" + Repeated(n, " ") + "y"); }},
    {"LinesOfNotes", [](std::size_t n) { return ReadingNotes(Repeated(n, "line\r\n")); }},
};

class AnnotationGrowth : public testing::TestWithParam<GrowthCase> {};
TEST_P(AnnotationGrowth, IsInProportionToTheInput) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, AnnotationGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
