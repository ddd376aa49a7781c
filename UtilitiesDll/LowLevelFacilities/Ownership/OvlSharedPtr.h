#pragma once

#include "LowLevelFacilities/Ownership/UtilitiesDllPerThreadStorage.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

/// How shared pointers compare: by the address of what they own.
template <typename T>
struct SharedPtrCompare {
    static bool equal(const T* left, const T* right) noexcept { return left == right; }
    static bool less(const T* left, const T* right) noexcept { return std::less<const T*>{}(left, right); }
};

/// Takes memory from the pool of the allocating thread and gives it to that of the freeing one.
template <typename T>
struct SharedPtrPoolAllocator {
    using value_type = T;

    SharedPtrPoolAllocator() noexcept = default;
    template <typename U>
    SharedPtrPoolAllocator(const SharedPtrPoolAllocator<U>&) noexcept {}

    [[nodiscard]] T* allocate(std::size_t count) {
        static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
        return static_cast<T*>(
            UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool().GetFromPool(count * sizeof(T)));
    }
    void deallocate(T* pointer, std::size_t count) noexcept {
        UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool().ReturnToPool(pointer, count * sizeof(T));
    }
    template <typename U>
    bool operator==(const SharedPtrPoolAllocator<U>&) const noexcept {
        return true;
    }
};

/// Shared ownership, its control block from the per-thread pool. Copies may live on several threads; one
/// object belongs to one thread at a time.
template <typename T, typename Compare = SharedPtrCompare<T>>
class OvlSharedPtr {
public:
    OvlSharedPtr() noexcept = default;
    OvlSharedPtr(std::nullptr_t) noexcept {}
    /// Takes the object over, also when it throws std::bad_alloc.
    explicit OvlSharedPtr(T* owned) : OvlSharedPtr(std::unique_ptr<T>(owned)) {}
    OvlSharedPtr(std::unique_ptr<T>&& owned) {
        if (owned == nullptr) return;
        // Released first: on failure shared_ptr's constructor deletes the object itself.
        m_pointer =
            std::shared_ptr<T>(owned.release(), std::default_delete<T>{}, SharedPtrPoolAllocator<T>{});
    }
    template <typename U, typename OtherCompare>
    OvlSharedPtr(const OvlSharedPtr<U, OtherCompare>& other) noexcept : m_pointer(other.m_pointer) {}
    template <typename U, typename OtherCompare>
    OvlSharedPtr(OvlSharedPtr<U, OtherCompare>&& other) noexcept : m_pointer(std::move(other.m_pointer)) {}

    [[nodiscard]] T* get() const noexcept { return m_pointer.get(); }
    T& operator*() const noexcept { return *m_pointer; }
    T* operator->() const noexcept { return m_pointer.get(); }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }
    void reset() noexcept { m_pointer.reset(); }
    void swap(OvlSharedPtr& other) noexcept { m_pointer.swap(other.m_pointer); }
    [[nodiscard]] long use_count() const noexcept { return m_pointer.use_count(); }

    friend bool operator==(const OvlSharedPtr& left, const OvlSharedPtr& right) noexcept {
        return Compare::equal(left.get(), right.get());
    }
    friend bool operator==(const OvlSharedPtr& left, std::nullptr_t) noexcept {
        return left.get() == nullptr;
    }
    friend bool operator<(const OvlSharedPtr& left, const OvlSharedPtr& right) noexcept {
        return Compare::less(left.get(), right.get());
    }

    /// The object and its control block in one piece of the pool.
    template <typename... Arguments>
    [[nodiscard]] static OvlSharedPtr make(Arguments&&... arguments) {
        OvlSharedPtr result;
        result.m_pointer =
            std::allocate_shared<T>(SharedPtrPoolAllocator<T>{}, std::forward<Arguments>(arguments)...);
        return result;
    }

private:
    template <typename U, typename OtherCompare>
    friend class OvlSharedPtr;

    std::shared_ptr<T> m_pointer;
};
