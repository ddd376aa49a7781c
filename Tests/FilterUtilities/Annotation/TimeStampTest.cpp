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

AttributeBytesIndexedList Stamp(LONG format, LONG dateOrder = 0, LONG timePart = 0, LONG hourForm = 0) {
    return Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TIME_STAMP)},
                       {FEAT_ANNOTATION_TIME_STAMP_FORMAT, Option(format)},
                       {FEAT_ANNOTATION_TIME_STAMP_DATE_ORDER, Option(dateOrder)},
                       {FEAT_ANNOTATION_TIME_STAMP_TIME_PART, Option(timePart)},
                       {FEAT_ANNOTATION_TIME_STAMP_HOUR_FORM, Option(hourForm)}});
}
AttributeBytesIndexedList StampThatSays(const wchar_t* text) {
    return TextElement(text, L"Arial", VAL_ANNOTATION_TYPE_TIME_STAMP);
}

// ---- Separators

TEST(DateSeparators, AreTakenFromTheLocalesPictures) {
    const Rows<const wchar_t*, const char*, const char*> locales{
        {L"sv-SE", "-", ":"}, {L"fi-FI", ".", "."}, {L"sk-SK", ". ", ":"}};
    for (const auto& [locale, date, time] : locales) {
        const UserLocale user(locale);
        EXPECT_EQ(Utf8(OpenAnnotations::GetDateSeparatorByReverseEngineering()), date);
        EXPECT_EQ(Utf8(OpenAnnotations::GetTimeSeparatorByReverseEngineering()), time);
    }
    const Rows<const wchar_t*, const char*> pictures{
        {L"dd.MM.yyyy", "."}, {L"dddd', 'd MMMM", "//"}, {L"ddMMyyyy", "//"}, {L"", "//"},
        {L"yyyy", "//"},      {L"d    M", "//"},         {L"(d)  M", ")  "},  {L"gg y/M/d", " "},
        {L"-", "//"},         {L"d\u5E74M", "\u5E74"}};
    for (const auto& [picture, separator] : pictures)
        EXPECT_EQ(Utf8(DateAndTimeSeparators::DateSeparatorIn(picture)), separator);
    EXPECT_EQ(Utf8(DateAndTimeSeparators::TimeSeparatorIn(L"tt h.mm.ss")), ".");
    EXPECT_EQ(Utf8(DateAndTimeSeparators::TimeSeparatorIn(L"")), ":");
}

TEST(DateSeparators, OfAProcessAreThoseOfItsFirstJob) {
    const UserLocale user(L"fi-FI");
    const std::string inSettings = "<date-separator-api>~</date-separator-api>"
                                   "<time-separator-api>h</time-separator-api>";
    const auto inAttributes = Attributes({{926, Text(L"*")}, {927, Text(L"^")}});
    const auto blank = Attributes({{926, Text(L" ")}, {927, Text(L"\t")}});
    const Rows<std::string, AttributeBytesIndexedList, std::string> cases{
        {inSettings, inAttributes, "~|h"},
        {"<deeper>" + inSettings + "</deeper>", inAttributes, "*|^"},
        {"<date-separator-api/><time-separator-api specified='false'>h</time-separator-api>", {}, ".|."},
        {"", blank, "/|:"}};
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
            auto attributes = Attributes({{926, Text(separator)}, {927, Text(separator)}});
            OpenAnnotations().InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(settings, attributes);
        });
    }
    for (std::thread& job : jobs)
        job.join();
    const std::string pair = ProcessSeparators::Show();
    EXPECT_TRUE(pair.size() == 3 && pair.front() == pair.back()) << pair;
    DateAndTimeSeparators slow;
    slow.SetOnFirstUse([&] {
        slow.Set({L"of the faster one", L""});
        return DateAndTimeSeparators::Separators{L"late", L""};
    });
    EXPECT_EQ(slow.Get().date, L"of the faster one");
    slow.SetOnFirstUse([] {
        ADD_FAILURE() << "they are there";
        return DateAndTimeSeparators::Separators{};
    });
}

// ---- Texts

TEST(TimeStamps, SayWhatTheirFieldsAskFor) {
    const Rows<const wchar_t*, AttributeBytesIndexedList, const char*> cases{
        {L"en-US", Stamp(10835, 10845, 10848, 10850), "1~5~2026 9h07h03 AM"},
        {L"en-US", Stamp(10836, 10846), "5~1~2026"},
        {L"en-US", Stamp(10837), "9h07h03"},
        {L"en-US", Stamp(10838, 0, 0, 10851), "Mon 1~5~2026 9h07h03"},
        {L"en-US", Stamp(10839, 10847), "Mon 2026~1~5"},
        {L"en-US", Stamp(10840), "1~5~2026 9h07h03"},
        {L"en-US", Stamp(10842, 0, 10848), "1~5~2026 9h07h03"},
        {L"en-US", Stamp(0), "1~5~2026 9h07h03"},
        {L"en-US", Stamp(10837, 0, 10849), "9h07h03 Japan Standard Time"},
        {L"en-US", Stamp(10836, 0, 10849), "1~5~2026"},
        {L"ja-JP", Stamp(10839, 10847), "\u6708 2026~1~5"},
    };
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    const ProcessSeparators separators(L"~", L"h");
    for (const auto& [locale, stamp, expected] : cases) {
        const UserLocale user(locale);
        OpenAnnotations annotations;
        annotations.Read(JobWith({stamp}));
        annotations.SetJobSubmitTimeInLocalTime({2026, 1, 1, 5, 9, 7, 3, 0}); // a Monday
        EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), S_OK);
        EXPECT_EQ(Utf8(annotations.GetText()), expected);
    }
    for (const char* const place : {"Europe/Berlin", "Australia/Sydney"}) { // where seasons are opposite
        const EnvironmentVariable there("TZ", place);
        TIME_ZONE_INFORMATION names{};
        const bool isSummer = GetTimeZoneInformation(&names) == TIME_ZONE_ID_DAYLIGHT;
        OpenAnnotations annotations;
        annotations.Read(JobWith({Stamp(10837, 0, 10849)}));
        annotations.SetJobSubmitTimeInLocalTime({2026, 1, 1, 5, 9, 7, 3, 0});
        EXPECT_EQ(annotations.GenerateTimstampAnnotationText(),
                  L"9h07h03 " + CXString(isSummer ? names.DaylightName : names.StandardName));
    }
}

TEST(TimeStamps, LeaveOutAPartThatCannotBeFormatted) {
    const ProcessSeparators none;
    OpenAnnotations annotations;
    annotations.Read(JobWith({TextElement(L"kept")}));
    EXPECT_EQ(annotations.ApplyTimstampAnnotationText(), E_INVALIDARG);
    EXPECT_EQ(annotations.GetText(), L"kept");
    EXPECT_EQ(ProcessSeparators::Show(), "|") << "nobody needs them";
    annotations.Read(JobWith({Stamp(VAL_TIME_STAMP_DAY_DATE_TIME, 0, VAL_TIME_STAMP_HOUR_MINUTE_ZONE)}));
    EXPECT_NE(ProcessSeparators::Show(), "|");
    annotations.SetJobSubmitTimeInLocalTime({2026, 13, 1, 5, 9, 7, 3, 0});
    EXPECT_TRUE(Utf8(annotations.GenerateTimstampAnnotationText()).starts_with("9:07:03 "))
        << "no such month";
    annotations.SetJobSubmitTimeInLocalTime({2026, 13, 1, 5, 25, 7, 3, 0});
    EXPECT_EQ(annotations.GenerateTimstampAnnotationText(), L"") << "and without a time no zone";
}

// ---- The time of a job

class JobsTime : public testing::Test {
protected:
    JobsTime() {
        OvPlatform::QueueDescription queue;
        queue.printerName = L"Office";
        using namespace std::chrono;
        queue.jobs.resize(1);
        queue.jobs[0].id = 7;
        queue.jobs[0].submitted = sys_days(2026y / 7 / 14) + 22h + 30min;
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
    ProcessSeparators m_separators{L".", L":"};
    UserLocale m_user{L"en-US"};
    EnvironmentVariable m_zone{"TZ", "Europe/Berlin"};
    Printer m_printer;
};

TEST_F(JobsTime, FillsStampsThatAreEmptyInLocalTime) {
    const auto job = JobWith({Stamp(VAL_TIME_STAMP_DATE_TIME), StampThatSays(L"as sent"), TextElement(L"")});
    OpenAnnotations annotations;
    annotations.Read(job);
    EXPECT_EQ(Fill(annotations, 8, true), E_FAIL) << "a job that the spooler does not know";
    EXPECT_EQ(annotations.AllTexts(), (Texts{"", "as sent", ""}));
    EXPECT_EQ(Fill(annotations), S_OK);
    EXPECT_EQ(annotations.AllTexts(), (Texts{"7.15.2026 0:30:00", "as sent", ""}));
    EXPECT_EQ(Fill(annotations, 8, true), S_OK) << "the time is known";
    EXPECT_EQ(annotations.AllTexts(), (Texts{"7.15.2026 0:30:00", "7.15.2026 0:30:00", ""}));
}

TEST_F(JobsTime, IsPartOfTheMarkOfTheJob) {
    const Rows<const wchar_t*, const wchar_t*, const char*> cases{
        {L"anna", L"%s", "anna,  7.15.2026 12:30:00 AM,  %s"}, {L"anna", L"", "7.15.2026 12:30:00 AM"}};
    for (const auto& [first, second, expected] : cases) {
        OpenAnnotations annotations;
        annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
        EXPECT_EQ(Fill(annotations, 8, false, first, second), E_FAIL);
        EXPECT_EQ(annotations.AllTexts(), Texts{""});
        EXPECT_EQ(Fill(annotations, 7, true, first, second), S_OK);
        EXPECT_EQ(Fill(annotations, 7, true, L"other", L"words"), S_OK) << "it is not made anew";
        EXPECT_EQ(annotations.AllTexts(), Texts{expected});
    }
}

TEST_F(JobsTime, ComesInAFaceThatCanShowTheMark) {
    // The text that there is, whether the mark is to be regenerated, and whether the face is chosen anew.
    const Rows<const wchar_t*, bool, bool> cases{{L"plain", false, false},
                                                 {L"\u5831\u544A", false, true},
                                                 {L"\u5831\u544A", true, false},
                                                 {L"", true, false}};
    for (const auto& [text, regenerate, isChosen] : cases) {
        OpenAnnotations annotations;
        annotations.Read({}, VAL_PRINT_ID_ON_ALL_PAGES);
        annotations.GetSelected()->faceName = L"DejaVu Sans";
        annotations.GetSelected()->text = text;
        EXPECT_EQ(Fill(annotations, 7, regenerate), S_OK);
        EXPECT_EQ(annotations.GetFaceName() == L"DejaVu Sans", !isChosen);
        if (isChosen) {
            EXPECT_TRUE(
                annotations.GetGdiDeviceContextRef().CanFontDisplayString(text, annotations.GetFaceName()));
        }
    }
}

TEST(JobMark, HasAFaceOfTheUsersLanguage) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const wchar_t*, const wchar_t*> cases{{L"ja-JP", L"Meiryo UI"},
                                                     {L"ko-KR", L"Malgun Gothic"},
                                                     {L"zh-CN", L"Microsoft YaHei UI"},
                                                     {L"zh-SG", L"Microsoft YaHei UI"},
                                                     {L"zh-HK", L"Microsoft JhengHei UI"},
                                                     {L"de-DE", L"Segoe UI"}};
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
    const auto job = JobWith({TextElement(L"a"), Stamp(VAL_TIME_STAMP_DATE), Stamp(VAL_TIME_STAMP_DATE)});
    OpenAnnotations client;
    client.Read(job, VAL_PRINT_ID_ON_ALL_PAGES);
    client.GetSelected()->text = L"anna";
    client.SelectAnnotationElement(1);
    client.GetSelected()->text = L"\u4E94\u6708; 5:00";
    ClientJobData2ReaderWriter data;
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
    CXString sent;
    EXPECT_TRUE(data.GetStringFromParameterList(205, sent));
    EXPECT_EQ(Utf8(sent), "1:lE4IZzsAIAA1ADoAMAAwAA==;2:;3:YQBuAG4AYQA=;");

    OpenAnnotations printer;
    printer.Read(job, VAL_PRINT_ID_ON_ALL_PAGES);
    EXPECT_EQ(printer.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
    EXPECT_EQ(printer.AllTexts(), client.AllTexts());

    client.SetFaxAnnotationSettings(true);
    client.Read({});
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_FALSE);
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(&data), S_OK);
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
    EXPECT_EQ(client.ReadClientGeneratedTimestampTextFromClientJobData2(nullptr), E_FAIL);
    EXPECT_EQ(client.SetClientGeneratedTimestampTextInClientJobData2(nullptr), E_FAIL);
}

TEST(ClientTexts, ArePassedOverWhereTheyAreDamagedOrNobodys) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const wchar_t*, const char*> cases{{L"1:YQA=;1:YgA=;", "b"},
                                                  {L";;;1:YQA=;x", "a"},
                                                  {L"1:", ""},
                                                  {L"1", "old"},
                                                  {L"0:YQA=", "old"},
                                                  {L"2:YQA=", "old"},
                                                  {L"-1:YQA=", "old"},
                                                  {L":YQA=", "old"},
                                                  {L"18446744073709551617:YQA=", "old"},
                                                  {L"1:Y", "old"},
                                                  {L"1:YQ==", "old"},
                                                  {L"1:YQA=:YQA=", "old"},
                                                  {L"1x:YQA=", "old"},
                                                  {L" 1:YQA=", "old"},
                                                  {L"\u0131:YQA=", "old"}};
    for (const auto& [texts, expected] : cases) {
        OpenAnnotations annotations;
        annotations.Read(JobWith({TextElement(L"old"), StampThatSays(L"old")}));
        ClientJobData2ReaderWriter data;
        data.AddOrReplaceInParameterList(205, CXString(texts));
        EXPECT_EQ(annotations.ReadClientGeneratedTimestampTextFromClientJobData2(&data), S_OK);
        EXPECT_EQ(annotations.AllTexts(), (Texts{"old", expected})) << CXString(texts);
    }
}

} // namespace
