#pragma once

#include <cstddef>
#include <cstring>

/// The index of a virtual operation in the object's table, read from the pointer to it; a destructor takes
/// two.
template <typename Member>
std::size_t SlotOf(Member member) {
    static_assert(sizeof(Member) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return static_cast<std::size_t>(offset - 1) / sizeof(void*);
}

/// The pointer that an object holds in its n-th word; word 0 is that to its virtual functions.
inline void* WordOf(const void* object, std::size_t word) {
    void* value = nullptr;
    std::memcpy(&value, static_cast<const std::byte*>(object) + word * sizeof value, sizeof value);
    return value;
}

/// Adds a virtual operation behind those of its base.
template <typename Base>
struct OneMore : Base {
    virtual void Next() {}
};
