#include "SystemServices/UtcTime.h"

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/CPExceptionOSApiError.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <windows.h>

#include <chrono>

namespace {

constexpr std::uint64_t ticksPerSecond = 10'000'000;
constexpr std::uint64_t ticksPerDay = 24 * 60 * 60 * ticksPerSecond;
constexpr std::chrono::sys_days epoch = std::chrono::year(1601) / 1 / 1;

std::uint64_t now() noexcept {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

SYSTEMTIME toSystemTime(std::uint64_t ticks) {
    FILETIME time{};
    time.dwLowDateTime = static_cast<DWORD>(ticks & 0xFFFFFFFFu);
    time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    SYSTEMTIME result{};
    if (!FileTimeToSystemTime(&time, &result)) {
        ThrowFailure<CPExceptionOSApiError>([] { return "FileTimeToSystemTime failed."; });
    }
    return result;
}

std::tm toTm(const SYSTEMTIME& time) {
    const std::chrono::sys_days day = std::chrono::year(time.wYear) / time.wMonth / time.wDay;
    const std::chrono::sys_days newYear = std::chrono::year(time.wYear) / 1 / 1;
    std::tm result{};
    result.tm_year = time.wYear - 1900;
    result.tm_mon = time.wMonth - 1;
    result.tm_mday = time.wDay;
    result.tm_hour = time.wHour;
    result.tm_min = time.wMinute;
    result.tm_sec = time.wSecond;
    result.tm_wday = time.wDayOfWeek;
    result.tm_yday = static_cast<int>((day - newYear).count());
    return result;
}

} // namespace

UtcTime::UtcTime() : m_ticks(now()) {}

UtcTime::UtcTime(const std::tm& utc) : m_ticks(0) {
    const OperationScope operation("UtcTime::UtcTime");
    using namespace std::chrono;
    const year_month firstMonth = year(utc.tm_year + 1900) / January;
    const sys_seconds time = sys_days((firstMonth + months(utc.tm_mon)) / 1) + days(utc.tm_mday - 1) +
                             hours(utc.tm_hour) + minutes(utc.tm_min) + seconds(utc.tm_sec);
    const auto sinceEpoch = time - epoch;
    if (sinceEpoch.count() < 0) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The time lies before the year 1601."; });
    }
    m_ticks = static_cast<std::uint64_t>(seconds(sinceEpoch).count()) * ticksPerSecond;
}

std::tm UtcTime::GetTimeInUtc() const {
    const OperationScope operation("UtcTime::GetTimeInUtc");
    std::tm result = toTm(toSystemTime(m_ticks));
    result.tm_isdst = 0;
    return result;
}

std::tm UtcTime::GetTimeInCurrentTimeZone() const {
    const OperationScope operation("UtcTime::GetTimeInCurrentTimeZone");
    const SYSTEMTIME utc = toSystemTime(m_ticks);
    SYSTEMTIME local{};
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
        ThrowFailure<CPExceptionOSApiError>([] { return "SystemTimeToTzSpecificLocalTime failed."; });
    }
    std::tm result = toTm(local);
    result.tm_isdst = -1;
    return result;
}

void UtcTime::EnsureTimeIsWithinOneDayAfterCurrentTime() {
    const std::uint64_t current = now();
    const std::uint64_t timeOfDay = m_ticks % ticksPerDay;
    m_ticks = current - current % ticksPerDay + timeOfDay;
    if (m_ticks < current) m_ticks += ticksPerDay;
}
