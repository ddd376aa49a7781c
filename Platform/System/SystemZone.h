#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <ctime>

namespace OvPlatform {

/// What GetTimeZoneInformation says at `now` (UTC): the zone that TZ or the system's settings name, with the
/// rules of the year around it. The later clock is the daylight one, whichever of them the zone's own table
/// calls so. A zone whose clock does not change twice in that year has no daylight time. The names are those
/// of the user's language, or the zone's abbreviations where they do not fit or the zone is one without a
/// name.
OV_PLATFORM_API DWORD DescribeSystemZone(std::time_t now, TIME_ZONE_INFORMATION& zone);

} // namespace OvPlatform
