#include "System/SystemZone.h"

#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"

#include <unicode/timezone.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OvPlatform {
namespace {

using std::chrono::sys_days;

/// One of the times that a zone has: how far it is ahead of UTC, and what the zone's table says of it.
struct ClockTime {
    std::chrono::seconds offset;
    bool isDaylight;
    std::string abbreviation;
};

/// When the clock is set, and what holds from then on.
struct Change {
    std::time_t moment;
    ClockTime before;
    ClockTime after;
};

ClockTime ClockAt(std::time_t moment) {
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return {};
    return {std::chrono::seconds{local.tm_gmtoff}, local.tm_isdst > 0,
            local.tm_zone != nullptr ? local.tm_zone : ""};
}

bool Differ(const ClockTime& left, const ClockTime& right) {
    return left.offset != right.offset || left.isDaylight != right.isDaylight;
}

/// The first second of the clock that holds at `end`, given that another one holds at `start`.
std::time_t FindChange(std::time_t start, std::time_t end) {
    const ClockTime before = ClockAt(start);
    while (end - start > 1) {
        const std::time_t middle = start + (end - start) / 2;
        (Differ(before, ClockAt(middle)) ? end : start) = middle;
    }
    return end;
}

/// How the clock is set in a year, by steps too small to leap over two changes.
std::vector<Change> ChangesIn(std::chrono::year year) {
    const auto startOf = [](std::chrono::year which) {
        return std::chrono::system_clock::to_time_t(sys_days{which / 1 / 1});
    };
    constexpr std::time_t step = std::chrono::seconds{std::chrono::days{3}}.count();
    const std::time_t end = startOf(year + std::chrono::years{1});
    std::vector<Change> changes;
    for (std::time_t moment = startOf(year); moment < end; moment += step) {
        const std::time_t next = (std::min)(moment + step, end);
        if (Differ(ClockAt(moment), ClockAt(next)))
            changes.push_back({FindChange(moment, next), ClockAt(moment), ClockAt(next)});
    }
    return changes;
}

/// A moment by the clock that holds until then, as a rule: the n-th weekday of a month, 5 for the last.
SYSTEMTIME Rule(const Change& change) {
    const auto clock = std::chrono::sys_seconds{std::chrono::seconds{change.moment}} + change.before.offset;
    const sys_days day = std::chrono::floor<std::chrono::days>(clock);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss<std::chrono::seconds> time{clock - day};
    const bool isLast = std::chrono::year_month_day{day + std::chrono::weeks{1}}.month() != date.month();
    const unsigned ordinal = (static_cast<unsigned>(date.day()) + 6) / 7;
    SYSTEMTIME rule{};
    rule.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    rule.wDayOfWeek = static_cast<WORD>(std::chrono::weekday{day}.c_encoding());
    rule.wDay = static_cast<WORD>(isLast ? 5U : ordinal);
    rule.wHour = static_cast<WORD>(time.hours().count());
    rule.wMinute = static_cast<WORD>(time.minutes().count());
    rule.wSecond = static_cast<WORD>(time.seconds().count());
    return rule;
}

/// The clock is put forward once and back once.
struct DaylightRules {
    Change toDaylight;
    Change toStandard;
};

std::optional<DaylightRules> FindDaylight(const std::vector<Change>& changes) {
    if (changes.size() != 2) return std::nullopt;
    const bool isForwardFirst = changes[0].after.offset > changes[0].before.offset;
    const DaylightRules rules{changes[isForwardFirst ? 0 : 1], changes[isForwardFirst ? 1 : 0]};
    const bool isThereAndBack = rules.toDaylight.after.offset == rules.toStandard.before.offset &&
                                rules.toDaylight.before.offset == rules.toStandard.after.offset;
    if (!isThereAndBack || rules.toDaylight.after.offset <= rules.toDaylight.before.offset)
        return std::nullopt;
    return rules;
}

LONG Minutes(std::chrono::seconds offset) {
    return static_cast<LONG>(std::chrono::floor<std::chrono::minutes>(offset).count());
}

/// What the Unicode library knows of the system's zone; null where it does not know the zone: one that TZ
/// describes without naming it, which the library takes for another.
std::unique_ptr<icu::TimeZone> FindNamedZone(std::time_t now) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    if (!zone) throw std::bad_alloc();
    if (const char* const variable = std::getenv("TZ")) {
        icu::UnicodeString id;
        zone->getID(id);
        if (id != icu::UnicodeString::fromUTF8(variable[0] == ':' ? variable + 1 : variable)) return nullptr;
    }
    int32_t standard = 0;
    int32_t daylight = 0;
    UErrorCode status = U_ZERO_ERROR;
    constexpr double milliseconds = 1000;
    zone->getOffset(static_cast<double>(now) * milliseconds, 0, standard, daylight, status);
    const auto offset = std::chrono::milliseconds{standard + daylight};
    return U_SUCCESS(status) && offset == ClockAt(now).offset ? std::move(zone) : nullptr;
}

void WriteName(const icu::TimeZone* zone, const ClockTime& clock, bool isDaylight, WCHAR (&buffer)[32]) {
    buffer[0] = 0;
    if (zone != nullptr) {
        icu::UnicodeString name;
        zone->getDisplayName(static_cast<UBool>(isDaylight), icu::TimeZone::LONG, name);
        const std::u16string_view units(name.getBuffer(), static_cast<std::size_t>(name.length()));
        if (CopyText(FromUtf16(units), buffer, std::size(buffer))) return;
    }
    if (!CopyText(FromUtf8(clock.abbreviation), buffer, std::size(buffer))) buffer[0] = 0;
}

} // namespace

DWORD DescribeSystemZone(std::time_t now, TIME_ZONE_INFORMATION& zone) {
    tzset();
    const ClockTime current = ClockAt(now);
    const auto clock = std::chrono::sys_seconds{std::chrono::seconds{now}} + current.offset;
    const std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(clock)};
    const std::optional<DaylightRules> rules = FindDaylight(ChangesIn(date.year()));
    const ClockTime& standard = rules ? rules->toStandard.after : current;
    const ClockTime& daylight = rules ? rules->toDaylight.after : current;
    const std::unique_ptr<icu::TimeZone> named = FindNamedZone(now);

    zone = {};
    zone.Bias = -Minutes(standard.offset);
    WriteName(named.get(), standard, false, zone.StandardName);
    WriteName(named.get(), daylight, rules.has_value(), zone.DaylightName);
    if (!rules) return TIME_ZONE_ID_UNKNOWN;
    zone.StandardDate = Rule(rules->toStandard);
    zone.DaylightDate = Rule(rules->toDaylight);
    zone.DaylightBias = -Minutes(daylight.offset - standard.offset);
    return current.offset == daylight.offset ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD;
}

} // namespace OvPlatform

DWORD GetTimeZoneInformation(LPTIME_ZONE_INFORMATION zone) {
    if (zone == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return TIME_ZONE_ID_INVALID;
    }
    if (OvPlatform::FaultPointHit()) return TIME_ZONE_ID_INVALID;
    try {
        return OvPlatform::DescribeSystemZone(std::time(nullptr), *zone);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return TIME_ZONE_ID_INVALID;
    }
}
