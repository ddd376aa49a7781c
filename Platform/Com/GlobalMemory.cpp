#include "Com/GlobalMemory.h"

#include "Com/FaultInjection.h"

#include <combaseapi.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>

namespace OvPlatform::GlobalMemory {
namespace {

struct Block {
    BYTE* data = nullptr;
    SIZE_T size = 0;
    BYTE locks = 0;
    bool movable = false;
};

// All blocks by handle: the address of the bytes for fixed memory, of a byte of its own for movable memory. A
// handle that is not here is no block, so that a stale or invented one is refused.
struct Blocks {
    std::mutex lock;
    std::unordered_map<HGLOBAL, Block> byHandle;

    Block* Find(HGLOBAL handle) {
        const auto found = byHandle.find(handle);
        return found == byHandle.end() ? nullptr : &found->second;
    }
};

Blocks& All() {
    static Blocks& blocks = *new Blocks;
    return blocks;
}

/// At least one byte, so that every block has an address.
BYTE* AllocateBytes(SIZE_T bytes, bool zeroInitialise) noexcept {
    const SIZE_T size = bytes > 0 ? bytes : 1;
    return static_cast<BYTE*>(zeroInitialise ? std::calloc(1, size) : std::malloc(size));
}

} // namespace

HGLOBAL Allocate(UINT flags, SIZE_T bytes) noexcept {
    Block block{AllocateBytes(bytes, (flags & GMEM_ZEROINIT) != 0), bytes, 0, (flags & GMEM_MOVEABLE) != 0};
    if (block.data == nullptr) return nullptr;
    HGLOBAL handle = block.movable ? std::malloc(1) : block.data;
    try {
        if (handle == nullptr) throw std::bad_alloc();
        Blocks& all = All();
        std::lock_guard guard(all.lock);
        all.byHandle.emplace(handle, block);
        return handle;
    } catch (const std::bad_alloc&) {
        if (block.movable) std::free(handle);
        std::free(block.data);
        return nullptr;
    }
}

HGLOBAL Resize(HGLOBAL memory, SIZE_T bytes, bool zeroInitialise) noexcept {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    Block* block = all.Find(memory);
    // Fixed memory would have to move, and with it its handle; movable memory must stay where it is while
    // locked.
    if (block == nullptr || !block->movable || (block->locks > 0 && bytes != block->size)) return nullptr;
    auto* data = static_cast<BYTE*>(std::realloc(block->data, bytes > 0 ? bytes : 1));
    if (data == nullptr) return nullptr;
    if (zeroInitialise && bytes > block->size) std::memset(data + block->size, 0, bytes - block->size);
    block->data = data;
    block->size = bytes;
    return memory;
}

bool Free(HGLOBAL memory) noexcept {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    const auto found = all.byHandle.find(memory);
    if (found == all.byHandle.end()) return false;
    std::free(found->second.data);
    if (found->second.movable) std::free(memory);
    all.byHandle.erase(found);
    return true;
}

bool IsBlock(HGLOBAL memory) noexcept {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    return all.Find(memory) != nullptr;
}

SIZE_T Size(HGLOBAL memory) noexcept {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    const Block* block = all.Find(memory);
    return block != nullptr ? block->size : 0;
}

BYTE* Data(HGLOBAL memory) noexcept {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    const Block* block = all.Find(memory);
    return block != nullptr ? block->data : nullptr;
}

} // namespace OvPlatform::GlobalMemory

using namespace OvPlatform::GlobalMemory;

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    if (OvPlatform::FaultPointHit()) return nullptr;
    HGLOBAL memory = Allocate(flags, bytes);
    if (memory == nullptr) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return memory;
}

HGLOBAL GlobalReAlloc(HGLOBAL memory, SIZE_T bytes, UINT flags) {
    if (OvPlatform::FaultPointHit()) return nullptr;
    if (!IsBlock(memory)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    if ((flags & GMEM_MODIFY) != 0) return memory;
    HGLOBAL resized = Resize(memory, bytes, (flags & GMEM_ZEROINIT) != 0);
    if (resized == nullptr) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return resized;
}

HGLOBAL GlobalFree(HGLOBAL memory) {
    if (memory == nullptr || Free(memory)) return nullptr;
    SetLastError(ERROR_INVALID_HANDLE);
    return memory;
}

LPVOID GlobalLock(HGLOBAL memory) {
    if (OvPlatform::FaultPointHit()) return nullptr;
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    Block* block = all.Find(memory);
    if (block == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    // The count saturates, and a block that was locked so often stays locked.
    if (block->movable && block->locks < GMEM_LOCKCOUNT) ++block->locks;
    return block->data;
}

BOOL GlobalUnlock(HGLOBAL memory) {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    Block* block = all.Find(memory);
    if (block == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (!block->movable) return TRUE;
    if (block->locks == 0) {
        SetLastError(ERROR_NOT_LOCKED);
        return FALSE;
    }
    if (block->locks < GMEM_LOCKCOUNT) --block->locks;
    if (block->locks > 0) return TRUE;
    SetLastError(NO_ERROR);
    return FALSE;
}

SIZE_T GlobalSize(HGLOBAL memory) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (!IsBlock(memory)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return Size(memory);
}

UINT GlobalFlags(HGLOBAL memory) {
    Blocks& all = All();
    std::lock_guard guard(all.lock);
    const Block* block = all.Find(memory);
    if (block == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return GMEM_INVALID_HANDLE;
    }
    return block->locks;
}

HLOCAL LocalAlloc(UINT flags, SIZE_T bytes) { return GlobalAlloc(flags, bytes); }

HLOCAL LocalFree(HLOCAL memory) { return GlobalFree(memory); }

LPVOID CoTaskMemAlloc(SIZE_T bytes) {
    if (OvPlatform::FaultPointHit()) return nullptr;
    return std::malloc(bytes > 0 ? bytes : 1);
}

LPVOID CoTaskMemRealloc(LPVOID memory, SIZE_T bytes) {
    if (memory != nullptr && bytes == 0) {
        std::free(memory);
        return nullptr;
    }
    if (OvPlatform::FaultPointHit()) return nullptr;
    return std::realloc(memory, bytes > 0 ? bytes : 1);
}

void CoTaskMemFree(LPVOID memory) { std::free(memory); }
