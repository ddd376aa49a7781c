#pragma once

#include "LowLevelFacilities/Ownership/FixedBlockSizeMemoryPool.h"
#include "LowLevelFacilities/UtilitiesExport.h"

class OV_UTILITIES_API UtilitiesDllPerThreadStorage {
public:
    UtilitiesDllPerThreadStorage() = delete;

    /// The calling thread's pool for the control blocks of shared pointers.
    static FixedBlockSizeMemoryPool& GetSharedPtrMemoryPool() noexcept;
};
