// Number keeps decimals exactly; its double is the nearest one, with strtod as the judge.

#include "Support/Rows.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Numbers/Dimension.h>
#include <LowLevelFacilities/Numbers/Number.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>

namespace {

constexpr double offset = Number::toNearest;

Number number(const char* text) { return Number(CXString(text), false); }

TEST(Number, IsExactWhereADoubleIsNot) {
    EXPECT_EQ(number("0.30000000000000000000"), number("3e-1"));
    EXPECT_NE(number("0.1"), Number::fromDouble(0.1)); // the double is another number
    EXPECT_NE(number("1e4000"), number("1.00000000000000000000001e4000"));
    EXPECT_EQ(number("-0"), Number());
    EXPECT_TRUE(number("-1e-4000") < Number() && Number() < number("1e-4000"));
    EXPECT_TRUE(number("-2") < number("-1.9999999999999999999999"));
}

std::string fraction(const Number& value) {
    return (value.IsNegative() ? "-" : "") + std::to_string(value.GetNumerator().toUint64()) + "/" +
           std::to_string(value.GetDenominator().toUint64());
}

TEST(Number, IsAlwaysInLowestTerms) {
    for (const auto& [value, terms] : Rows<Number, const char*>{{number("-12.50"), "-25/2"},
                                                                {number("0.000"), "0/1"},
                                                                {number("40e-2"), "2/5"},
                                                                {Number::fromDouble(-0.75), "-3/4"},
                                                                {Number::fromDouble(6e3), "6000/1"},
                                                                {Number::fromFraction(0, 7, true), "0/1"},
                                                                {number("0.3").times(10, 9), "1/3"},
                                                                {Number(-6).times(35, 15), "-14/1"},
                                                                {Number(-6).times(0, 5), "0/1"}})
        EXPECT_EQ(fraction(value), terms);

    std::mt19937_64 random(20260202); // reproducible
    for (int i = 0; i < 300; ++i) {
        const NaturalNumber common = NaturalNumber(random() >> (i % 60) | 1) * NaturalNumber(random() | 1);
        const std::uint64_t one = random() >> (i % 64) | 1;
        const std::uint64_t other = random() >> (i % 48) | 1;
        const Number value = Number::fromFraction(common * one, common * other, i % 2 == 0);
        EXPECT_EQ(value.GetNumerator(), NaturalNumber(one / std::gcd(one, other)));
        EXPECT_EQ(value.GetDenominator(), NaturalNumber(other / std::gcd(one, other)));
    }
}

TEST(Number, GivesTheNearestDouble) {
    const auto check = [](const std::string& text) {
        const double expected = std::strtod(text.c_str(), nullptr);
        const double actual = number(text.c_str()).GetDoubleValue();
        EXPECT_EQ(expected, actual) << text;
        EXPECT_EQ(std::signbit(expected), std::signbit(actual)) << text;
    };
    for (const char* text :
         {"0", "-0.1", "1.7976931348623157e308", "1.7976931348623159e308", "-1e400", "5e-324",
          "2.4703282292062327e-324", "2.4703282292062328e-324", "2.2250738585072011e-308", "9007199254740993",
          "9007199254740995", "9007199254740993.00000000000000000000000000000000001", "1e-400"})
        check(text);
    std::mt19937_64 random(20260131); // reproducible
    for (int i = 0; i < 2000; ++i) {
        const int exponent = static_cast<int>(random() % 660) - 340;
        check((i % 2 == 0 ? "" : "-") + std::to_string(random()) + "." + std::to_string(random()) + "e" +
              std::to_string(exponent - 19));
    }
    for (const double value :
         {-1e-310, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(), 12345.678})
        EXPECT_EQ(value, Number::fromDouble(value).GetDoubleValue());
    EXPECT_EQ(Number(), Number::fromDouble(NAN));
}

TEST(Number, RoundsByItsOffsetAndSaturates) {
    for (const auto& [text, offset, value] : Rows<const char*, double, int>{{"2.5", offset, 2},
                                                                            {"2.500001", offset, 3},
                                                                            {"2.5000009999", offset, 2},
                                                                            {"-2.6", offset, -3},
                                                                            {"2.99", 0, 2},
                                                                            {"1", -2, 0},
                                                                            {"1.5", -0.5, 1},
                                                                            {"2147483647.4", offset, INT_MAX},
                                                                            {"2147483648", offset, INT_MAX},
                                                                            {"-2147483648", offset, INT_MIN},
                                                                            {"-1e4000", offset, INT_MIN},
                                                                            {"1e-4000", offset, 0}})
        EXPECT_EQ(value, number(text).GetIntValue(offset)) << text;
    EXPECT_EQ(INT_MIN, Number(INT_MIN).GetIntValue(0));
}

TEST(Number, RoundsSmallNumbersAsItDoesLargeOnes) {
    constexpr std::uint64_t large = 1'000'000'000'000;
    std::mt19937_64 random(20260203); // reproducible
    for (int i = 0; i < 2000; ++i) {
        const std::uint64_t denominator = 1 + random() % 511;
        const std::uint64_t numerator = random() >> (33 + i % 31);
        const unsigned int digits = static_cast<unsigned int>(i % 4);
        const auto text = [&](std::uint64_t value, double by) {
            return Number::fromFraction(value, denominator, false).GetDecimalText(digits, by);
        };
        for (const double by : {offset, 0.0, 0.5, 0.25, 0.999999}) {
            std::string expected = text(numerator + large * denominator, by).substr(1); // without its 1
            expected.erase(
                0, std::min(expected.find_first_not_of('0'), digits == 0 ? 11 : expected.find('.') - 1));
            EXPECT_EQ(text(numerator, by), expected) << numerator << "/" << denominator << " by " << by;
        }
    }
}

TEST(Number, ReadsTheNumberAtTheStartOrRefusesTheText) {
    const std::string tooLong(Number::maxDigits + 1, '9');
    for (const auto& [text, value, isWhole] :
         Rows<const char*, const char*, bool>{{" +12.50 ", "12.5", true},
                                              {".5", "0.5", true},
                                              {"5.", "5", true},
                                              {"1e2", "100", true},
                                              {"1e+", "1", false},
                                              {"12mm", "12", false},
                                              {"", "0", false},
                                              {"-.", "0", false},
                                              {"1e99999999999", "0", false},
                                              {tooLong.c_str(), "0", false}}) {
        EXPECT_EQ(number(value), number(text)) << text;
        if (isWhole) {
            EXPECT_EQ(number(value), Number(CXString(text), true));
        } else {
            EXPECT_THROW(Number(CXString(text), true), CPExceptionInvalidArgument) << text;
        }
    }
}

TEST(Dimension, ConvertsBetweenUnitsExactly) {
    // An inch in every unit, in the order of their numbers.
    const char* const inch[] = {"1",    "10",    "1440", "100", "1000", "25.4", "254",
                                "2540", "25400", "72",   "720", "7200", "96"};
    for (int i = 0; i <= 12; ++i) {
        const auto unit = static_cast<Dimension::UnitsEnum>(i);
        Dimension length;
        length.SetValue(number(inch[i]), unit);
        for (int other = 0; other <= 12; ++other)
            EXPECT_EQ(number(inch[other]), length.GetValue(static_cast<Dimension::UnitsEnum>(other)))
                << i << " by " << other;
    }
    EXPECT_EQ(265, Dimension(1, Dimension::XpsUnit).GetValue(Dimension::Micron).GetIntValue(offset));
    EXPECT_THROW((void)Dimension().GetValue(static_cast<Dimension::UnitsEnum>(13)),
                 CPExceptionInvalidArgument);
}

TEST(Dimension, DoesNotGrowFromUnitToUnit) {
    Dimension length(215.9, Dimension::Millimeter);
    const Number millimetres = length.GetValue();
    for (int turn = 0; turn < 500; ++turn)
        for (int unit = 0; unit <= 12; ++unit) {
            const auto next = static_cast<Dimension::UnitsEnum>((unit + turn) % 13);
            length.SetValue(length.GetValue(next), next);
            EXPECT_LT(length.GetValue().GetDenominator().bitLength(), 100u);
        }
    EXPECT_EQ(length.GetValue(Dimension::Millimeter), millimetres);
}

TEST(Dimension, WritesItsValue) {
    const Dimension a4Width(210000, Dimension::Micron);
    const Dimension negative(-0.01, Dimension::Inch);
    EXPECT_EQ("210.00", a4Width.GetStringValue(Dimension::Millimeter, 2, offset, false, false));
    EXPECT_EQ("210 mm", a4Width.GetStringValue(Dimension::Millimeter, 2, offset, true, true));
    EXPECT_EQ("8.268", a4Width.GetStringValue(Dimension::Inch, 3, offset, false, false));
    EXPECT_EQ("8.26", a4Width.GetStringValue(Dimension::Inch, 2, 0, false, false));
    EXPECT_EQ("-0.01", negative.GetStringValue(Dimension::Inch, 2, offset, false, false));
    EXPECT_EQ("0.0", negative.GetStringValue(Dimension::Inch, 1, offset, false, false));
}

} // namespace
