#pragma once

#include "Com/FaultInjection.h"
#include "Package/PackageError.h"

#include <windows.h>

namespace OvPlatform {

/// The result that the exception in flight stands for; what it says becomes the thread's error information.
HRESULT ModelFailure() noexcept;

/// The body of a call of the object model, which may throw what packages and their bytes do.
template <class Work>
HRESULT ModelCall(Work&& work) noexcept {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    try {
        return work();
    } catch (...) {
        return ModelFailure();
    }
}

/// The same for one that gives an object: E_POINTER without a place for it, which is null on failure.
template <class Place, class Work>
HRESULT ModelCall(Place** place, Work&& work) noexcept {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    return ModelCall(work);
}

/// Throws PackageError where a step failed.
inline void Require(HRESULT result, const std::string& subject, const char* problem) {
    if (FAILED(result)) throw PackageError(result, subject, problem);
}

} // namespace OvPlatform
