#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

namespace OvPlatform {

/// Lets one platform call fail, for tests of what happens then. Process-wide. Every platform function or
/// interface method that can fail begins with a fault point; the points are counted while injection is armed.
class OV_PLATFORM_API FaultInjection {
public:
    /// The `number`-th call from now (the first is 1) fails with `result`, and that one only. Calls before
    /// and after it go on being counted.
    static void FailCall(LONG number, HRESULT result = E_OUTOFMEMORY) noexcept;

    /// Counts the calls from now without letting one fail.
    static void CountCalls() noexcept;

    /// Calls since FailCall or CountCalls.
    static LONG CallCount() noexcept;

    /// Whether the chosen call was reached.
    static bool HasFailed() noexcept;

    /// Off: no call is counted or fails. The count so far stays readable.
    static void Reset() noexcept;
};

/// S_OK, or the result that this call is to fail with; the last error is then set to match.
OV_PLATFORM_API HRESULT FaultPoint() noexcept;

/// The same for a function that reports by null or FALSE and last error.
inline bool FaultPointHit() noexcept { return FAILED(FaultPoint()); }

/// Arms injection for a scope.
class FaultInjectionScope {
public:
    explicit FaultInjectionScope(LONG number, HRESULT result = E_OUTOFMEMORY) noexcept {
        FaultInjection::FailCall(number, result);
    }
    FaultInjectionScope(const FaultInjectionScope&) = delete;
    FaultInjectionScope& operator=(const FaultInjectionScope&) = delete;
    ~FaultInjectionScope() { FaultInjection::Reset(); }
};

} // namespace OvPlatform
