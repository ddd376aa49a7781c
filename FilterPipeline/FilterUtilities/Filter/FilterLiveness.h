#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>

#include <atomic>
#include <cstdint>

/// Whether a job is still wanted. Alive from construction until Cancel, and never again. May be used from any
/// thread.
class OV_FILTER_UTILITIES_API FilterLiveness {
public:
    FilterLiveness();
    virtual ~FilterLiveness();
    FilterLiveness(const FilterLiveness&) = delete;
    FilterLiveness& operator=(const FilterLiveness&) = delete;

    /// S_OK while alive, then ERROR_PRINT_CANCELLED as an HRESULT.
    virtual HRESULT Continue();

    BOOL IsAlive() const;
    void Cancel();

private:
    std::atomic<std::int32_t> m_alive;
};
