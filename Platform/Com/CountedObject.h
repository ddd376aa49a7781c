#pragma once

#include "Com/FaultInjection.h"

#include <countedbase.h>

namespace OvPlatform {

/// What the platform's operations begin with.
struct FaultEntry {
    static HRESULT Enter() { return FaultPoint(); }
};

/// The base of the platform's objects.
template <class... Interfaces>
using CountedObject = CountedBase<FaultEntry, Interfaces...>;

} // namespace OvPlatform
