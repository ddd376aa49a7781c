#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <Locale/UserLocale.h>
#include <System/SystemZone.h>

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

constexpr std::time_t january = 1705320000; // 15 January 2024, 12:00 UTC
constexpr std::time_t july = 1721044800;    // 15 July 2024, 12:00 UTC

std::string Rule(const SYSTEMTIME& rule) {
    if (rule.wMonth == 0) return "none";
    return std::to_string(rule.wMonth) + "/" + std::to_string(rule.wDay) + "/" +
           std::to_string(rule.wDayOfWeek) + " " + std::to_string(rule.wHour);
}

struct Described {
    DWORD result;
    std::string rules;
    std::wstring names;
};

Described Describe(const char* name, std::time_t now) {
    const EnvironmentVariable variable("TZ", name);
    TIME_ZONE_INFORMATION zone{};
    const DWORD result = OvPlatform::DescribeSystemZone(now, zone);
    return {result,
            std::to_string(zone.Bias) + " " + std::to_string(zone.DaylightBias) + " daylight " +
                Rule(zone.DaylightDate) + " standard " + Rule(zone.StandardDate),
            std::wstring(zone.StandardName) + L", " + zone.DaylightName};
}

TEST(SystemZone, TellsRulesNamesAndWhichTimeHolds) {
    const OvPlatform::UserLocale english(L"en-US");
    const Rows<const char*, DWORD, DWORD, std::string, std::wstring> cases{
        {"Europe/Berlin", TIME_ZONE_ID_STANDARD, TIME_ZONE_ID_DAYLIGHT,
         "-60 -60 daylight 3/5/0 2 standard 10/5/0 3",
         L"Central European Standard Time, Central European Summer Time"},
        {":America/New_York", TIME_ZONE_ID_STANDARD, TIME_ZONE_ID_DAYLIGHT,
         "300 -60 daylight 3/2/0 2 standard 11/1/0 2", L"Eastern Standard Time, Eastern Daylight Time"},
        // South of the equator, with names that are too long.
        {"Australia/Sydney", TIME_ZONE_ID_DAYLIGHT, TIME_ZONE_ID_STANDARD,
         "-600 -60 daylight 10/1/0 2 standard 4/1/0 3", L"AEST, AEDT"},
        // Its table calls winter the exception.
        {"Europe/Dublin", TIME_ZONE_ID_STANDARD, TIME_ZONE_ID_DAYLIGHT,
         "0 -60 daylight 3/5/0 1 standard 10/5/0 2", L"Greenwich Mean Time, Irish Standard Time"},
        {"Asia/Kolkata", TIME_ZONE_ID_UNKNOWN, TIME_ZONE_ID_UNKNOWN, "-330 0 daylight none standard none",
         L"India Standard Time, India Standard Time"},
        {"UTC", TIME_ZONE_ID_UNKNOWN, TIME_ZONE_ID_UNKNOWN, "0 0 daylight none standard none",
         L"Coordinated Universal Time, Coordinated Universal Time"},
        // Described and not named.
        {"CET-1CEST,M3.5.0,M10.5.0/3", TIME_ZONE_ID_STANDARD, TIME_ZONE_ID_DAYLIGHT,
         "-60 -60 daylight 3/5/0 2 standard 10/5/0 3", L"CET, CEST"},
        {"<+0330>-3:30", TIME_ZONE_ID_UNKNOWN, TIME_ZONE_ID_UNKNOWN, "-210 0 daylight none standard none",
         L"+0330, +0330"},
    };
    for (const auto& [name, inJanuary, inJuly, rules, names] : cases) {
        const Described described = Describe(name, january);
        EXPECT_EQ(inJanuary, described.result) << name;
        EXPECT_EQ(inJuly, Describe(name, july).result) << name;
        EXPECT_EQ(rules, described.rules) << name;
        EXPECT_EQ(names, described.names) << name;
    }
}

TEST(SystemZone, HasTheRulesOfItsYearAndTheNamesOfTheUser) {
    const OvPlatform::UserLocale german(L"de-DE");
    // Summer time was given up in 2016, and so was the name of a time that is none.
    constexpr std::time_t july2015 = 1436961600;
    EXPECT_EQ("-120 -60 daylight 3/5/0 3 standard 11/2/0 4", Describe("Europe/Istanbul", july2015).rules);
    EXPECT_EQ("-180 0 daylight none standard none", Describe("Europe/Istanbul", july).rules);
    EXPECT_EQ(L"Mitteleurop\u00E4ische Normalzeit, Mitteleurop\u00E4ische Sommerzeit",
              Describe("Europe/Berlin", july).names);
}

TEST(SystemZone, IsAskedForNow) {
    const EnvironmentVariable variable("TZ", "Etc/GMT+7");
    TIME_ZONE_INFORMATION zone{};
    EXPECT_EQ(static_cast<DWORD>(TIME_ZONE_ID_UNKNOWN), GetTimeZoneInformation(&zone));
    EXPECT_EQ(420, zone.Bias);
    EXPECT_EQ(TIME_ZONE_ID_INVALID, GetTimeZoneInformation(nullptr));
    const OvPlatform::FaultInjectionScope fault(1);
    EXPECT_EQ(TIME_ZONE_ID_INVALID, GetTimeZoneInformation(&zone));
    EXPECT_EQ(static_cast<DWORD>(ERROR_OUTOFMEMORY), GetLastError());
}

} // namespace
