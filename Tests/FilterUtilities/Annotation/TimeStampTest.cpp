// What time stamps and the mark of a job say, in the user's locale and zone, and as a client sent it.

#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <Locale/UserLocale.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>
#include <SystemServices/Printer.h>

#include <thread>

namespace {

using OvPlatform::UserLocale;

constexpr SYSTEMTIME morning = {2026, 1, 1, 5, 9, 7, 3, 0}; // a Monday

AttributeBytesIndexedList Stamp(tagValueEnum format, tagValueEnum dateOrder = {}, tagValueEnum timePart = {},
                                tagValueEnum hourForm = {}, const wchar_t* text = L"") {
    return Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TIME_STAMP)},
                       {FEAT_ANNOTATION_TEXT, Text(text)},
                       {FEAT_ANNOTATION_TIME_STAMP_FORMAT, Option(format)},
                       {FEAT_ANNOTATION_TIME_STAMP_DATE_ORDER, Option(dateOrder)},
                       {FEAT_ANNOTATION_TIME_STAMP_TIME_PART, Option(timePart)},
                       {FEAT_ANNOTATION_TIME_STAMP_HOUR_FORM, Option(hourForm)}});
}

AttributeBytesIndexedList PlainText(const wchar_t* text) {
    return Attributes(
        {{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)}, {FEAT_ANNOTATION_TEXT, Text(text)}});
}

// ---- Separators

TEST(DateSeparators, AreThoseOfTheLocalesPictures) {
    const Rows<const wchar_t*, const char*, const char*> cases{
        {L"en-US", "/", ":"},  {L"de-DE", ".", ":"}, {L"sv-SE", "-", ":"}, {L"fi-FI", ".", "."},
        {L"sk-SK", ". ", ":"}, {L"zh-TW", "/", ":"}, {L"bg-BG", ".", ":"},
    };
    for (const auto& [locale, date, time] : cases) {
        const UserLocale user(locale);
        EXPECT_EQ(Utf8(AnnotationPrintTicketSettings::GetDateSeparatorByReverseEngineering()), date);
        EXPECT_EQ(Utf8(AnnotationPrintTicketSettings::GetTimeSeparatorByReverseEngineering()), time);
    }
}

TEST(DateSeparators, AreTakenApartFromAnyPicture) {
    const Rows<const wchar_t*, const char*> cases{
        {L"dd.MM.yyyy", "."}, {L"yyyy-MM-dd", "-"}, {L"d. M. yyyy", ". "}, {L"dddd', 'd MMMM", "//"},
        {L"ddMMyyyy", "//"},  {L"", "//"},          {L"yyyy", "//"},       {L"d    M", "//"},
        {L"(d) M", ") "},     {L"-", "//"},         {L"gg y/M/d", " "},    {L"d\u5E74M", "\u5E74"},
    };
    for (const auto& [picture, separator] : cases)
        EXPECT_EQ(Utf8(DateAndTimeSeparators::DateSeparatorIn(picture)), separator) << separator;
    EXPECT_EQ(Utf8(DateAndTimeSeparators::TimeSeparatorIn(L"tt h.mm.ss")), ".");
    EXPECT_EQ(Utf8(DateAndTimeSeparators::TimeSeparatorIn(L"")), ":");
}

TEST(DateSeparators, OfAProcessAreThoseOfItsFirstJob) {
    const UserLocale user(L"fi-FI");
    const std::string inSettings = "<date-separator-api>~</date-separator-api>"
                                   "<time-separator-api>h</time-separator-api>";
    const auto inAttributes = Attributes(
        {{FEAT_ANNOTATION_DATE_SEPARATOR, Text(L"*")}, {FEAT_ANNOTATION_TIME_SEPARATOR, Text(L"^")}});
    const Rows<std::string, AttributeBytesIndexedList, std::string> cases{
        {inSettings, inAttributes, "~|h"},
        {"<deeper>" + inSettings + "</deeper>", inAttributes, "*|^"},
        {"<date-separator-api/><time-separator-api specified='false'>h</time-separator-api>", inAttributes,
         "*|^"},
        {"<date-separator-api>~</date-separator-api>", {}, "~|."},
        {"", {}, ".|."},
        {"",
         Attributes(
             {{FEAT_ANNOTATION_DATE_SEPARATOR, Text(L" ")}, {FEAT_ANNOTATION_TIME_SEPARATOR, Text(L"\t")}}),
         "/|:"},
    };
    for (const auto& [content, list, expected] : cases) {
        const ProcessSeparators none;
        TicketAndSettings ticket(content);
        AttributeBytesIndexedList attributes = list;
        OpenAnnotations annotations;
        annotations.InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(ticket.settings, attributes);
        EXPECT_EQ(ProcessSeparators::Show(), expected);
        TicketAndSettings later(inSettings);
        annotations.InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(later.settings, attributes);
        EXPECT_EQ(ProcessSeparators::Show(), expected) << "not those of a later job";
    }
}

TEST(DateSeparators, AreOnePairForJobsThatBeginTogether) {
    const ProcessSeparators none;
    std::vector<std::thread> jobs;
    for (const wchar_t* const separator : {L"1", L"2", L"3", L"4"}) {
        jobs.emplace_back([separator] {
            Settings settings(nullptr);
            auto attributes = Attributes({{FEAT_ANNOTATION_DATE_SEPARATOR, Text(separator)},
                                          {FEAT_ANNOTATION_TIME_SEPARATOR, Text(separator)}});
            OpenAnnotations().InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(settings, attributes);
        });
    }
    for (std::thread& job : jobs)
        job.join();
    const std::string pair = ProcessSeparators::Show();
    EXPECT_EQ(pair.size(), 3U);
    EXPECT_EQ(pair.front(), pair.back());
}

TEST(DateSeparators, AreOnlyLookedForWhereATimeIsShown) {
    const ProcessSeparators none;
    OpenAnnotations annotations;
    annotations.Read(JobWith({PlainText(L"x")}));
    EXPECT_EQ(ProcessSeparators::Show(), "|");
    annotations.Read(JobWith({Stamp(VAL_TIME_STAMP_DATE)}, {{FEAT_ANNOTATION_DATE_SEPARATOR, Text(L"+")}}));
    EXPECT_EQ(ProcessSeparators::Show().front(), '+');
    const ProcessSeparators again;
    annotations.Read(Attributes({{FEAT_ANNOTATION_DATE_SEPARATOR, Text(L"*")}}), VAL_PRINT_ID_ON_ALL_PAGES);
    EXPECT_EQ(ProcessSeparators::Show().front(), '*');
}

// ---- Texts

TEST(TimeStamps, SayWhatTheirFieldsAskFor) {
    constexpr auto none = tagValueEnum{};
    const Rows<const wchar_t*, tagValueEnum, tagValueEnum, tagValueEnum, tagValueEnum, const char*> cases{
        {L"en-US", VAL_TIME_STAMP_DATE_TIME, VAL_TIME_STAMP_MONTH_DAY_YEAR, VAL_TIME_STAMP_HOUR_MINUTE,
         VAL_TIME_STAMP_HOUR_12, "1~5~2026 9h07h03 AM"},
        {L"en-US", VAL_TIME_STAMP_DATE, VAL_TIME_STAMP_DAY_MONTH_YEAR, none, none, "5~1~2026"},
        {L"en-US", VAL_TIME_STAMP_TIME, none, none, none, "9h07h03"},
        {L"en-US", VAL_TIME_STAMP_DAY_DATE, VAL_TIME_STAMP_YEAR_MONTH_DAY, none, none, "Mon 2026~1~5"},
        {L"en-US", VAL_TIME_STAMP_DAY_DATE_TIME, none, none, VAL_TIME_STAMP_HOUR_24, "Mon 1~5~2026 9h07h03"},
        {L"en-US", VAL_TIME_STAMP_TIME_ZONE, none, VAL_TIME_STAMP_HOUR_MINUTE, none, "1~5~2026 9h07h03"},
        {L"en-US", VAL_TIME_STAMP_DAY_DATE_TIME_ZONE, none, none, none, "1~5~2026 9h07h03"},
        {L"en-US", none, none, none, none, "1~5~2026 9h07h03"},
        {L"en-US", VAL_TIME_STAMP_TIME, none, VAL_TIME_STAMP_HOUR_MINUTE_ZONE, none,
         "9h07h03 Japan Standard Time"},
        {L"en-US", VAL_TIME_STAMP_DATE, none, VAL_TIME_STAMP_HOUR_MINUTE_ZONE, none, "1~5~2026"},
        {L"ja-JP", VAL_TIME_STAMP_DAY_DATE, VAL_TIME_STAMP_YEAR_MONTH_DAY, none, none, "\u6708 2026~1~5"},
        {L"de-DE", VAL_TIME_STAMP_DAY_DATE, none, none, none, "Mo 1~5~2026"},
    };
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    for (const auto& [locale, format, dateOrder, timePart, hourForm, expected] : cases) {
        const ProcessSeparators separators(L"~", L"h");
        const UserLocale user(locale);
        OpenAnnotations annotations;
        annotations.Read(JobWith({Stamp(format, dateOrder, timePart, hourForm)}));
        annotations.SetJobSubmitTimeInLocalTime(morning);
        EXPECT_EQ(Utf8(annotations.GenerateTimstampAnnotationText()), expected);
        EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), S_OK);
        EXPECT_EQ(Utf8(annotations.GetText()), expected);
    }
}

TEST(TimeStamps, LeaveOutAPartThatCannotBeFormatted) {
    const ProcessSeparators separators(L"/", L":");
    OpenAnnotations annotations;
    annotations.Read(JobWith({Stamp(VAL_TIME_STAMP_DAY_DATE_TIME, {}, VAL_TIME_STAMP_HOUR_MINUTE_ZONE)}));
    annotations.SetJobSubmitTimeInLocalTime({2026, 13, 1, 5, 9, 7, 3, 0});
    EXPECT_TRUE(Utf8(annotations.GenerateTimstampAnnotationText()).starts_with("9:07:03 "))
        << "no such month";
    annotations.SetJobSubmitTimeInLocalTime({2026, 13, 1, 5, 25, 7, 3, 0});
    EXPECT_EQ(annotations.GenerateTimstampAnnotationText(), L"") << "and without a time no zone";
}

TEST(TimeStamps, NeedATimeStampToBeAppliedTo) {
    OpenAnnotations annotations;
    annotations.Read(JobWith({PlainText(L"kept")}));
    EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), E_INVALIDARG);
    EXPECT_EQ(annotations.GetText(), L"kept");
}

// ---- The time of a job

class JobsTime : public testing::Test {
protected:
    JobsTime() {
        OvPlatform::QueueDescription queue;
        queue.printerName = L"Office";
        OvPlatform::QueueJob job;
        job.id = 7;
        job.document = L"Report";
        job.user = L"anna";
        using namespace std::chrono;
        job.submitted = sys_days(2026y / 7 / 14) + 22h + 30min;
        queue.jobs = {job};
        OvPlatform::QueueRegistry::Add(std::make_shared<OvPlatform::QueueFolder>(queue));
        m_printer.CreateHandle(L"Office");
    }
    ~JobsTime() override { OvPlatform::QueueRegistry::Clear(); }

    HRESULT Fill(OpenAnnotations& annotations, ULONG job = 7, bool regenerate = false,
                 const wchar_t* first = L"", const wchar_t* second = L"") {
        CXString firstWord = first;
        CXString secondWord = second;
        return annotations.InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(
            m_printer.GetHandle(), job, regenerate, firstWord, secondWord);
    }
    static std::vector<std::string> TextsOf(OpenAnnotations& annotations) {
        std::vector<std::string> texts;
        for (int i = 0; annotations.SelectAnnotationElement(i); ++i)
            texts.push_back(Utf8(annotations.GetText()));
        return texts;
    }

    ProcessSeparators m_separators{L".", L":"};
    UserLocale m_user{L"en-US"};
    EnvironmentVariable m_zone{"TZ", "Europe/Berlin"};
    Printer m_printer;
};

using Texts = std::vector<std::string>;

TEST_F(JobsTime, FillsStampsThatAreEmptyInLocalTime) {
    const auto job = JobWith({Stamp(VAL_TIME_STAMP_DATE_TIME),
                              Stamp(VAL_TIME_STAMP_DATE, {}, {}, {}, L"as sent"), PlainText(L"")});
    OpenAnnotations annotations;
    annotations.Read(job);
    annotations.SelectAnnotationElement(2);
    EXPECT_EQ(Fill(annotations), S_OK);
    EXPECT_EQ(annotations.GetType(), VAL_ANNOTATION_TYPE_TEXT) << "the selection stays";
    EXPECT_EQ(TextsOf(annotations), (Texts{"7.15.2026 0:30:00", "as sent", ""}));
    EXPECT_EQ(Fill(annotations, 8, true), S_OK) << "the time is known";
    EXPECT_EQ(TextsOf(annotations), (Texts{"7.15.2026 0:30:00", "7.15.2026", ""}));

    OpenAnnotations unknown;
    unknown.Read(job);
    EXPECT_EQ(Fill(unknown, 8, true), E_FAIL) << "a job that the spooler does not know";
    EXPECT_EQ(TextsOf(unknown), (Texts{"", "as sent", ""}));
    EXPECT_EQ(Fill(unknown), S_OK) << "which is not remembered";
    unknown.Read(JobWith({PlainText(L"")}));
    EXPECT_EQ(Fill(unknown, 8, true), S_OK) << "nothing to do";
}

TEST_F(JobsTime, IsPartOfTheMarkOfTheJob) {
    const Rows<const wchar_t*, const wchar_t*, const char*> cases{
        {L"anna", L"Report", "anna,  7.15.2026 12:30:00 AM,  Report"},
        {L"anna", L"", "7.15.2026 12:30:00 AM"},
        {L"%s", L"%d", "%s,  7.15.2026 12:30:00 AM,  %d"},
    };
    for (const auto& [first, second, expected] : cases) {
        OpenAnnotations annotations;
        annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
        EXPECT_EQ(Fill(annotations, 7, true, first, second), S_OK);
        EXPECT_EQ(TextsOf(annotations), Texts{expected});
        EXPECT_EQ(Fill(annotations, 7, true, L"other", L"words"), S_OK);
        EXPECT_EQ(TextsOf(annotations), Texts{expected}) << "it is not made anew";
    }
    OpenAnnotations unknown;
    unknown.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
    EXPECT_EQ(Fill(unknown, 8, false, L"a", L"b"), E_FAIL);
    EXPECT_EQ(TextsOf(unknown), Texts{""});
}

TEST_F(JobsTime, ComesInAFaceThatCanShowTheMark) {
    // Text there is, whether the mark is to be regenerated, and whether the face is chosen anew.
    const Rows<const wchar_t*, bool, bool> cases{
        {L"plain", false, false},
        {L"\u5831\u544A", false, true},
        {L"\u5831\u544A", true, false},
        {L"", false, false},
        {L"", true, false},
    };
    for (const auto& [text, regenerate, isChosen] : cases) {
        OpenAnnotations annotations;
        annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
        annotations.GetSelected()->faceName = L"DejaVu Sans";
        annotations.GetSelected()->text = text;
        EXPECT_EQ(Fill(annotations, 7, regenerate), S_OK);
        EXPECT_EQ(annotations.GetFaceName() == L"DejaVu Sans", !isChosen);
        if (!isChosen) continue;
        EXPECT_TRUE(
            annotations.GetGdiDeviceContextRef().CanFontDisplayString(text, annotations.GetFaceName()));
    }
    OpenAnnotations annotations;
    annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
    annotations.GetSelected()->faceName = L"Droid Sans Fallback"; // which lacks digits
    EXPECT_EQ(Fill(annotations), S_OK);
    EXPECT_FALSE(annotations.GetFaceName() == L"Droid Sans Fallback");
}

TEST(JobMark, HasAFaceOfTheUsersLanguage) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const wchar_t*, const wchar_t*> cases{
        {L"ja-JP", L"Meiryo UI"},
        {L"ko-KR", L"Malgun Gothic"},
        {L"zh-CN", L"Microsoft YaHei UI"},
        {L"zh-SG", L"Microsoft YaHei UI"},
        {L"zh-TW", L"Microsoft JhengHei UI"},
        {L"zh-HK", L"Microsoft JhengHei UI"},
        {L"de-DE", L"Segoe UI"},
    };
    for (const auto& [locale, face] : cases) {
        const UserLocale user(locale);
        OpenAnnotations annotations;
        annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
        EXPECT_EQ(annotations.GetFaceName(), face);
    }
}

// ---- Texts of the client

TEST(ClientTexts, TravelWithTheJob) {
    const ProcessSeparators separators(L".", L":");
    const auto job = JobWith({PlainText(L"a"), Stamp(VAL_TIME_STAMP_DATE), Stamp(VAL_TIME_STAMP_DATE)});
    OpenAnnotations client;
    client.Read(job, VAL_PRINT_ID_ON_ALL_PAGES);
    client.SelectAnnotationElement(1);
    client.GetSelected()->text = L"\u4E94\u6708; 5:00";
    client.SelectAnnotationElement(3);
    client.GetSelected()->text = L"anna";
    ClientJobData2ReaderWriter data;
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
    CXString sent;
    EXPECT_TRUE(data.GetStringFromParameterList(205, sent));
    EXPECT_EQ(Utf8(sent), "1:lE4IZzsAIAA1ADoAMAAwAA==;2:;3:YQBuAG4AYQA=;");

    ClientJobData2ReaderWriter received(data.GetClientJobData2());
    OpenAnnotations printer;
    printer.Read(job, VAL_PRINT_ID_ON_ALL_PAGES);
    EXPECT_EQ(printer.ReadClientGeneratedTimestampTextFromClientJobData2(&received), S_OK);
    EXPECT_EQ(ShowAll(printer), ShowAll(client));

    client.SetFaxAnnotationSettings(true);
    client.Read({});
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_FALSE);
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
    EXPECT_TRUE(data.GetStringFromParameterList(207, sent));
    EXPECT_EQ(sent, L"");
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(nullptr), E_FAIL);
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(nullptr), E_FAIL);
}

TEST(ClientTexts, ArePassedOverWhereTheyAreDamagedOrNobodys) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const wchar_t*, const char*> cases{
        {L"1:YQA=", "a"},        {L"1:YQA=;1:YgA=;", "b"},
        {L";;;1:YQA=;x", "a"},   {L"1:", ""},
        {L"1", "old"},           {L"0:YQA=", "old"},
        {L"2:YQA=", "old"},      {L"4294967297:YQA=", "old"},
        {L"-1:YQA=", "old"},     {L":YQA=", "old"},
        {L" 1:YQA=", "old"},     {L"1x:YQA=", "old"},
        {L"1:Y", "old"},         {L"1:YQ==", "old"},
        {L"1:YQA=:YQA=", "old"}, {L"1:\u65E5", "old"},
        {L"\u0131:YQA=", "old"}, {L"99999999999999999999:YQA=", "old"},
    };
    for (const auto& [texts, expected] : cases) {
        OpenAnnotations annotations;
        annotations.Read(JobWith({PlainText(L"old"), Stamp(VAL_TIME_STAMP_DATE, {}, {}, {}, L"old")}));
        ClientJobData2ReaderWriter data;
        data.AddOrReplaceInParameterList(205, CXString(texts));
        EXPECT_EQ(annotations.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
        EXPECT_EQ(Utf8(annotations.GetText()), expected) << CXString(texts);
        annotations.SelectAnnotationElement(0);
        EXPECT_EQ(annotations.GetText(), L"old");
    }
}

} // namespace
