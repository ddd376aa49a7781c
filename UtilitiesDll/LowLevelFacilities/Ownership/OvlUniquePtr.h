#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

/// The ownership of a pointer that owns whatever it points to.
struct AlwaysOwned {
    template <typename T>
    void operator()(T* owned) const noexcept {
        std::default_delete<T>{}(owned);
    }
};

/// How sole owners compare: by the address of what they own.
template <typename T>
struct UniquePtrCompare {
    static bool equal(const T* left, const T* right) noexcept { return left == right; }
    static bool less(const T* left, const T* right) noexcept { return std::less<const T*>{}(left, right); }
};

/// Sole ownership.
template <typename T, typename Ownership = AlwaysOwned, typename Compare = UniquePtrCompare<T>>
class OvlUniquePtr {
public:
    OvlUniquePtr() noexcept = default;
    OvlUniquePtr(std::nullptr_t) noexcept {}
    explicit OvlUniquePtr(T* owned) noexcept : m_pointer(owned) {}
    OvlUniquePtr(std::unique_ptr<T>&& owned) noexcept : m_pointer(owned.release()) {}
    template <typename U, typename OtherCompare>
    requires std::is_convertible_v<U*, T*> OvlUniquePtr(OvlUniquePtr<U, Ownership, OtherCompare>&& other)
    noexcept : m_pointer(other.release()) {}

    [[nodiscard]] T* get() const noexcept { return m_pointer.get(); }
    T& operator*() const noexcept { return *m_pointer; }
    T* operator->() const noexcept { return m_pointer.get(); }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }
    /// The caller owns the object from now on.
    [[nodiscard]] T* release() noexcept { return m_pointer.release(); }
    void reset(T* owned = nullptr) noexcept { m_pointer.reset(owned); }
    void swap(OvlUniquePtr& other) noexcept { m_pointer.swap(other.m_pointer); }

    friend bool operator==(const OvlUniquePtr& left, const OvlUniquePtr& right) noexcept {
        return Compare::equal(left.get(), right.get());
    }
    friend bool operator==(const OvlUniquePtr& left, std::nullptr_t) noexcept {
        return left.get() == nullptr;
    }
    friend bool operator<(const OvlUniquePtr& left, const OvlUniquePtr& right) noexcept {
        return Compare::less(left.get(), right.get());
    }

private:
    std::unique_ptr<T, Ownership> m_pointer;
};
