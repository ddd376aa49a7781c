#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <cstddef>

/// Keeps returned blocks of one size for the next taker. Belongs to one thread, but a block may be returned
/// to the pool of another thread than it came from: each block is an allocation of its own.
class OV_UTILITIES_API FixedBlockSizeMemoryPool {
public:
    static constexpr std::size_t blockSize = 128;
    static constexpr std::size_t maxKeptBlocks = 256;

    constexpr FixedBlockSizeMemoryPool() noexcept = default;
    FixedBlockSizeMemoryPool(const FixedBlockSizeMemoryPool&) = delete;
    FixedBlockSizeMemoryPool& operator=(const FixedBlockSizeMemoryPool&) = delete;

    /// A block of at least size bytes. Sizes beyond blockSize are served, but not kept. Throws
    /// std::bad_alloc.
    [[nodiscard]] void* GetFromPool(std::size_t size);
    /// Gives back what GetFromPool gave for the same size.
    void ReturnToPool(void* pointer, std::size_t size) noexcept;
    /// Frees the kept blocks and keeps none from now on.
    void Retire() noexcept;

    [[nodiscard]] std::size_t keptBlocks() const noexcept { return m_count; }

private:
    struct FreeBlock {
        FreeBlock* next;
    };
    // No destructor: the pool must still take blocks back while its thread is being torn down.
    FreeBlock* m_free = nullptr;
    std::size_t m_count = 0;
    bool m_retired = false;
};
