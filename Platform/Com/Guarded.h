#pragma once

#include "Com/FaultInjection.h"

#include <new>

namespace OvPlatform {

/// Memory that is out is the work's result.
template <class Work>
HRESULT OrOutOfMemory(Work&& work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

/// Runs one published operation: it can be made to fail, and memory that is out is its result.
template <class Work>
HRESULT Guarded(Work&& work) noexcept {
    const HRESULT fault = FaultPoint();
    return FAILED(fault) ? fault : OrOutOfMemory(work);
}

} // namespace OvPlatform
