#include "LowLevelFacilities/Numbers/Number.h"

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Strings/WhiteSpace.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace {

bool isDigit(wchar_t unit) noexcept { return unit >= L'0' && unit <= L'9'; }

/// Walks over the text of a decimal number.
class DecimalReader {
public:
    explicit DecimalReader(std::wstring_view text) noexcept : m_rest(text) {}

    void skipWhiteSpace() noexcept {
        while (!m_rest.empty() && WhiteSpace::isWhiteSpace(static_cast<char32_t>(m_rest.front())))
            m_rest.remove_prefix(1);
    }
    bool skip(wchar_t unit) noexcept {
        if (!m_rest.starts_with(unit)) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    std::wstring_view takeDigits() noexcept {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), isDigit);
        const auto digits = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(digits.size());
        return digits;
    }
    /// The exponent with its 'e', or 0 with nothing taken if no digit follows it.
    int takeExponent() noexcept {
        DecimalReader ahead = *this;
        if (!ahead.skip(L'e') && !ahead.skip(L'E')) return 0;
        const bool isNegative = ahead.skip(L'-');
        if (!isNegative) ahead.skip(L'+');
        const std::wstring_view digits = ahead.takeDigits();
        if (digits.empty()) return 0;
        *this = ahead;
        int exponent = 0;
        for (const wchar_t digit : digits)
            exponent = std::min(exponent * 10 + (digit - L'0'), 10 * Number::maxExponent);
        return isNegative ? -exponent : exponent;
    }
    [[nodiscard]] bool isAtEnd() const noexcept { return m_rest.empty(); }

private:
    std::wstring_view m_rest;
};

void appendDigits(NaturalNumber& number, std::wstring_view digits) {
    for (const wchar_t digit : digits)
        number.multiplyAndAdd(10, static_cast<std::uint32_t>(digit - L'0'));
}

} // namespace

Number::Number(int value)
    : m_numerator(value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(static_cast<std::int64_t>(value))
                            : static_cast<std::uint64_t>(value)),
      m_isNegative(value < 0) {}

Number::Number(const CXString& text, bool refuseBadText) {
    DecimalReader reader(text.View());
    reader.skipWhiteSpace();
    m_isNegative = reader.skip(L'-');
    if (!m_isNegative) reader.skip(L'+');
    const std::wstring_view whole = reader.takeDigits();
    const std::wstring_view fraction = reader.skip(L'.') ? reader.takeDigits() : std::wstring_view{};
    const std::size_t digits = whole.size() + fraction.size();
    const int exponent = digits == 0 ? 0 : reader.takeExponent();
    reader.skipWhiteSpace();

    const bool isNumber =
        digits != 0 && digits <= static_cast<std::size_t>(maxDigits) && std::abs(exponent) <= maxExponent;
    if (refuseBadText && !(isNumber && reader.isAtEnd())) {
        const OperationScope operation("Number::Number");
        ThrowFailure<CPExceptionInvalidArgument>(
            [&text] { return "Not a decimal number: " + CPStringUtils::narrowToStdString(text.Left(80)); });
    }
    if (isNumber) {
        appendDigits(m_numerator, whole);
        appendDigits(m_numerator, fraction);
        const int scale = exponent - static_cast<int>(fraction.size());
        if (scale < 0)
            divideByPowerOfTen(static_cast<unsigned int>(-scale));
        else
            m_numerator = m_numerator * NaturalNumber::powerOfTen(static_cast<unsigned int>(scale));
    }
    m_isNegative = m_isNegative && !m_numerator.isZero();
}

Number Number::fromDouble(double value) {
    Number result;
    if (!std::isfinite(value) || value == 0) return result;
    int exponent = 0;
    const double mantissa = std::frexp(std::fabs(value), &exponent);
    const auto digits = static_cast<std::uint64_t>(std::ldexp(mantissa, 53));
    const int twos = std::countr_zero(digits);
    result.m_numerator = NaturalNumber(digits >> twos);
    exponent += twos - 53;
    (exponent < 0 ? result.m_denominator : result.m_numerator)
        .shiftLeft(static_cast<std::size_t>(std::abs(exponent)));
    result.m_isNegative = value < 0;
    return result;
}

Number Number::fromFraction(NaturalNumber numerator, NaturalNumber denominator, bool isNegative) {
    Number result;
    if (numerator.isZero()) return result;
    const NaturalNumber common = NaturalNumber::greatestCommonDivisor(numerator, denominator);
    const bool isReduced = common == 1;
    result.m_numerator = isReduced ? std::move(numerator) : NaturalNumber::divide(numerator, common).first;
    result.m_denominator =
        isReduced ? std::move(denominator) : NaturalNumber::divide(denominator, common).first;
    result.m_isNegative = isNegative;
    return result;
}

void Number::divideByPowerOfTen(unsigned int exponent) {
    if (m_numerator.isZero()) return;
    const auto twos =
        static_cast<unsigned int>(std::min<std::size_t>(exponent, m_numerator.trailingZeroBits()));
    m_numerator.shiftRight(twos);
    unsigned int fives = 0;
    for (NaturalNumber fifth = m_numerator; fives < exponent && fifth.divideBy(5) == 0; ++fives)
        m_numerator = fifth;
    m_denominator = NaturalNumber::powerOf(5, exponent - fives);
    m_denominator.shiftLeft(exponent - twos);
}

double Number::GetDoubleValue() const {
    if (m_numerator.isZero()) return 0;
    // A quotient of 63 or 64 bits holds all that decides the rounding, with the remainder for the ties.
    const int scale =
        63 - (static_cast<int>(m_numerator.bitLength()) - static_cast<int>(m_denominator.bitLength()));
    NaturalNumber numerator = m_numerator;
    NaturalNumber denominator = m_denominator;
    (scale < 0 ? denominator : numerator).shiftLeft(static_cast<std::size_t>(std::abs(scale)));
    const auto [exactQuotient, remainder] = NaturalNumber::divide(numerator, denominator);
    const std::uint64_t quotient = exactQuotient.toUint64();

    const int length = static_cast<int>(std::bit_width(quotient));
    const int leadingExponent = length - 1 - scale;
    constexpr int leastExponent = std::numeric_limits<double>::min_exponent - 1;
    const int precision = std::numeric_limits<double>::digits - std::max(0, leastExponent - leadingExponent);
    if (precision < 0) return m_isNegative ? -0.0 : 0.0;
    const int dropped = std::max(1, length - precision); // 10 at least, of 63 or 64 bits
    const std::uint64_t kept = dropped == 64 ? 0 : quotient >> dropped;
    const std::uint64_t tail = dropped == 64 ? quotient : quotient & ((std::uint64_t{1} << dropped) - 1);
    const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
    const bool roundUp = tail > half || (tail == half && (!remainder.isZero() || (kept & 1) != 0));
    const double magnitude = std::ldexp(static_cast<double>(kept + (roundUp ? 1 : 0)), dropped - scale);
    return m_isNegative ? -magnitude : magnitude;
}

int Number::GetIntValue(double roundingOffset) const {
    const NaturalNumber magnitude = roundedMagnitude(0, roundingOffset);
    const std::uint64_t value = magnitude.bitLength() > 32 ? UINT64_MAX : magnitude.toUint64();
    if (m_isNegative) return value > static_cast<std::uint64_t>(INT_MAX) ? INT_MIN : -static_cast<int>(value);
    return value > static_cast<std::uint64_t>(INT_MAX) ? INT_MAX : static_cast<int>(value);
}

std::string Number::GetDecimalText(unsigned int digits, double roundingOffset) const {
    NaturalNumber magnitude = roundedMagnitude(digits, roundingOffset);
    const bool isNegative = m_isNegative && !magnitude.isZero();
    std::string text;
    while (!magnitude.isZero())
        text += static_cast<char>('0' + magnitude.divideBy(10));
    if (text.size() <= digits) text.append(digits + 1 - text.size(), '0');
    if (digits != 0) text.insert(digits, 1, '.');
    if (isNegative) text += '-';
    std::reverse(text.begin(), text.end());
    return text;
}

Number Number::times(unsigned int numerator, unsigned int denominator) const {
    Number result;
    if (numerator == 0 || m_numerator.isZero()) return result;
    result = *this;
    // Either fraction may be reduced by itself, and its numerator with the denominator of the other.
    const unsigned int common = std::gcd(numerator, denominator);
    const auto reduce = [](NaturalNumber& number, unsigned int factor) {
        NaturalNumber quotient = number;
        const unsigned int divisor = std::gcd(factor, quotient.divideBy(factor));
        number.divideBy(divisor);
        return factor / divisor;
    };
    const unsigned int rest = reduce(result.m_numerator, denominator / common);
    result.m_numerator.multiplyAndAdd(reduce(result.m_denominator, numerator / common), 0);
    result.m_denominator.multiplyAndAdd(rest, 0);
    return result;
}

bool operator==(const Number& left, const Number& right) {
    return left.m_isNegative == right.m_isNegative && left.m_numerator == right.m_numerator &&
           left.m_denominator == right.m_denominator;
}

bool operator<(const Number& left, const Number& right) {
    if (left.m_isNegative != right.m_isNegative) return left.m_isNegative;
    const NaturalNumber leftScaled = left.m_numerator * right.m_denominator;
    const NaturalNumber rightScaled = right.m_numerator * left.m_denominator;
    return left.m_isNegative ? rightScaled < leftScaled : leftScaled < rightScaled;
}

std::optional<std::uint64_t> Number::roundedWord(unsigned int digits, double roundingOffset) const {
    constexpr int offsetBits = 54; // of the fraction of a double from 1/4 on
    const double offset = std::ldexp(roundingOffset, offsetBits);
    if (!(roundingOffset >= 0 && roundingOffset < 1) || offset != std::floor(offset)) return std::nullopt;
    // With these bounds no product below exceeds 63 bits.
    if (digits > 9 || m_numerator.bitLength() > 31 || m_denominator.bitLength() > 9) return std::nullopt;
    std::uint64_t numerator = m_numerator.toUint64();
    for (unsigned int digit = 0; digit < digits; ++digit)
        numerator *= 10;
    const std::uint64_t denominator = m_denominator.toUint64();
    const std::uint64_t fraction = (numerator % denominator) << offsetBits;
    const bool isRoundedUp = fraction + static_cast<std::uint64_t>(offset) * denominator >= denominator
                                                                                                << offsetBits;
    return numerator / denominator + (isRoundedUp ? 1 : 0);
}

NaturalNumber Number::roundedMagnitude(unsigned int digits, double roundingOffset) const {
    if (const std::optional<std::uint64_t> word = roundedWord(digits, roundingOffset)) return *word;
    const Number offset = fromDouble(roundingOffset);
    NaturalNumber numerator = m_numerator * NaturalNumber::powerOfTen(digits) * offset.m_denominator;
    const NaturalNumber addend = offset.m_numerator * m_denominator;
    if (!offset.m_isNegative)
        numerator += addend;
    else if (numerator < addend)
        return 0;
    else
        numerator -= addend;
    return NaturalNumber::divide(numerator, m_denominator * offset.m_denominator).first;
}
