#include "Support/EnvironmentVariable.h"
#include "Support/SkipOnWindows.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <SystemServices/UtcTime.h>

#include <gtest/gtest.h>

#include <ctime>

namespace {

std::tm fields(int year, int month, int day, int hour, int minute, int second) {
    std::tm result{};
    result.tm_year = year - 1900;
    result.tm_mon = month - 1;
    result.tm_mday = day;
    result.tm_hour = hour;
    result.tm_min = minute;
    result.tm_sec = second;
    return result;
}

// Date, time, day of the week and of the year.
std::string text(const std::tm& time) {
    char buffer[40];
    return {buffer, std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S %w %j", &time)};
}

TEST(UtcTime, BreaksDownAsTheRuntimeDoes) {
    for (const std::time_t seconds : {std::time_t{951782400}, std::time_t{4102444799}, std::time_t{-1}}) {
        const std::tm* const expected = std::gmtime(&seconds);
        if (expected == nullptr) continue; // some runtimes know none before 1970
        EXPECT_EQ(text(*expected), text(UtcTime(*expected).GetTimeInUtc()));
    }
    EXPECT_TRUE(UtcTime(fields(2025, 14, 1, 24, 0, 0)) == UtcTime(fields(2026, 2, 2, 0, 0, 0)));
    EXPECT_THROW(UtcTime(fields(1600, 12, 31, 23, 59, 59)), CPExceptionInvalidArgument);
}

TEST(UtcTime, KnowsTheTimeZone) {
    SkipOnWindows("The zone is set for the whole system.");
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    EXPECT_EQ(11, UtcTime(fields(2025, 1, 15, 10, 0, 0)).GetTimeInCurrentTimeZone().tm_hour);
    EXPECT_EQ(12, UtcTime(fields(2025, 7, 15, 10, 0, 0)).GetTimeInCurrentTimeZone().tm_hour);
}

TEST(UtcTime, MovesIntoTheNextDayKeepingItsTimeOfDay) {
    for (const int year : {1700, 2900}) {
        for (const int hour : {0, 12, 23}) {
            UtcTime time(fields(year, 5, 6, hour, 30, 15));
            const UtcTime before;
            time.EnsureTimeIsWithinOneDayAfterCurrentTime();
            EXPECT_TRUE(before <= time);
            std::tm tomorrow = UtcTime().GetTimeInUtc();
            ++tomorrow.tm_mday;
            ++tomorrow.tm_sec; // UtcTime() counts less than a second
            EXPECT_TRUE(time < UtcTime(tomorrow));
            EXPECT_EQ(text(fields(2025, 1, 1, hour, 30, 15)).substr(11, 8),
                      text(time.GetTimeInUtc()).substr(11, 8));
        }
    }
}

} // namespace
