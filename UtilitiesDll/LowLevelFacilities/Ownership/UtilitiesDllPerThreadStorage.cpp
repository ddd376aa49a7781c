#include "LowLevelFacilities/Ownership/UtilitiesDllPerThreadStorage.h"

namespace {

thread_local constinit FixedBlockSizeMemoryPool sharedPtrMemoryPool;

/// Empties the pool when the thread ends. Shared pointers that die even later find it retired.
struct PoolRetirement {
    ~PoolRetirement() { sharedPtrMemoryPool.Retire(); }
    bool armed = false;
};
thread_local PoolRetirement poolRetirement;

} // namespace

FixedBlockSizeMemoryPool& UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool() noexcept {
    poolRetirement.armed = true; // constructs it on this thread
    return sharedPtrMemoryPool;
}
