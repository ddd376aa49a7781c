// The list of a job's annotations as its attributes make it, and what it tells of each.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "Support/Rows.h"

#include <climits>

namespace {

constexpr char defaults[] = " draw 5001 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896";
constexpr char defaultText[] = " '' 'Segoe UI' 1 72 '#808080'";

TEST(AnnotationList, HasOneElementWithoutTypeWhereNothingIsAnnotated) {
    OpenAnnotations annotations;
    annotations.SetImageFileName(L"a.png");
    EXPECT_TRUE(annotations.GetImageFileName().IsEmpty()) << "without an element the defaults are told";
    EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), E_INVALIDARG);
    EXPECT_EQ(annotations.Read({}), S_FALSE);
    EXPECT_EQ(Utf8(annotations.GetFontRenderingEmSizeAsString()), "96");
    EXPECT_EQ(ShowAll(annotations),
              Texts{"5001 draw 10857 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896 '' '' 1 72 ''"});
    EXPECT_FALSE(annotations.DoesJobUseAnnotations() || annotations.IsAnAnnotationSpecified());
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 0);

    EXPECT_EQ(annotations.Read(JobWith({{}, TextElement(L"x")})), S_OK);
    EXPECT_EQ(ShowAll(annotations).size(), 2U);
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 0) << "the first element alone says it";
    EXPECT_EQ(annotations.GetCountOfTextBasedElements(), 1);
}

TEST(AnnotationList, KeepsTheDefaultsForWhatIsMissingUnspecifiedOrMeaningless) {
    const Rows<AttributeBytesIndexedList, std::string> cases{
        {AttributeBytesIndexedList(), "5001" + std::string(defaults) + defaultText},
        {Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)},
                     {FEAT_ANNOTATION_TEXT, AttributeValue::FromString(L"not said", false)},
                     {FEAT_ANNOTATION_ANGLE, Text(L"90")}, // of another kind
                     {FEAT_ANNOTATION_FIRST_PAGE, Option(VAL_TIME_STAMP_DATE)},
                     {FEAT_ANNOTATION_DRAW_MODE, Option(-1)},
                     {FEAT_ANNOTATION_RENDER_ORDER, Option(VAL_UNSPECIFIED)},
                     {FEAT_ANNOTATION_FONT_NAME, Text(L"  ")},
                     {FEAT_ANNOTATION_COLOR, Text(L"")}}),
         "7203" + std::string(defaults) + defaultText},
        {Attributes(
             {{FEAT_ANNOTATION_TYPE, Option(INT_MAX)}, {FEAT_ANNOTATION_TRANSPARENCY, Number(INT_MIN)}}),
         "5001 draw 5001 opacity 21474836 angle 315 at 0,0 edges 0 0,0 order 10896" +
             std::string(defaultText)},
    };
    for (const auto& [element, expected] : cases) {
        OpenAnnotations annotations;
        EXPECT_EQ(annotations.Read(JobWith({element})), S_OK);
        EXPECT_EQ(ShowAll(annotations), Texts{expected});
    }
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.Read(Attributes(
                  {{FEAT_ANNOTATION_COL,
                    AttributeValue::FromCollection(
                        Attributes({{FEAT_ANNOTATION_ELEMENT_COL, Set({TextElement(L"x")})}}), false)}})),
              S_FALSE)
        << "annotations that the user chose not to have";
}

TEST(AnnotationList, OfAFaxIsForTheFirstPageOnly) {
    AttributeBytesIndexedList element = TextElement(L"x");
    element.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(FEAT_ANNOTATION_FIRST_PAGE),
                                             Option(VAL_ANNOTATION_PAGES_ALL)));
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    EXPECT_EQ(cover.Read(JobWith({element})), S_FALSE) << "a job's annotations are not those of its cover";
    AttributeBytesIndexedList fax = JobWith({element}, FEAT_FAX_COVER_ANNOTATION_COL);
    const AttributeBytes isFax(AttributeBytesFeatureId(FEAT_FAX_OUT_COL), Members({}));
    fax.AddAttributeBytes(isFax);
    EXPECT_EQ(cover.Read(fax, VAL_PRINT_ID_ON_ALL_PAGES), S_OK);
    EXPECT_EQ(ShowAll(cover).size(), 1U) << "a fax has no mark of the job";
    EXPECT_TRUE(cover.GetFirstPageOnly());

    // What the attributes say of the pages of a fax holds; and a fax that is not to be is none.
    for (const bool isSpecified : {true, false}) {
        fax = JobWith({element});
        fax.AddAttributeBytes(
            AttributeBytes(AttributeBytesFeatureId(FEAT_FAX_OUT_COL),
                           AttributeValue::FromCollection(AttributeBytesIndexedList(), isSpecified)));
        OpenAnnotations job;
        EXPECT_EQ(job.Read(fax, VAL_PRINT_ID_ON_ALL_PAGES), S_OK);
        EXPECT_EQ(ShowAll(job).size(), isSpecified ? 1U : 2U);
        EXPECT_FALSE(job.GetFirstPageOnly());
    }
}

TEST(AnnotationList, EndsWithTheMarkOfTheJobIfThatIsAskedFor) {
    const ProcessSeparators separators(L"/", L":");
    const std::string mark = " job draw 10857 opacity 1 angle 315 at 0,0 edges 5 22,22 order 10897 '' '";
    for (const auto& [option, start] :
         Rows<tagValueEnum, std::string>{{VAL_PRINT_ID_ON_FIRST_PAGE, "7203 first"},
                                         {VAL_PRINT_ID_ON_ALL_PAGES, "7203"},
                                         {VAL_PRINT_ID_ON_BANNER_SHEET, ""}}) {
        OpenAnnotations annotations;
        EXPECT_EQ(annotations.Read({}, option), start.empty() ? S_FALSE : S_OK);
        EXPECT_EQ(annotations.GetCountOfTextBasedElements(), start.empty() ? 0 : 1);
        EXPECT_EQ(annotations.GetCountOfTimestampElements(), start.empty() ? 0 : 1);
        if (start.empty()) continue;
        const std::string shown = ShowAll(annotations).at(0);
        EXPECT_TRUE(shown.starts_with(start + mark) && shown.ends_with("' 1 9 '#000000' stamp 0 0 0 10850"))
            << shown;
        annotations.Read(JobWith({TextElement(L"x")}), option);
        EXPECT_EQ(annotations.AllTexts(), (Texts{"x", ""}));
    }
}

TEST(AnnotationList, KeepsASelectionOverItsOwnWalks) {
    OpenAnnotations annotations;
    annotations.Read(JobWith({TextElement(L"a"), TextElement(L"b"), TextElement(L"c")}));
    annotations.RestoreAnnotationElementSelection();
    EXPECT_NE(annotations.GetSelected(), nullptr) << "nothing was saved";
    EXPECT_TRUE(annotations.SelectAnnotationElement(1));
    for (const int index : {-1, 3, INT_MIN})
        EXPECT_FALSE(annotations.SelectAnnotationElement(index));
    annotations.SaveAnnotationElementSelection();
    annotations.SelectAnnotationElement(0);
    CXString none;
    annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Segoe UI");
    annotations.InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(nullptr, 1, true, none, none);
    EXPECT_EQ(annotations.GetText(), L"a");
    annotations.RestoreAnnotationElementSelection();
    EXPECT_EQ(annotations.GetText(), L"b");
    EXPECT_EQ(annotations.AddNewAnnotationElement(), 4);
    EXPECT_EQ(annotations.GetText(), L"");
    annotations.Read(JobWith({TextElement(L"d"), TextElement(L"e")}));
    annotations.RestoreAnnotationElementSelection();
    EXPECT_EQ(annotations.GetText(), L"e") << "what was saved of another list is gone";
}

TEST(AnnotationList, NamesPartsByFaceFolderAndFile) {
    OpenAnnotations annotations;
    annotations.Read(JobWith({TextElement(L"a"), TextElement(L"b")}));
    const CXString second = annotations.GetFontURI();
    EXPECT_EQ(second, L"/Resources/Fonts/" + annotations.GetSelected()->resourceName + L".odttf");
    EXPECT_EQ(second.GetLength(), 17 + 36 + 6);
    annotations.SelectAnnotationElement(0);
    EXPECT_FALSE(annotations.GetFontURI() == second);
    annotations.GetSelected()->sizeInPoints = 20;
    EXPECT_EQ(annotations.GetFontRenderingEmSizeAsString(), L"26") << "cut";

    const std::string font = Utf8(annotations.GenerateFontResourceUriWitExtension(L"Arial"));
    EXPECT_TRUE(font.starts_with("/Resources/Annotations/Fonts/00001234-0000-0000-0000-0000")) << font;
    EXPECT_EQ(font.size(), 29U + 36 + 6);
    EXPECT_NE(font, Utf8(annotations.GenerateFontResourceUriWitExtension(L"Arial Black")));
    annotations.SetFaxAnnotationSettings(true);
    const auto picture = [&](const wchar_t* file) {
        return Utf8(annotations.GenerateImageResourceUriWithoutExtension(file));
    };
    const std::string start = "/Resources/FaxCoverSheet/Annotations/Bitmaps/A00001234-";
    const std::string logo = picture(L"C:\\pictures\\logo.png");
    EXPECT_TRUE(logo.starts_with(start) && logo.size() == start.size() + 17) << logo;
    const std::string otherFile = picture(L"C:\\pictures\\seal.png");
    EXPECT_TRUE(logo != otherFile && otherFile.starts_with(logo.substr(0, start.size() + 9))) << otherFile;
    const std::string otherFolder = picture(L"D:\\logo.png");
    EXPECT_TRUE(logo != otherFolder && otherFolder.ends_with(logo.substr(start.size() + 8))) << otherFolder;
}

TEST(AnnotationList, ListsEachCharacterOfAFaceOnce) {
    const wchar_t pairs[] = {0xD83D, 0xDE00, L'l', 0xD83D, 0xDE01, 0xD83D, 0xDE00, 0xDE00, 0xD83D, 0};
    OpenAnnotations annotations;
    annotations.Read(JobWith({TextElement(L"hello"), TextElement(L"other", L"Arial"), TextElement(pairs),
                              TextElement(L"zzz", L"Segoe UI", VAL_UNSPECIFIED), TextElement(L"hi")}));
    const std::wstring expected = {L'h',   L'e',   L'l',   L'o',   0xD83D, 0xDE00,
                                   0xD83D, 0xDE01, 0xDE00, 0xD83D, L'i'};
    EXPECT_EQ(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Segoe UI").View(),
              expected);
    EXPECT_TRUE(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"segoe ui").IsEmpty());
}

} // namespace
