#include "grabber_basis/NumberText.h"
#include "tests/support/CommaLocale.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using namespace kavo::text;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string printed(const char* format, double value) {
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

TEST(NumberTextTest, ShortDoublesHaveTwelveSignificantDigits) {
    EXPECT_EQ(shortDouble(0.1), "0.1");
    EXPECT_EQ(shortDouble(4000.0), "4000");
    EXPECT_EQ(shortDouble(1e20), "1e+20");
    EXPECT_EQ(shortDouble(1.0 / 3.0), "0.333333333333");
    EXPECT_EQ(shortDouble(-0.0), "-0");
    EXPECT_EQ(shortDouble(-1.7976931348623157e308), "-1.79769313486e+308");
}

TEST(NumberTextTest, FixedDoublesHaveTwelveDecimals) {
    EXPECT_EQ(fixedDouble(0.1), "0.100000000000");
    EXPECT_EQ(fixedDouble(0.25), "0.250000000000");
    EXPECT_EQ(fixedDouble(-1e-13), "-0.000000000000");
    EXPECT_EQ(fixedDouble(-std::numeric_limits<double>::max()).size(), 1U + 309U + 1U + 12U);
}

TEST(NumberTextTest, WritesWhatPrintfWrites) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const double value =
            std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 200) - 130);
        ASSERT_EQ(shortDouble(value), printed("%.12g", value));
        ASSERT_EQ(fixedDouble(value), printed("%.12f", value));
    }
    for (const double value : {infinity, -infinity, 0.5, 999999999999.5, 9.9999999999995e-5}) {
        EXPECT_EQ(shortDouble(value), printed("%.12g", value));
        EXPECT_EQ(fixedDouble(value), printed("%.12f", value));
    }
}

TEST(NumberTextTest, ReadsTheLongestIntegerAtTheStart) {
    EXPECT_EQ(toInt32("1024"), 1024);
    EXPECT_EQ(toInt32(" \t-17;\n"), -17);
    EXPECT_EQ(toInt32("+5x"), 5);
    EXPECT_EQ(toInt32("0x10"), 0);
    EXPECT_EQ(toInt32("1e3"), 1);
    EXPECT_EQ(toUInt64("18446744073709551615;"), 18446744073709551615ULL);
}

TEST(NumberTextTest, TextThatIsNoNumberIsZero) {
    for (const char* text : {"", "abc", ";", "-", "+-5", ".", "\xff\xfe", "nan", "inf"}) {
        EXPECT_EQ(toInt32(text), 0) << text;
        EXPECT_EQ(toUInt64(text), 0U) << text;
        EXPECT_EQ(toDouble(text), 0.0) << text;
    }
    EXPECT_EQ(toInt32(nullptr), 0);
    EXPECT_EQ(toUInt64(nullptr), 0U);
    EXPECT_EQ(toDouble(nullptr), 0.0);
}

TEST(NumberTextTest, IntegerBeyondItsRangeGivesTheNearestEndOnEveryArchitecture) {
    EXPECT_EQ(toInt32("2147483647"), 2147483647);
    EXPECT_EQ(toInt32("2147483648"), 2147483647);
    EXPECT_EQ(toInt32("4294967295"), 2147483647);
    EXPECT_EQ(toInt32("-2147483649"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(toInt32("99999999999999999999999999"), 2147483647);
    EXPECT_EQ(toUInt64("99999999999999999999999999"), std::numeric_limits<std::uint64_t>::max());
}

TEST(NumberTextTest, NegativeUnsignedNumberWrapsAround) {
    EXPECT_EQ(toUInt64("-1"), std::numeric_limits<std::uint64_t>::max());
}

TEST(NumberTextTest, ReadsTheLongestFloatingPointNumberAtTheStart) {
    EXPECT_EQ(toDouble("0.25;"), 0.25);
    EXPECT_EQ(toDouble("  -1e-3x"), -1e-3);
    EXPECT_EQ(toDouble(".5"), 0.5);
    EXPECT_EQ(toDouble("1,5"), 1.0);
    EXPECT_EQ(toDouble("1e999"), std::numeric_limits<double>::max());
    EXPECT_EQ(toDouble("-2e308"), std::numeric_limits<double>::lowest());
    EXPECT_EQ(toDouble("1e-999"), 0.0);
}

TEST(NumberTextTest, WordsAreNoNumbers) {
    for (const char* text : {"nan", "NAN", " -nan(1)", "+NaN", "inf", "-INF", "\tInfinity"}) {
        EXPECT_EQ(toDouble(text), 0.0) << text;
    }
}

TEST(NumberTextTest, ReadsBackWhatItWroteUnderACommaLocale) {
    const kavo::test::CommaLocale locale;
    EXPECT_EQ(printed("%.12g", 1234.5), "1234,5") << "the locale is in effect";
    EXPECT_EQ(shortDouble(1234.5), "1234.5");
    EXPECT_EQ(fixedDouble(1234.5), "1234.500000000000");
    EXPECT_EQ(toDouble("1234.5"), 1234.5);
    EXPECT_EQ(toDouble("1234,5"), 1234.0);
    EXPECT_EQ(toInt32("1.234"), 1);
}

} // namespace
