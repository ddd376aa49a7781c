#pragma once

// Counts allocations at operator new, which it replaces for the whole program: one source of a program
// includes it.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace AllocationCount {

inline thread_local std::size_t allocations = 0;

inline void* TryToAllocate(std::size_t size) {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

inline void* Allocate(std::size_t size) {
    if (void* const memory = TryToAllocate(size)) return memory;
    throw std::bad_alloc();
}

/// What the action allocates on this thread.
template <typename Action>
std::size_t Of(Action action) {
    const std::size_t before = allocations;
    action();
    return allocations - before;
}

} // namespace AllocationCount

// Not inlined: where only one of a pair is, an optimising GCC takes them for a new and a free() that do not
// match.
[[gnu::noinline]] void* operator new(std::size_t size) { return AllocationCount::Allocate(size); }
[[gnu::noinline]] void* operator new[](std::size_t size) { return AllocationCount::Allocate(size); }
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return AllocationCount::TryToAllocate(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
