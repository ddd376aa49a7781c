#pragma once

#include <cstddef>
#include <cstring>

// The index of a virtual operation in the object's table, read from the pointer to it; a destructor takes
// two.
template <typename Member>
std::size_t SlotOf(Member member) {
    static_assert(sizeof(Member) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return static_cast<std::size_t>(offset - 1) / sizeof(void*);
}
