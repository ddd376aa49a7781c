#include "LowLevelFacilities/Numbers/NaturalNumber.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

constexpr std::size_t limbBits = 32;

std::uint32_t lowLimb(std::uint64_t value) noexcept { return static_cast<std::uint32_t>(value); }

} // namespace

NaturalNumber::NaturalNumber(std::uint64_t value) {
    for (; value != 0; value >>= limbBits)
        m_limbs.push_back(lowLimb(value));
}

std::size_t NaturalNumber::bitLength() const noexcept {
    return m_limbs.empty()
               ? 0
               : (m_limbs.size() - 1) * limbBits + static_cast<std::size_t>(std::bit_width(m_limbs.back()));
}

std::vector<unsigned char> NaturalNumber::getBytes() const {
    std::vector<unsigned char> bytes((bitLength() + 7) / 8);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(m_limbs[i / 4] >> (i % 4 * 8));
    return bytes;
}

NaturalNumber NaturalNumber::fromBytes(const unsigned char* bytes, std::size_t length) {
    NaturalNumber result;
    result.m_limbs.resize((length + 3) / 4);
    for (std::size_t i = 0; i < length; ++i)
        result.m_limbs[i / 4] |= std::uint32_t{bytes[i]} << (i % 4 * 8);
    result.dropLeadingZeros();
    return result;
}

std::uint64_t NaturalNumber::toUint64() const noexcept {
    std::uint64_t value = 0;
    for (std::size_t i = m_limbs.size(); i-- > 0;)
        value = (value << limbBits) | m_limbs[i];
    return value;
}

void NaturalNumber::multiplyAndAdd(std::uint32_t factor, std::uint32_t summand) {
    std::uint64_t carry = summand;
    for (std::uint32_t& limb : m_limbs) {
        carry += static_cast<std::uint64_t>(limb) * factor;
        limb = lowLimb(carry);
        carry >>= limbBits;
    }
    if (carry != 0) m_limbs.push_back(lowLimb(carry));
    dropLeadingZeros();
}

void NaturalNumber::shiftLeft(std::size_t bits) {
    if (isZero()) return;
    const auto within = static_cast<unsigned int>(bits % limbBits);
    if (within != 0) multiplyAndAdd(std::uint32_t{1} << within, 0);
    m_limbs.insert(m_limbs.begin(), bits / limbBits, 0);
}

void NaturalNumber::shiftRight(std::size_t bits) {
    const std::size_t whole = std::min(bits / limbBits, m_limbs.size());
    m_limbs.erase(m_limbs.begin(), m_limbs.begin() + static_cast<std::ptrdiff_t>(whole));
    const auto within = static_cast<unsigned int>(bits % limbBits);
    if (within == 0) return;
    for (std::size_t i = 0; i < m_limbs.size(); ++i) {
        const std::uint64_t above = i + 1 < m_limbs.size() ? m_limbs[i + 1] : 0u;
        m_limbs[i] = lowLimb((above << limbBits | m_limbs[i]) >> within);
    }
    dropLeadingZeros();
}

std::size_t NaturalNumber::trailingZeroBits() const noexcept {
    const auto first =
        std::find_if(m_limbs.begin(), m_limbs.end(), [](std::uint32_t limb) { return limb != 0; });
    if (first == m_limbs.end()) return 0;
    return static_cast<std::size_t>(first - m_limbs.begin()) * limbBits +
           static_cast<std::size_t>(std::countr_zero(*first));
}

NaturalNumber& NaturalNumber::operator+=(const NaturalNumber& other) {
    m_limbs.resize(std::max(m_limbs.size(), other.m_limbs.size()));
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < m_limbs.size(); ++i) {
        carry += m_limbs[i];
        if (i < other.m_limbs.size()) carry += other.m_limbs[i];
        m_limbs[i] = lowLimb(carry);
        carry >>= limbBits;
    }
    if (carry != 0) m_limbs.push_back(lowLimb(carry));
    return *this;
}

NaturalNumber& NaturalNumber::operator-=(const NaturalNumber& other) {
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < m_limbs.size(); ++i) {
        const std::uint64_t subtrahend = (i < other.m_limbs.size() ? other.m_limbs[i] : 0u) + borrow;
        borrow = m_limbs[i] < subtrahend ? 1 : 0;
        m_limbs[i] = lowLimb(m_limbs[i] - subtrahend);
    }
    dropLeadingZeros();
    return *this;
}

std::uint32_t NaturalNumber::divideBy(std::uint32_t divisor) {
    std::uint64_t remainder = 0;
    for (std::size_t i = m_limbs.size(); i-- > 0;) {
        remainder = (remainder << limbBits) | m_limbs[i];
        m_limbs[i] = lowLimb(remainder / divisor);
        remainder %= divisor;
    }
    dropLeadingZeros();
    return lowLimb(remainder);
}

NaturalNumber NaturalNumber::powerOf(std::uint32_t base, unsigned int exponent) {
    NaturalNumber result = 1;
    while (exponent > 0) {
        // As many factors at once as fit into one limb.
        std::uint64_t factor = base;
        for (--exponent; exponent > 0 && factor * base <= UINT32_MAX; --exponent)
            factor *= base;
        result.multiplyAndAdd(lowLimb(factor), 0);
    }
    return result;
}

NaturalNumber NaturalNumber::greatestCommonDivisor(NaturalNumber left, NaturalNumber right) {
    if (left.isZero()) return right;
    if (right.isZero()) return left;
    // Twos come off first; then the difference of two odd numbers has at least one more to take off.
    const std::size_t twos = std::min(left.trailingZeroBits(), right.trailingZeroBits());
    left.shiftRight(left.trailingZeroBits());
    while (!right.isZero()) {
        right.shiftRight(right.trailingZeroBits());
        if (left > right) std::swap(left, right);
        right -= left;
    }
    left.shiftLeft(twos);
    return left;
}

std::pair<NaturalNumber, NaturalNumber> NaturalNumber::divide(const NaturalNumber& dividend,
                                                              const NaturalNumber& divisor) {
    if (divisor.m_limbs.size() == 1) {
        NaturalNumber quotient = dividend;
        const std::uint32_t remainder = quotient.divideBy(divisor.m_limbs[0]);
        return {std::move(quotient), NaturalNumber(remainder)};
    }
    // Bit by bit: quotients here are short, or the numbers are.
    NaturalNumber quotient;
    NaturalNumber remainder;
    for (std::size_t bit = dividend.bitLength(); bit-- > 0;) {
        remainder.multiplyAndAdd(2, (dividend.m_limbs[bit / limbBits] >> (bit % limbBits)) & 1);
        quotient.multiplyAndAdd(2, 0);
        if (remainder >= divisor) {
            remainder -= divisor;
            quotient += 1;
        }
    }
    return {std::move(quotient), std::move(remainder)};
}

NaturalNumber operator*(const NaturalNumber& left, const NaturalNumber& right) {
    NaturalNumber result;
    result.m_limbs.resize(left.m_limbs.size() + right.m_limbs.size());
    for (std::size_t i = 0; i < left.m_limbs.size(); ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < right.m_limbs.size() || carry != 0; ++j) {
            carry += result.m_limbs[i + j];
            if (j < right.m_limbs.size())
                carry += static_cast<std::uint64_t>(left.m_limbs[i]) * right.m_limbs[j];
            result.m_limbs[i + j] = lowLimb(carry);
            carry >>= limbBits;
        }
    }
    result.dropLeadingZeros();
    return result;
}

std::strong_ordering operator<=>(const NaturalNumber& left, const NaturalNumber& right) noexcept {
    if (left.m_limbs.size() != right.m_limbs.size()) return left.m_limbs.size() <=> right.m_limbs.size();
    for (std::size_t i = left.m_limbs.size(); i-- > 0;) {
        if (left.m_limbs[i] != right.m_limbs[i]) return left.m_limbs[i] <=> right.m_limbs[i];
    }
    return std::strong_ordering::equal;
}

void NaturalNumber::dropLeadingZeros() noexcept {
    while (!m_limbs.empty() && m_limbs.back() == 0)
        m_limbs.pop_back();
}
