#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/UtcTime.h>

/// The passcode of a job that is held at the device for its user, who shows a card and needs none: the device
/// wants one all the same. Four digits; jobs of one second have the same.
class OV_FILTER_UTILITIES_API HeldJobPasscode {
public:
    using Clock = UtcTime (*)();

    HeldJobPasscode() = delete;

    /// Seeds the C library's random numbers.
    [[nodiscard]] static CXString Make();
    /// Where the time comes from, for tests; null for the system's. Gives back what it was.
    static Clock SetClock(Clock clock) noexcept;
};
