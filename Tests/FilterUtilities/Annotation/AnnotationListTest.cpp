// The list of a job's annotations as its attributes make it, and what it tells of each.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "Support/Rows.h"

#include <climits>

namespace {

constexpr char untouched[] =
    "5001 draw 10857 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896 '' '' 1 72 ''";
/// What an element is of which nothing is known but its type.
std::string Defaults(const std::string& type) {
    return type + " draw 5001 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896";
}
constexpr char defaultText[] = " '' 'Segoe UI' 1 72 '#808080'";

AttributeBytesIndexedList TextElement(const wchar_t* text, const wchar_t* face = L"Segoe UI") {
    return Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)},
                       {FEAT_ANNOTATION_TEXT, Text(text)},
                       {FEAT_ANNOTATION_FONT_NAME, Text(face)}});
}

TEST(AnnotationList, HasOneElementWithoutTypeWhereNothingIsAnnotated) {
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.GetType(), VAL_UNSPECIFIED) << "before anything is read";
    EXPECT_EQ(annotations.GetSelected(), nullptr);
    annotations.SetImageFileName(L"a.png");
    EXPECT_TRUE(annotations.GetImageFileName().IsEmpty());
    EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), E_INVALIDARG);
    EXPECT_EQ(annotations.Read({}), S_FALSE);
    EXPECT_EQ(ShowAll(annotations), std::vector<std::string>{untouched});
    EXPECT_FALSE(annotations.DoesJobUseAnnotations());
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 0);
    EXPECT_FALSE(annotations.IsAnAnnotationSpecified());

    // The first element alone says whether there is any.
    EXPECT_EQ(annotations.Read(JobWith({{}, TextElement(L"x")})), S_OK);
    EXPECT_EQ(ShowAll(annotations).size(), 2U);
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 0);
    EXPECT_EQ(annotations.GetCountOfTextBasedElements(), 1);
}

TEST(AnnotationList, TakesEachValueOfAnElementFromItsAttributes) {
    const auto all = [](tagValueEnum type) {
        return Attributes({{FEAT_ANNOTATION_TYPE, Option(type)},
                           {FEAT_ANNOTATION_FIRST_PAGE, Option(VAL_ANNOTATION_PAGES_FIRST_ONLY)},
                           {FEAT_ANNOTATION_DRAW_MODE, Option(VAL_ANNOTATION_IN_BACKGROUND)},
                           {FEAT_ANNOTATION_TRANSPARENCY, Number(30)},
                           {FEAT_ANNOTATION_TEXT, Text(L"Draft <&>")},
                           {FEAT_ANNOTATION_ANGLE, Number(-45)},
                           {FEAT_ANNOTATION_X_OFFSET, Number(2500)},
                           {FEAT_ANNOTATION_Y_OFFSET, Number(-500)},
                           {FEAT_ANNOTATION_JUSTIFICATION, Number(9)},
                           {FEAT_ANNOTATION_X_OFFSET_INCHES, Number(250)},
                           {FEAT_ANNOTATION_Y_OFFSET_INCHES, Number(-5099)},
                           {FEAT_ANNOTATION_RENDER_ORDER, Option(VAL_ANNOTATION_POST_IMPOSITION)},
                           {FEAT_ANNOTATION_FONT_NAME, Text(L"DejaVu Sans")},
                           {FEAT_ANNOTATION_CHARACTER_SET, Number(128)},
                           {FEAT_ANNOTATION_FONT_SIZE, Number(11)},
                           {FEAT_ANNOTATION_COLOR, Text(L"#FF0000")},
                           {FEAT_ANNOTATION_TIME_STAMP_FORMAT, Option(VAL_TIME_STAMP_DAY_DATE)},
                           {FEAT_ANNOTATION_TIME_STAMP_DATE_ORDER, Option(VAL_TIME_STAMP_YEAR_MONTH_DAY)},
                           {FEAT_ANNOTATION_TIME_STAMP_TIME_PART, Option(VAL_TIME_STAMP_HOUR_MINUTE_ZONE)},
                           {FEAT_ANNOTATION_TIME_STAMP_HOUR_FORM, Option(VAL_TIME_STAMP_HOUR_24)},
                           {FEAT_ANNOTATION_PICTURE_SCALE, Number(40)}});
    };
    // Whole inches count, as hundredths: 2 of them are 1.92 units, 50 are 48.
    const std::string place =
        " first draw 10854 opacity 0.7 angle -45 at 2.5,-0.5 edges 9 2,-48 order 10897 'Draft <&>'";
    const std::string font = " 'DejaVu Sans' 128 11 '#FF0000'";
    const ProcessSeparators separators(L".", L":");
    OpenAnnotations annotations;
    EXPECT_EQ(
        annotations.Read(JobWith({all(VAL_ANNOTATION_TYPE_TEXT), all(VAL_ANNOTATION_TYPE_TIME_STAMP),
                                  all(VAL_ANNOTATION_TYPE_PICTURE), all(VAL_ANNOTATION_TYPE_BATES_STAMP),
                                  all(VAL_ANNOTATION_TYPE_PAGE_NUMBERS)})),
        S_OK);
    EXPECT_EQ(ShowAll(annotations),
              (std::vector<std::string>{
                  "7203" + place + font, "7204" + place + font + " stamp 10839 10847 10849 10851",
                  "7205" + place + " scale 40", "7206" + place + font, "7207" + place + font}));
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 5);
    EXPECT_EQ(annotations.GetCountOfTextBasedElements(), 4);
    EXPECT_EQ(annotations.GetCountOfTimestampElements(), 1);
    EXPECT_EQ(annotations.GetCountOfBitmapElements(), 1);
    EXPECT_EQ(annotations.Read(JobWith({TextElement(L"x")})), S_OK) << "a list starts anew";
    EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 1);
    EXPECT_EQ(annotations.GetCountOfTextBasedElements() + annotations.GetCountOfBitmapElements(), 1);
}

TEST(AnnotationList, KeepsTheDefaultsForWhatIsMissingUnspecifiedOrMeaningless) {
    const Rows<std::string, AttributeBytesIndexedList> cases{
        {Defaults("5001") + defaultText, {}},
        {Defaults("7203") + defaultText,
         Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)},
                     {FEAT_ANNOTATION_TEXT, AttributeValue::FromString(L"not said", false)},
                     {FEAT_ANNOTATION_TRANSPARENCY, AttributeValue::FromInteger(10, false)},
                     {FEAT_ANNOTATION_ANGLE, Text(L"90")}, // of another kind
                     {FEAT_ANNOTATION_FIRST_PAGE, Option(VAL_TIME_STAMP_DATE)},
                     {FEAT_ANNOTATION_DRAW_MODE, Option(static_cast<tagValueEnum>(-1))},
                     {FEAT_ANNOTATION_RENDER_ORDER, Option(VAL_UNSPECIFIED)},
                     {FEAT_ANNOTATION_FONT_NAME, Text(L"  ")},
                     {FEAT_ANNOTATION_COLOR, Text(L"")}})},
        {Defaults("5001") + defaultText,
         Attributes({{FEAT_ANNOTATION_TYPE, Option(static_cast<tagValueEnum>(INT_MAX))}})},
        {Defaults("7205") + " '' scale 100",
         Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_PICTURE)}})},
    };
    for (const auto& [expected, element] : cases) {
        OpenAnnotations annotations;
        EXPECT_EQ(annotations.Read(JobWith({element})), S_OK);
        EXPECT_EQ(Show(annotations, 0), expected);
    }
    OpenAnnotations annotations;
    AttributeBytesIndexedList job = JobWith({TextElement(L"x")});
    AttributeBytesIndexedList collection;
    job.GetCollection(AttributeBytesFeatureId(FEAT_ANNOTATION_COL), collection);
    job.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(FEAT_ANNOTATION_COL),
                                         AttributeValue::FromCollection(collection, false)));
    EXPECT_EQ(annotations.Read(job), S_FALSE) << "annotations that the user chose not to have";
}

TEST(AnnotationList, TakesNumbersOfAnySize) {
    const auto element = [](int number) {
        return Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)},
                           {FEAT_ANNOTATION_TRANSPARENCY, Number(number)},
                           {FEAT_ANNOTATION_X_OFFSET, Number(number)},
                           {FEAT_ANNOTATION_X_OFFSET_INCHES, Number(number)},
                           {FEAT_ANNOTATION_FONT_SIZE, Number(number)}});
    };
    OpenAnnotations annotations;
    annotations.Read(JobWith({element(INT_MIN), element(INT_MAX), element(0)}));
    const Rows<const char*, float, int, const char*> cases{
        {"21474836", -2147483.75F, -20615843, "-2863311530"},
        {"-21474836", 2147483.75F, 20615843, "2863311529"},
        {"1", 0, 0, "0"},
    };
    for (int i = 0; const auto& [opacity, offset, justification, size] : cases) {
        annotations.SelectAnnotationElement(i++);
        EXPECT_EQ(Utf8(annotations.GetOpacityAsString()), opacity);
        EXPECT_EQ(annotations.GetOffsetFromCenter().X, offset);
        EXPECT_EQ(annotations.GetJustificationXOffsetInXpsUnits(), justification);
        EXPECT_EQ(Utf8(annotations.GetFontRenderingEmSizeAsString()), size);
    }
}

TEST(AnnotationList, OfAFaxIsForTheFirstPageOnly) {
    AttributeBytesIndexedList element = TextElement(L"x");
    element.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(FEAT_ANNOTATION_FIRST_PAGE),
                                             Option(VAL_ANNOTATION_PAGES_ALL)));
    const auto fax = AttributeValue::FromCollection(AttributeBytesIndexedList());
    OpenAnnotations cover;
    cover.SetFaxAnnotationSettings(true);
    EXPECT_TRUE(cover.IsFaxCoversheetAnnotations());
    EXPECT_EQ(cover.Read(JobWith({element})), S_FALSE) << "a job's annotations are not those of its cover";
    EXPECT_EQ(cover.Read(JobWith({element}, {{FEAT_FAX_OUT_COL, fax}}, FEAT_FAX_COVER_ANNOTATION_COL),
                         VAL_PRINT_ID_ON_ALL_PAGES),
              S_OK);
    EXPECT_EQ(ShowAll(cover).size(), 1U) << "a fax has no mark of the job";
    EXPECT_TRUE(cover.GetFirstPageOnly());

    OpenAnnotations job;
    EXPECT_EQ(job.Read(JobWith({element}, {{FEAT_FAX_OUT_COL, fax}})), S_OK);
    EXPECT_FALSE(job.GetFirstPageOnly()) << "what the attributes say of the pages of a fax holds";
}

TEST(AnnotationList, EndsWithTheMarkOfTheJobIfThatIsAskedFor) {
    const ProcessSeparators separators(L"/", L":");
    const std::string mark = " draw 10857 opacity 1 angle 315 at 0,0 edges 5 22,22 order 10897 '' '";
    for (const auto& [option, start] :
         Rows<tagValueEnum, std::string>{{VAL_PRINT_ID_ON_FIRST_PAGE, "7203 first job"},
                                         {VAL_PRINT_ID_ON_ALL_PAGES, "7203 job"},
                                         {VAL_PRINT_ID_ON_BANNER_SHEET, ""},
                                         {VAL_PRINT_ID_OFF, ""}}) {
        OpenAnnotations annotations;
        EXPECT_EQ(annotations.Read(JobWith({TextElement(L"x")}), option), S_OK);
        const auto all = ShowAll(annotations);
        ASSERT_EQ(all.size(), start.empty() ? 1U : 2U) << option;
        EXPECT_EQ(annotations.GetCountOfTextBasedElements(), start.empty() ? 1 : 2);
        EXPECT_EQ(annotations.GetCountOfTimestampElements(), start.empty() ? 0 : 1);
        if (start.empty()) continue;
        EXPECT_EQ(all[1].substr(0, (start + mark).size()), start + mark);
        EXPECT_TRUE(all[1].ends_with("' 1 9 '#000000' stamp 0 0 0 10850")) << all[1];
        EXPECT_EQ(annotations.Read({}, option), S_OK) << "the mark alone is something to print";
    }
}

TEST(AnnotationList, KeepsASelectionOverItsOwnWalks) {
    OpenAnnotations annotations;
    annotations.RestoreAnnotationElementSelection();
    EXPECT_EQ(annotations.GetSelected(), nullptr);
    annotations.Read(JobWith({TextElement(L"a"), TextElement(L"b"), TextElement(L"c")}));
    annotations.RestoreAnnotationElementSelection();
    EXPECT_NE(annotations.GetSelected(), nullptr) << "nothing was saved";
    for (const int index : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_TRUE(annotations.SelectAnnotationElement(1));
        EXPECT_FALSE(annotations.SelectAnnotationElement(index)) << index;
        EXPECT_EQ(annotations.GetText(), L"b");
    }
    annotations.SaveAnnotationElementSelection();
    annotations.SelectAnnotationElement(2);
    CXString none;
    annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Segoe UI");
    annotations.InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(nullptr, 1, true, none, none);
    EXPECT_EQ(annotations.GetText(), L"c");
    annotations.RestoreAnnotationElementSelection();
    EXPECT_EQ(annotations.GetText(), L"b");
    EXPECT_EQ(annotations.AddNewAnnotationElement(), 4);
    EXPECT_EQ(annotations.GetText(), L"");
}

TEST(AnnotationList, NamesPartsByFaceFolderAndFile) {
    OpenAnnotations annotations;
    annotations.Read({});
    const auto font = [&](const wchar_t* face) {
        return Utf8(annotations.GenerateFontResourceUriWitExtension(face));
    };
    const auto picture = [&](const wchar_t* file) {
        return Utf8(annotations.GenerateImageResourceUriWithoutExtension(file));
    };
    EXPECT_EQ(annotations.GetAnnotationResourceUiqueNameSeed(), 0x1234);
    const std::string arial = font(L"Arial");
    EXPECT_TRUE(arial.starts_with("/Resources/Annotations/Fonts/00001234-0000-0000-0000-0000")) << arial;
    EXPECT_EQ(arial.size(), std::string("/Resources/Annotations/Fonts/").size() + 36 + 6);
    EXPECT_NE(arial, font(L"arial"));
    const std::string logo = picture(L"C:\\pictures\\logo.png");
    const std::string start = "/Resources/Annotations/Bitmaps/A00001234-";
    EXPECT_TRUE(logo.starts_with(start)) << logo;
    EXPECT_EQ(logo.size(), start.size() + 17);
    const std::string otherFile = picture(L"C:\\pictures\\seal.png");
    const std::string otherFolder = picture(L"D:\\logo.png");
    EXPECT_EQ(logo.substr(0, start.size() + 8), otherFile.substr(0, start.size() + 8));
    EXPECT_NE(logo, otherFile);
    EXPECT_EQ(logo.substr(start.size() + 9), otherFolder.substr(start.size() + 9));
    EXPECT_NE(logo, otherFolder);
    annotations.SetFaxAnnotationSettings(true);
    EXPECT_TRUE(font(L"Arial").starts_with("/Resources/FaxCoverSheet/Annotations/Fonts/"));

    annotations.Read(JobWith({TextElement(L"a"), TextElement(L"b")}), VAL_UNSPECIFIED);
    annotations.SetFaxAnnotationSettings(false);
    annotations.Read(JobWith({TextElement(L"a"), TextElement(L"b")}));
    const CXString second = annotations.GetFontURI();
    annotations.SelectAnnotationElement(0);
    EXPECT_EQ(annotations.GetFontURI().GetLength(),
              static_cast<int>(wcslen(L"/Resources/Fonts/.odttf")) + 36);
    EXPECT_FALSE(annotations.GetFontURI() == second);
}

TEST(AnnotationList, ListsEachCharacterOfAFaceOnce) {
    AttributeBytesIndexedList picture = TextElement(L"zzz");
    picture.AddAttributeBytes(
        AttributeBytes(AttributeBytesFeatureId(FEAT_ANNOTATION_TYPE), Option(VAL_ANNOTATION_TYPE_PICTURE)));
    const wchar_t pairs[] = {0xD83D, 0xDE00, L'l', 0xD83D, 0xDE01, 0xD83D, 0xDE00, 0xDE00, 0xD83D, 0};
    OpenAnnotations annotations;
    annotations.Read(JobWith({TextElement(L"hello"), TextElement(L"other", L"Arial"), picture,
                              TextElement(pairs), TextElement(L"hi")}));
    const std::wstring expected = {L'h',   L'e',   L'l',   L'o',   0xD83D, 0xDE00,
                                   0xD83D, 0xDE01, 0xDE00, 0xD83D, L'i'};
    EXPECT_EQ(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Segoe UI").View(),
              expected);
    EXPECT_EQ(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"Arial"), L"other");
    EXPECT_TRUE(annotations.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(L"segoe ui").IsEmpty());
}

} // namespace
