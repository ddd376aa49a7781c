#include "LowLevelFacilities/Ownership/FixedBlockSizeMemoryPool.h"

#include <new>

void* FixedBlockSizeMemoryPool::GetFromPool(std::size_t size) {
    if (size > blockSize) return ::operator new(size);
    if (m_free == nullptr) return ::operator new(blockSize);
    FreeBlock* const block = m_free;
    m_free = block->next;
    --m_count;
    return block;
}

void FixedBlockSizeMemoryPool::ReturnToPool(void* pointer, std::size_t size) noexcept {
    if (pointer == nullptr) return;
    if (size > blockSize || m_retired || m_count == maxKeptBlocks) {
        ::operator delete(pointer);
        return;
    }
    m_free = ::new (pointer) FreeBlock{m_free};
    ++m_count;
}

void FixedBlockSizeMemoryPool::Retire() noexcept {
    m_retired = true;
    for (; m_free != nullptr; --m_count) {
        FreeBlock* const block = m_free;
        m_free = block->next;
        ::operator delete(block);
    }
}
