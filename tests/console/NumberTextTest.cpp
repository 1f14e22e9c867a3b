#include "console/NumberText.h"
#include "tests/support/CommaLocale.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace orbctl {

TEST(NumberText, AvoidsAnExponentWhereTheNumberStaysReadable) {
    EXPECT_EQ(textOf(34000000.0), "34000000");
    EXPECT_EQ(textOf(0.01455191522836685), "0.01455191522836685");
    EXPECT_EQ(textOf(0.0), "0");
    EXPECT_EQ(textOf(-0.5), "-0.5");
    EXPECT_EQ(textOf(1e300), "1e+300");
    EXPECT_EQ(textOf(2.220446049250313e-16), "2.220446049250313e-16");
}

TEST(NumberText, ReadsBackAsTheSameDouble) {
    for (const double number : {0.1, 1.0 / 3, 62.5e6 / 4294967296.0, 1e15, 999999999999999.9, -1e-7})
        EXPECT_EQ(doubleFrom(textOf(number)), number) << textOf(number);
}

TEST(NumberText, NamesInfiniteNumbers) {
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(doubleFrom("inf"), std::numeric_limits<double>::infinity());
}

TEST(NumberText, HasADecimalPointInEveryLocale) {
    const kavo::test::CommaLocale locale;
    EXPECT_EQ(textOf(0.5), "0.5");
    EXPECT_EQ(textWithDigits(59.94, 1), "59.9");
    EXPECT_EQ(doubleFrom("0.5"), 0.5);
    EXPECT_EQ(doubleFrom("0,5"), std::nullopt);
}

TEST(NumberText, ReadsDecimalAndHexadecimalWholeNumbers) {
    EXPECT_EQ(unsignedFrom("42"), 42U);
    EXPECT_EQ(unsignedFrom("0x2A"), 42U);
    EXPECT_EQ(unsignedFrom("+42"), 42U);
    EXPECT_EQ(unsignedFrom("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(unsignedFrom("0xffffffffffffffff"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(signedFrom("-42"), -42);
    EXPECT_EQ(signedFrom("0x7fffffffffffffff"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(doubleFrom("0x10"), 16.0);
}

TEST(NumberText, RefusesWhatIsNoWholeNumber) {
    for (const char* const text : {"", "-", "+", "0x", "0xg", "4 2", " 42", "42 ", "4.2", "-1", "+-1",
                                   "18446744073709551616", "0x10000000000000000"})
        EXPECT_EQ(unsignedFrom(text), std::nullopt) << text;
    EXPECT_EQ(signedFrom("9223372036854775808"), std::nullopt);
    EXPECT_EQ(signedFrom("0x8000000000000000"), std::nullopt);
}

TEST(NumberText, RefusesWhatIsNoNumber) {
    for (const char* const text : {"", ".", "1.5x", "one", "1e", "--1"})
        EXPECT_EQ(doubleFrom(text), std::nullopt) << text;
}

TEST(NumberText, FillsHexadecimalDigitsUp) {
    EXPECT_EQ(hexadecimalText(255), "0xff");
    EXPECT_EQ(hexadecimalText(255, 8), "0x000000ff");
    EXPECT_EQ(hexadecimalText(0x123456789, 4), "0x123456789");
}

} // namespace orbctl
