#include "Com/FaultInjection.h"

#include <chrono>
#include <ctime>
#include <optional>

namespace {

using std::chrono::days;
using std::chrono::sys_days;

// File times count 100-nanosecond ticks since 1 January 1601.
using Ticks = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;
using TickTime = std::chrono::time_point<std::chrono::system_clock, Ticks>;
constexpr sys_days epoch{std::chrono::year{1601} / 1 / 1};
constexpr int lastYear = 30827;

using Minutes = std::chrono::duration<LONGLONG, std::ratio<60>>;

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

/// Nothing if a field is out of range. The day of the week is not looked at.
std::optional<TickTime> ToTime(const SYSTEMTIME& time) {
    const std::chrono::year_month_day date{std::chrono::year{time.wYear}, std::chrono::month{time.wMonth},
                                           std::chrono::day{time.wDay}};
    if (time.wYear < 1601 || time.wYear > lastYear || !date.ok() || time.wHour > 23 || time.wMinute > 59 ||
        time.wSecond > 59 || time.wMilliseconds > 999)
        return std::nullopt;
    return sys_days{date} + std::chrono::hours{time.wHour} + std::chrono::minutes{time.wMinute} +
           std::chrono::seconds{time.wSecond} + std::chrono::milliseconds{time.wMilliseconds};
}

std::optional<SYSTEMTIME> ToSystemTime(TickTime time) {
    if (time < epoch) return std::nullopt;
    const sys_days day = std::chrono::floor<days>(time);
    const std::chrono::year_month_day date{day};
    if (static_cast<int>(date.year()) > lastYear) return std::nullopt;
    const std::chrono::hh_mm_ss<Ticks> clock{time - day};
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    result.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    result.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    result.wDayOfWeek = static_cast<WORD>(std::chrono::weekday{day}.c_encoding());
    result.wHour = static_cast<WORD>(clock.hours().count());
    result.wMinute = static_cast<WORD>(clock.minutes().count());
    result.wSecond = static_cast<WORD>(clock.seconds().count());
    result.wMilliseconds =
        static_cast<WORD>(std::chrono::duration_cast<std::chrono::milliseconds>(clock.subseconds()).count());
    return result;
}

BOOL Store(std::optional<TickTime> time, SYSTEMTIME* result) {
    const auto fields = time ? ToSystemTime(*time) : std::nullopt;
    if (!fields) return Fail(ERROR_INVALID_PARAMETER);
    *result = *fields;
    return TRUE;
}

TickTime Now() { return std::chrono::time_point_cast<Ticks>(std::chrono::system_clock::now()); }

/// What the system's own zone adds to UTC at that moment.
Ticks LocalOffset(TickTime utc) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(utc);
    std::tm local{};
    return localtime_r(&seconds, &local) != nullptr ? std::chrono::seconds{local.tm_gmtoff}
                                                    : std::chrono::seconds{0};
}

/// When a rule of a zone strikes in `year`, in the clock time that holds until then.
std::optional<TickTime> RuleTime(const SYSTEMTIME& rule, int year) {
    if (rule.wYear != 0) {
        if (rule.wYear != year) return std::nullopt;
        return ToTime(rule);
    }
    if (rule.wMonth < 1 || rule.wMonth > 12 || rule.wDay < 1 || rule.wDay > 5 || rule.wDayOfWeek > 6)
        return std::nullopt;
    const auto month = std::chrono::year{year} / std::chrono::month{rule.wMonth};
    const std::chrono::weekday weekday{rule.wDayOfWeek};
    const std::chrono::year_month_weekday nth{month.year(), month.month(), weekday[rule.wDay]};
    const sys_days day =
        rule.wDay == 5 || !nth.ok() ? sys_days{month / weekday[std::chrono::last]} : sys_days{nth};
    return day + std::chrono::hours{rule.wHour} + std::chrono::minutes{rule.wMinute} +
           std::chrono::seconds{rule.wSecond};
}

/// What is added to UTC by a zone's rules. `time` is UTC, or local clock time if `isLocal`.
Ticks ZoneOffset(const TIME_ZONE_INFORMATION& zone, TickTime time, bool isLocal) {
    const Ticks standard = -Minutes{zone.Bias + zone.StandardBias};
    const Ticks daylight = -Minutes{zone.Bias + zone.DaylightBias};
    if (zone.StandardDate.wMonth == 0 || zone.DaylightDate.wMonth == 0) return -Minutes{zone.Bias};
    // The year is that of the local clock.
    const TickTime clock = isLocal ? time : time + standard;
    const std::chrono::year_month_day date{std::chrono::floor<days>(clock)};
    const int year = static_cast<int>(date.year());
    const auto daylightStart = RuleTime(zone.DaylightDate, year);
    const auto standardStart = RuleTime(zone.StandardDate, year);
    if (!daylightStart || !standardStart) return -Minutes{zone.Bias};
    const TickTime start = isLocal ? *daylightStart : *daylightStart - standard;
    const TickTime end = isLocal ? *standardStart : *standardStart - daylight;
    // South of the equator daylight time spans the turn of the year.
    const bool isDaylight = start < end ? time >= start && time < end : time >= start || time < end;
    return isDaylight ? daylight : standard;
}

} // namespace

void GetSystemTime(LPSYSTEMTIME time) { *time = ToSystemTime(Now()).value_or(SYSTEMTIME{}); }

void GetLocalTime(LPSYSTEMTIME time) {
    const TickTime now = Now();
    *time = ToSystemTime(now + LocalOffset(now)).value_or(SYSTEMTIME{});
}

void GetSystemTimeAsFileTime(LPFILETIME time) {
    const auto ticks = static_cast<ULONGLONG>((Now() - epoch).count());
    *time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* time, LPFILETIME fileTime) {
    if (time == nullptr || fileTime == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    if (OvPlatform::FaultPointHit()) return FALSE;
    const auto point = ToTime(*time);
    if (!point) return Fail(ERROR_INVALID_PARAMETER);
    const auto ticks = static_cast<ULONGLONG>((*point - epoch).count());
    *fileTime = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, LPSYSTEMTIME time) {
    if (fileTime == nullptr || time == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    if (OvPlatform::FaultPointHit()) return FALSE;
    const ULONGLONG ticks = static_cast<ULONGLONG>(fileTime->dwHighDateTime) << 32 | fileTime->dwLowDateTime;
    // Published limit; the sum with the epoch stays within range below it.
    if (ticks >= 0x8000000000000000ULL - 1) return Fail(ERROR_INVALID_PARAMETER);
    return Store(TickTime{epoch} + Ticks{static_cast<LONGLONG>(ticks)}, time);
}

BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* universal,
                                     LPSYSTEMTIME local) {
    if (universal == nullptr || local == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    if (OvPlatform::FaultPointHit()) return FALSE;
    const auto utc = ToTime(*universal);
    if (!utc) return Fail(ERROR_INVALID_PARAMETER);
    return Store(*utc + (zone != nullptr ? ZoneOffset(*zone, *utc, false) : LocalOffset(*utc)), local);
}

BOOL TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local,
                                     LPSYSTEMTIME universal) {
    if (universal == nullptr || local == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    if (OvPlatform::FaultPointHit()) return FALSE;
    const auto clock = ToTime(*local);
    if (!clock) return Fail(ERROR_INVALID_PARAMETER);
    if (zone != nullptr) return Store(*clock - ZoneOffset(*zone, *clock, true), universal);
    // The offset that holds at the moment which it leads to itself.
    const TickTime guess = *clock - LocalOffset(*clock);
    return Store(*clock - LocalOffset(guess), universal);
}

LONG CompareFileTime(const FILETIME* left, const FILETIME* right) {
    const auto value = [](const FILETIME* time) {
        return static_cast<ULONGLONG>(time->dwHighDateTime) << 32 | time->dwLowDateTime;
    };
    return value(left) < value(right) ? -1 : value(left) > value(right) ? 1 : 0;
}

ULONGLONG GetTickCount64() {
    using namespace std::chrono;
    return static_cast<ULONGLONG>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

DWORD GetTickCount() { return static_cast<DWORD>(GetTickCount64()); }

BOOL QueryPerformanceCounter(PLARGE_INTEGER count) {
    count->QuadPart = std::chrono::steady_clock::now().time_since_epoch().count();
    return TRUE;
}

BOOL QueryPerformanceFrequency(PLARGE_INTEGER frequency) {
    using Period = std::chrono::steady_clock::period;
    frequency->QuadPart = Period::den / Period::num;
    return TRUE;
}
