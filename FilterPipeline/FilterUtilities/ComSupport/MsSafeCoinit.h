#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

/// Keeps the calling thread in the multi-threaded apartment, or in the apartment that it already had. To be
/// destroyed on the thread that made it.
class OV_FILTER_UTILITIES_API MsSafeCoInit {
public:
    /// Throws CPComException if the thread can enter no apartment.
    MsSafeCoInit();
    ~MsSafeCoInit();
    MsSafeCoInit(const MsSafeCoInit&) = delete;
    MsSafeCoInit& operator=(const MsSafeCoInit&) = delete;

private:
    bool m_uninitializeIsOwed;
};
