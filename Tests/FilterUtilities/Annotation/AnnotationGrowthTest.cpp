#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "Support/Growth.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>

namespace {

std::wstring Repeated(std::size_t n, std::wstring_view piece) {
    std::wstring text;
    for (std::size_t i = 0; i < n; ++i)
        text += piece;
    return text;
}

/// The elements that an item makes, read from the settings of a ticket.
GrowthMaker Settings(const std::string& item) {
    return [=](std::size_t n) {
        const auto ticket = std::make_shared<TicketAndSettings>(
            SettingsElements(Times(n, [&](std::size_t) { return item; })));
        return [ticket] {
            OpenAnnotations annotations;
            EXPECT_NE(annotations.Read(ticket->settings), E_FAIL);
        };
    };
}

GrowthMaker Wrapping(std::wstring_view piece) {
    return [=](std::size_t n) {
        return [text = CXString(L"x" + Repeated(n, piece) + L"y")] {
            OpenAnnotations annotations;
            annotations.Read({});
            EXPECT_GE(annotations.WrapLineIfNecessary(text).GetLength(), 2);
        };
    };
}

const std::string element = SettingsElement({{"type", "type-text"}, {"text", "x"}, {"angle", "0"}});

const GrowthCase cases[] = {
    {"ElementsInSettings", Settings(element)},
    {"MembersOfOneElement",
     [](std::size_t n) {
         return Settings("<e>" + Times(n, [](std::size_t) { return "<other/>"; }) + "</e>")(1);
     }},
    {"WordsOfATimeStamp",
     [](std::size_t n) {
         return Settings(SettingsElement(
             {{"type", "type-timestamp"},
              {"time-stamp-format-fields", Times(n, [](std::size_t) { return "date,never,"; })}}))(1);
     }},
    {"ElementsInAttributes",
     [](std::size_t n) {
         const auto one = Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)}});
         return [job = JobWith(std::vector<AttributeBytesIndexedList>(n, one))] {
             OpenAnnotations annotations;
             EXPECT_EQ(annotations.Read(job), S_OK);
         };
     }},
    {"TextsOfTheClient",
     [](std::size_t n) {
         auto annotations = std::make_shared<OpenAnnotations>();
         const auto stamp = Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TIME_STAMP)}});
         annotations->Read(JobWith(std::vector<AttributeBytesIndexedList>(n, stamp)));
         return [annotations] {
             ClientJobData2ReaderWriter data;
             EXPECT_EQ(annotations->SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
             EXPECT_EQ(annotations->ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
         };
     }},
    {"CharactersOfAFace",
     [](std::size_t n) {
         auto annotations = std::make_shared<OpenAnnotations>();
         annotations->Read({});
         AnnotationElementSettings& text = *annotations->GetSelected();
         text.type = VAL_ANNOTATION_TYPE_TEXT;
         for (std::size_t i = 0; i < n; ++i)
             text.text += static_cast<wchar_t>(0x20 + i * 7 % 0xD000);
         return [annotations] {
             EXPECT_GT(annotations->GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"").GetLength(),
                       0);
         };
     }},
    {"WordsInLines", Wrapping(L"some words ")},
    {"OneWordInLines", Wrapping(L"word")},
    {"MarksOfOneCharacter", Wrapping(L"\u0301")},
    {"BlanksOfALine", Wrapping(L" ")},
    {"NotesOfACoverSheet",
     [](std::size_t n) {
         const auto cover = Attributes(
             {{FEAT_FAX_COVER_NOTES, AttributeValue::FromString(CXString(Repeated(n, L"line\r\n")))}});
         const auto fax = Attributes({{FEAT_FAX_COVER_COL, AttributeValue::FromCollection(cover)}});
         return [job = Attributes({{FEAT_FAX_OUT_COL, AttributeValue::FromCollection(fax)}})] {
             OpenAnnotations annotations;
             annotations.SetFaxAnnotationSettings(true);
             EXPECT_EQ(annotations.Read(job), S_OK);
         };
     }},
};

class AnnotationGrowth : public testing::TestWithParam<GrowthCase> {};
TEST_P(AnnotationGrowth, IsInProportionToTheInput) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, AnnotationGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
