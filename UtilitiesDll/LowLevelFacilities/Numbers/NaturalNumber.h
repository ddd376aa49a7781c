#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// An unsigned integer of any size: as much arithmetic as Number needs.
class OV_UTILITIES_API NaturalNumber {
public:
    NaturalNumber(std::uint64_t value = 0);

    [[nodiscard]] bool isZero() const noexcept { return m_limbs.empty(); }
    [[nodiscard]] std::size_t bitLength() const noexcept;
    /// Least significant byte first, without zeros at the end; 0 has no bytes.
    [[nodiscard]] std::vector<unsigned char> getBytes() const;
    [[nodiscard]] static NaturalNumber fromBytes(const unsigned char* bytes, std::size_t length);
    /// The value, if it has at most 64 bits.
    [[nodiscard]] std::uint64_t toUint64() const noexcept;

    void multiplyAndAdd(std::uint32_t factor, std::uint32_t summand);
    void shiftLeft(std::size_t bits);
    void shiftRight(std::size_t bits);
    /// How many times 2 divides it; 0 for 0.
    [[nodiscard]] std::size_t trailingZeroBits() const noexcept;
    NaturalNumber& operator+=(const NaturalNumber& other);
    /// The other must not be larger.
    NaturalNumber& operator-=(const NaturalNumber& other);
    /// Divides by a small divisor and gives the remainder.
    std::uint32_t divideBy(std::uint32_t divisor);

    [[nodiscard]] static NaturalNumber powerOf(std::uint32_t base, unsigned int exponent);
    [[nodiscard]] static NaturalNumber powerOfTen(unsigned int exponent) { return powerOf(10, exponent); }
    /// Quotient and remainder. The divisor must not be 0.
    [[nodiscard]] static std::pair<NaturalNumber, NaturalNumber> divide(const NaturalNumber& dividend,
                                                                        const NaturalNumber& divisor);

    /// The other one where one is 0.
    [[nodiscard]] static NaturalNumber greatestCommonDivisor(NaturalNumber left, NaturalNumber right);

    friend OV_UTILITIES_API NaturalNumber operator*(const NaturalNumber& left, const NaturalNumber& right);
    friend OV_UTILITIES_API std::strong_ordering operator<=>(const NaturalNumber& left,
                                                             const NaturalNumber& right) noexcept;
    friend bool operator==(const NaturalNumber& left, const NaturalNumber& right) noexcept = default;

private:
    void dropLeadingZeros() noexcept;

    std::vector<std::uint32_t> m_limbs; // least significant first, no leading zeros
};
