#pragma once

#include <compare>

/// An integer that says what it counts. Two instantiations with different tags neither compare nor mix,
/// so that a number of code points cannot be passed where a number of bytes is wanted.
template <typename Integral, typename Tag>
class StrictlyTypedIntegral {
public:
    using ValueType = Integral;

    constexpr StrictlyTypedIntegral() noexcept = default;
    constexpr explicit StrictlyTypedIntegral(Integral value) noexcept : m_value(value) {}

    [[nodiscard]] constexpr Integral value() const noexcept { return m_value; }

    constexpr StrictlyTypedIntegral& operator+=(StrictlyTypedIntegral other) noexcept {
        m_value += other.m_value;
        return *this;
    }
    constexpr StrictlyTypedIntegral& operator-=(StrictlyTypedIntegral other) noexcept {
        m_value -= other.m_value;
        return *this;
    }
    friend constexpr StrictlyTypedIntegral operator+(StrictlyTypedIntegral left,
                                                     StrictlyTypedIntegral right) noexcept {
        return left += right;
    }
    friend constexpr StrictlyTypedIntegral operator-(StrictlyTypedIntegral left,
                                                     StrictlyTypedIntegral right) noexcept {
        return left -= right;
    }
    friend constexpr auto operator<=>(StrictlyTypedIntegral, StrictlyTypedIntegral) noexcept = default;

private:
    Integral m_value{};
};
