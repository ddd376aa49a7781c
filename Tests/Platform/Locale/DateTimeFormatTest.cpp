#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <Locale/UserLocale.h>

#include <windows.h>
#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Fact(const wchar_t* locale, LCTYPE type) {
    wchar_t text[100] = L"?";
    const int length = GetLocaleInfoEx(locale, type, text, 100);
    EXPECT_EQ(wcslen(text) + 1, static_cast<std::size_t>(length));
    EXPECT_EQ(length, GetLocaleInfoEx(locale, type, nullptr, 0));
    return text;
}

constexpr SYSTEMTIME morning = {2026, 1, 0, 5, 9, 7, 3, 0}; // a Monday, which the field does not say

std::wstring Date(const wchar_t* locale, const wchar_t* picture, const SYSTEMTIME& date = morning,
                  DWORD flags = 0) {
    wchar_t text[260] = L"?";
    const int length = GetDateFormatEx(locale, flags, &date, picture, text, 260, nullptr);
    EXPECT_EQ(length, GetDateFormatEx(locale, flags, &date, picture, nullptr, 0, nullptr));
    return length == 0 ? L"error " + std::to_wstring(GetLastError()) : text;
}

std::wstring Time(const wchar_t* locale, const wchar_t* picture, const SYSTEMTIME& time = morning,
                  DWORD flags = 0) {
    wchar_t text[260] = L"?";
    const int length = GetTimeFormatEx(locale, flags, &time, picture, text, 260);
    EXPECT_EQ(length, GetTimeFormatEx(locale, flags, &time, picture, nullptr, 0));
    return length == 0 ? L"error " + std::to_wstring(GetLastError()) : text;
}

// Under Wine, rows agree down to where a test says.

using PictureRows = Rows<const wchar_t*, std::wstring, std::wstring>;

void ExpectPictures(const PictureRows& rows) {
    for (const auto& [locale, date, time] : rows) {
        EXPECT_EQ(date, Fact(locale, LOCALE_SSHORTDATE)) << date;
        EXPECT_EQ(time, Fact(locale, LOCALE_STIMEFORMAT)) << time;
    }
}

TEST(LocalePictures, AreThoseThatTheUsersOfALocaleKnow) {
    ExpectPictures({
        {L"en-US", L"M/d/yyyy", L"h:mm:ss tt"},
        {L"en-GB", L"dd/MM/yyyy", L"HH:mm:ss"},
        {L"fr-FR", L"dd/MM/yyyy", L"HH:mm:ss"},
        {L"sv-SE", L"yyyy-MM-dd", L"HH:mm:ss"},
        {L"sk-SK", L"d. M. yyyy", L"H:mm:ss"},
        {L"fi-FI", L"d.M.yyyy", L"H.mm.ss"},
        {L"", L"MM/dd/yyyy", L"HH:mm:ss"},
    });
    SkipUnderWine("it keeps marks of direction, and has other pictures for these");
    ExpectPictures({
        {L"de-DE", L"dd.MM.yyyy", L"HH:mm:ss"},
        {L"ja-JP", L"yyyy/MM/dd", L"H:mm:ss"},
        {L"ar-SA", L"d/M/yyyy", L"h:mm:ss tt"},
        {L"th-TH", L"d/M/yyyy", L"HH:mm:ss"},
        {L"zh-TW", L"yyyy/M/d", L"tt h:mm:ss"},
        {L"bg-BG", L"d.MM.yyyy '\u0433'.", L"H:mm:ss '\u0447'."},
    });
    wchar_t text[4];
    EXPECT_EQ(0, GetLocaleInfoEx(L"en-US", LOCALE_SSHORTDATE | LOCALE_RETURN_NUMBER, text, 4));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_FLAGS), GetLastError());
    const OvPlatform::UserLocale german(L"de-DE");
    EXPECT_EQ(L"dd.MM.yyyy", Fact(LOCALE_NAME_USER_DEFAULT, LOCALE_SSHORTDATE | LOCALE_NOUSEROVERRIDE));
}

using DateRows = Rows<const wchar_t*, const wchar_t*, std::wstring>;

void ExpectDates(const DateRows& rows) {
    for (const auto& [locale, picture, text] : rows)
        EXPECT_EQ(text, Date(locale, picture)) << (picture != nullptr ? picture : L"no picture");
}

TEST(DateFormat, FollowsThePicture) {
    ExpectDates({
        {L"en-US", L"M'//'d'//'yyyy", L"1//5//2026"},
        {L"en-US", L"dddd, MMMM dd yy", L"Monday, January 05 26"},
        {L"en-US", L"ddd MMM yyyyyy", L"Mon Jan 2026"},
        {L"en-US", L"'o''clock' d ''x", L"o'clock 5 x"},
        {L"en-US", L"d 'yyyy", L"5 yyyy"}, // never closed
        {L"en-US", L"", L""},
        {L"ja-JP", L"yyyy/M/d (ddd)", L"2026/1/5 (\u6708)"},
        {L"cs-CZ", L"d. MMMM | ", L"5. ledna | "},
        {L"", L"ddd MMM", L"Mon Jan"},
        {L"en-US", nullptr, L"1/5/2026"},
    });
    EXPECT_EQ(L"Montag, 5. Januar 2026", Date(L"de-DE", nullptr, morning, DATE_LONGDATE));
    EXPECT_EQ(L"2 10005", Date(L"en-US", L"d yyyy", {10005, 3, 0, 2, 0, 0, 0, 0}));
    SkipUnderWine("it has one calendar, one form of a name, and two digits at least");
    ExpectDates({
        {L"en-US", L"(y) gg", L"(26) AD"},
        {L"de-DE", L"ddd", L"Mo"},
        {L"cs-CZ", L"MMMM yyyy", L"leden 2026"},
        {L"th-TH", L"d/M/yyyy yy", L"5/1/2569 69"},
    });
    EXPECT_EQ(L"5 05", Date(L"en-US", L"y yy", {2005, 3, 0, 2, 0, 0, 0, 0}));
    // The words are the user's, and the letters no longer mean what they do in patterns of the library.
    const OvPlatform::UserLocale german(L"de-DE");
    EXPECT_EQ(L"Montag QWEa", Date(nullptr, L"dddd QWEa"));
}

TEST(TimeFormat, FollowsThePicture) {
    constexpr SYSTEMTIME midnight = {2026, 1, 0, 5, 0, 0, 0, 0};
    constexpr SYSTEMTIME evening = {0, 0, 0, 0, 21, 59, 8, 0}; // the date is not looked at
    const Rows<const wchar_t*, const wchar_t*, SYSTEMTIME, DWORD, std::wstring> cases{
        {L"en-US", L"h':'mm':'ss tt", morning, 0, L"9:07:03 AM"},
        {L"en-US", L"h':'mm':'ss tt", midnight, 0, L"12:00:00 AM"},
        {L"en-US", L"hh:m:s t", evening, 0, L"09:59:8 P"},
        {L"en-US", L"HHH.mmm.sss ttt dd", evening, 0, L"21.59.08 PM dd"},
        {L"ja-JP", L"tt h:mm", evening, 0, L"\u5348\u5F8C 9:59"},
        {L"de-DE", nullptr, morning, 0, L"09:07:03"},
        {L"en-US", nullptr, evening, TIME_NOSECONDS, L"9:59 PM"},
        {L"en-US", nullptr, evening, TIME_NOMINUTESORSECONDS | TIME_NOTIMEMARKER, L"9"},
        {L"zh-TW", nullptr, evening, TIME_NOTIMEMARKER | TIME_FORCE24HOURFORMAT, L"21:59:08"},
    };
    for (const auto& [locale, picture, time, flags, text] : cases)
        EXPECT_EQ(text, Time(locale, picture, time, flags)) << (picture != nullptr ? picture : locale);
}

TEST(DateAndTimeFormat, RefuseWhatIsNoTimeNoLocaleOrNoPicture) {
    const std::wstring invalid = L"error " + std::to_wstring(ERROR_INVALID_PARAMETER);
    const std::wstring flags = L"error " + std::to_wstring(ERROR_INVALID_FLAGS);
    EXPECT_EQ(invalid, Time(L"en-US", L"h", {2026, 2, 0, 2, 24, 0, 0, 0}));
    EXPECT_EQ(invalid, Date(L"no locale", L"d"));
    EXPECT_EQ(flags, Date(L"en-US", L"d", morning, DATE_SHORTDATE));
    EXPECT_EQ(flags, Date(L"en-US", nullptr, morning, DATE_SHORTDATE | DATE_LONGDATE));
    SkipUnderWine("it takes flags, days and pictures as they come");
    EXPECT_EQ(invalid, Date(L"en-US", L"d", {2026, 2, 0, 29, 0, 0, 0, 0}));
    EXPECT_EQ(invalid, Date(L"en-US", L"d", {1600, 2, 0, 2, 0, 0, 0, 0}));
    EXPECT_EQ(flags, Time(L"en-US", nullptr, morning, 0x100));
    EXPECT_EQ(invalid, Date(L"en-US", std::wstring(0x10001, L'd').c_str()));
    EXPECT_EQ(0x10001, GetDateFormatEx(L"en-US", 0, &morning, std::wstring(0x10000, L'-').c_str(), nullptr, 0,
                                       nullptr));
    wchar_t text[3] = L"??";
    EXPECT_EQ(0, GetDateFormatEx(L"en-US", 0, &morning, L"yyyy", text, 3, nullptr));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(0, GetTimeFormatEx(L"en-US", 0, &morning, L"HH", text, -1));
    EXPECT_EQ(0, GetDateFormatEx(L"en-US", 0, nullptr, L"yyyy", text, 3, L""));
    EXPECT_EQ(3, GetTimeFormatEx(L"en-US", 0, nullptr, L"HH", text, 3)) << "now";
    for (int call = 0; call < 2; ++call) {
        const OvPlatform::FaultInjectionScope fault(1);
        EXPECT_EQ(0, call == 0 ? GetDateFormatEx(L"en-US", 0, &morning, L"d", text, 3, nullptr)
                               : GetTimeFormatEx(L"en-US", 0, &morning, L"h", text, 3));
        EXPECT_EQ(static_cast<DWORD>(ERROR_OUTOFMEMORY), GetLastError());
    }
}

TEST(UserInterfaceLanguage, IsANumber) {
    const Rows<const wchar_t*, LANGID> cases{
        {L"ja-JP", LANGID{0x0411}}, {L"de", LANGID{0x0407}},    {L"zh-CN", LANGID{0x0804}},
        {L"zh-HK", LANGID{0x0C04}}, {L"ko-KR", LANGID{0x0412}}, {L"zh-Hans", LANGID{0x0804}},
        {L"tlh", LANGID{0x0409}},   {L"", LANGID{0x0409}},
    };
    for (const auto& [locale, language] : cases) {
        const OvPlatform::UserLocale user(locale);
        EXPECT_EQ(language, GetUserDefaultUILanguage()) << locale;
    }
}

} // namespace
