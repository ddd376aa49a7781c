#include "Com/FaultInjection.h"

#include <atomic>

namespace OvPlatform {
namespace {

// What FaultPoint reads on every call; all else is touched only while armed.
std::atomic<bool> armed{false};
std::atomic<LONG> calls{0};
std::atomic<LONG> failingCall{0};
std::atomic<HRESULT> failure{E_OUTOFMEMORY};
std::atomic<bool> failed{false};

void Arm(LONG number, HRESULT result) noexcept {
    armed.store(false);
    calls.store(0);
    failed.store(false);
    failingCall.store(number);
    failure.store(result);
    armed.store(true);
}

HRESULT CountedCall() noexcept {
    const LONG number = calls.fetch_add(1) + 1;
    if (number != failingCall.load()) return S_OK;
    failed.store(true);
    const HRESULT result = failure.load();
    SetLastError(HRESULT_FACILITY(result) == FACILITY_WIN32 ? static_cast<DWORD>(HRESULT_CODE(result))
                                                            : static_cast<DWORD>(result));
    return result;
}

} // namespace

void FaultInjection::FailCall(LONG number, HRESULT result) noexcept { Arm(number, result); }

void FaultInjection::CountCalls() noexcept { Arm(0, S_OK); }

LONG FaultInjection::CallCount() noexcept { return calls.load(); }

bool FaultInjection::HasFailed() noexcept { return failed.load(); }

void FaultInjection::Reset() noexcept { armed.store(false); }

HRESULT FaultPoint() noexcept { return armed.load(std::memory_order_relaxed) ? CountedCall() : S_OK; }

} // namespace OvPlatform
