#pragma once

// Stands in for the header of that name where the platform is Windows' own: a test that lets a call fail, or
// counts calls, is skipped from there on.

#include "Support/SkipOnWindows.h"

#include <windows.h>

namespace OvPlatform {

class FaultInjection {
public:
    static void FailCall(LONG, HRESULT = E_OUTOFMEMORY) {
        SkipOnWindows("No call of this platform can be let fail.");
    }
    static void CountCalls() { SkipOnWindows("The calls of this platform cannot be counted."); }
    static LONG CallCount() { return 0; }
    static bool HasFailed() { return false; }
    static void Reset() {}
};

class FaultInjectionScope {
public:
    explicit FaultInjectionScope(LONG, HRESULT = E_OUTOFMEMORY) {
        SkipOnWindows("No call of this platform can be let fail.");
    }
};

} // namespace OvPlatform
