#pragma once

#include <cstdint>
#include <cstring>

namespace OvTest {

/// The place of a virtual function in its table. Under the C++ ABI of this platform a pointer to a virtual
/// member holds one more than the offset of its entry.
template <typename Method>
std::size_t SlotIndex(Method method) {
    std::uintptr_t offset = 0;
    static_assert(sizeof(method) >= sizeof(offset));
    std::memcpy(&offset, &method, sizeof(offset));
    return (offset - 1) / sizeof(void*);
}

} // namespace OvTest
