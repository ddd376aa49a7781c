#pragma once

#include <windows.h>

#include <compare>

/// The number of a feature, as the key of an attribute. Any 32 bits are one; their order is that of unsigned
/// numbers.
class AttributeBytesFeatureId {
public:
    constexpr explicit AttributeBytesFeatureId(LONG id) noexcept : m_id(id) {}

    [[nodiscard]] constexpr LONG GetFeatureId() const noexcept { return m_id; }

    friend constexpr bool operator==(AttributeBytesFeatureId, AttributeBytesFeatureId) noexcept = default;
    friend constexpr std::strong_ordering operator<=>(AttributeBytesFeatureId left,
                                                      AttributeBytesFeatureId right) noexcept {
        return static_cast<ULONG>(left.m_id) <=> static_cast<ULONG>(right.m_id);
    }

private:
    LONG m_id;
};
