#include "LowLevelFacilities/Ownership/UtilitiesDllPerThreadStorage.h"

#include <windows.h>
#include <fibersapi.h>

#include <new>

namespace {

// Deliberate: a slot of the platform and not a thread_local object, which some compilers' runtimes free
// before they destroy it, so that each thread would leave the blocks of its pool behind.
class PoolSlot {
public:
    PoolSlot() noexcept : m_index(FlsAlloc(&EndPool)) {}
    PoolSlot(const PoolSlot&) = delete;
    PoolSlot& operator=(const PoolSlot&) = delete;
    ~PoolSlot() { FlsFree(m_index); }

    /// Null if there is no memory for one, and after the end of the slot.
    [[nodiscard]] FixedBlockSizeMemoryPool* PoolOfThread() const noexcept {
        if (void* const pool = FlsGetValue(m_index)) return static_cast<FixedBlockSizeMemoryPool*>(pool);
        auto* const pool = new (std::nothrow) FixedBlockSizeMemoryPool;
        if (pool == nullptr || FlsSetValue(m_index, pool)) return pool;
        delete pool;
        return nullptr;
    }

private:
    static void WINAPI EndPool(void* ended) {
        auto* const pool = static_cast<FixedBlockSizeMemoryPool*>(ended);
        pool->Retire();
        delete pool;
    }

    DWORD m_index;
};

/// Keeps nothing, so that threads may share it.
FixedBlockSizeMemoryPool& retiredPool() noexcept {
    static constinit FixedBlockSizeMemoryPool pool;
    static const bool isRetired = (pool.Retire(), true);
    (void)isRetired;
    return pool;
}

} // namespace

FixedBlockSizeMemoryPool& UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool() noexcept {
    static const PoolSlot slot;
    FixedBlockSizeMemoryPool* const pool = slot.PoolOfThread();
    return pool != nullptr ? *pool : retiredPool();
}
