#pragma once

#include <windows.h>

#include <compare>

/// The number of a name space of an attribute store. Ordered as unsigned numbers.
class AttributeBytesNameSpacesId {
public:
    constexpr explicit AttributeBytesNameSpacesId(LONG id) noexcept : m_id(id) {}

    [[nodiscard]] constexpr LONG GetNameSpaceId() const noexcept { return m_id; }

    friend constexpr bool operator==(AttributeBytesNameSpacesId,
                                     AttributeBytesNameSpacesId) noexcept = default;
    friend constexpr std::strong_ordering operator<=>(AttributeBytesNameSpacesId left,
                                                      AttributeBytesNameSpacesId right) noexcept {
        return static_cast<ULONG>(left.m_id) <=> static_cast<ULONG>(right.m_id);
    }

private:
    LONG m_id;
};
