#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <compare>
#include <cstdint>
#include <ctime>

/// A point in time, from the year 1601 on.
class OV_UTILITIES_API UtcTime {
public:
    /// Now.
    UtcTime();
    /// From a broken-down time in UTC; fields beyond their range carry over. Throws
    /// CPExceptionInvalidArgument if it lies before 1601.
    explicit UtcTime(const std::tm& utc);

    [[nodiscard]] std::tm GetTimeInUtc() const;
    /// In the machine's time zone, with the rule in force at that time. tm_isdst is -1.
    [[nodiscard]] std::tm GetTimeInCurrentTimeZone() const;
    /// Moves the point by whole days, so that it lies at or after the current time by less than one day. The
    /// time of day in UTC stays.
    void EnsureTimeIsWithinOneDayAfterCurrentTime();

    // NOLINTNEXTLINE(modernize-use-nullptr): what the compiler writes for it
    friend auto operator<=>(const UtcTime&, const UtcTime&) noexcept = default;

private:
    std::uint64_t m_ticks; // of 100 ns since 1601, as FILETIME counts
};
