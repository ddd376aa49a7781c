#pragma once

#include "LowLevelFacilities/Numbers/NaturalNumber.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <cstdint>
#include <optional>
#include <string>

/// A number in exact form: what was written as a decimal stays that decimal, and no binary floating point
/// takes part until someone asks for a double.
class OV_UTILITIES_API Number {
public:
    /// Digits and decimal exponent beyond these are not taken as a number.
    static constexpr int maxDigits = 4096;
    static constexpr int maxExponent = 4096;

    Number() = default;
    Number(int value);
    /// Reads the decimal number at the start of the text, behind white space: sign, digits, '.', digits,
    /// exponent. What follows it is ignored, and a text without one gives 0. With refuseBadText, both throw
    /// CPExceptionInvalidArgument instead (white space may follow).
    Number(const CXString& text, bool refuseBadText);
    /// The exact value of the double; 0 for an infinity or a NaN.
    [[nodiscard]] static Number fromDouble(double value);

    /// The denominator must not be 0.
    [[nodiscard]] static Number fromFraction(NaturalNumber numerator, NaturalNumber denominator,
                                             bool isNegative);

    // The fraction, always in lowest terms; 0 is 0 / 1.
    [[nodiscard]] const NaturalNumber& GetNumerator() const noexcept { return m_numerator; }
    [[nodiscard]] const NaturalNumber& GetDenominator() const noexcept { return m_denominator; }
    [[nodiscard]] bool IsNegative() const noexcept { return m_isNegative; }

    /// The nearest double.
    [[nodiscard]] double GetDoubleValue() const;
    /// The rounding offset that rounds to the nearest; what lies half way, or above it by less than a
    /// millionth, is rounded down.
    static constexpr double toNearest = 0.499999;
    /// The magnitude plus the rounding offset, cut to an integer, with the sign. What 32 bits cannot hold
    /// gives the largest or smallest.
    [[nodiscard]] int GetIntValue(double roundingOffset) const;
    [[nodiscard]] int GetNearestIntValue() const { return GetIntValue(toNearest); }
    /// The decimal form with that many digits behind the point (no point if 0), rounded in the same way.
    [[nodiscard]] std::string GetDecimalText(unsigned int digits, double roundingOffset) const;

    /// The exact product with numerator / denominator; the denominator must not be 0.
    [[nodiscard]] Number times(unsigned int numerator, unsigned int denominator) const;

    friend OV_UTILITIES_API bool operator==(const Number& left, const Number& right);
    friend OV_UTILITIES_API bool operator<(const Number& left, const Number& right);

private:
    /// For a number without a denominator as yet.
    void divideByPowerOfTen(unsigned int exponent);
    /// The rounded magnitude of the value times ten to the power of `digits`.
    [[nodiscard]] NaturalNumber roundedMagnitude(unsigned int digits, double roundingOffset) const;
    /// The same by machine words, for small numbers, as the lengths of paper are.
    [[nodiscard]] std::optional<std::uint64_t> roundedWord(unsigned int digits, double roundingOffset) const;

    NaturalNumber m_numerator;
    NaturalNumber m_denominator = 1;
    bool m_isNegative = false; // never for 0
};
