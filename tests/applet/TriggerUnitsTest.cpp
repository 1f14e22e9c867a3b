// The conversions of the trigger's times, judged by exact arithmetic: the same register values wherever the
// applet is built.

#include "applet/TriggerUnits.h"
#include "tests/applet/ExactArithmetic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <random>
#include <string>

namespace {

using exact::doubleBits;
using exact::extendedBits;
using exact::fromDouble;
using exact::fromInteger;
using exact::Number;
using exact::plusHalf;
using exact::product;
using exact::quotient;
using exact::scaled;
using exact::toDouble;
using exact::truncated;

constexpr unsigned sweepSize = 1000000;
constexpr unsigned shortSweepSize = 200000;
constexpr double ticksPerSecond = 62500000.0;
constexpr double lowestRate = 0.01455191522836685;
constexpr double highestRate = 6250000.0;

const Number one = fromInteger(1);
const Number thousand = fromInteger(1000);
const Number fortyEight = fromInteger(48);
/// 1e-9 as a double.
const Number nanosecond{0x112E0BE826D695ULL << 11, -82 - 11};

/// A hash of everything that was computed, in order (FNV-1a).
class Digest {
  public:
    void add(std::uint64_t value) {
        for (int byte = 0; byte < 8; ++byte) {
            mHash = (mHash ^ ((value >> (8 * byte)) & 0xFFU)) * 0x100000001B3ULL;
        }
    }
    void add(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        add(bits);
    }
    [[nodiscard]] std::uint64_t value() const { return mHash; }

  private:
    std::uint64_t mHash = 0xCBF29CE484222325ULL;
};

/// Values that are the same on every machine: anywhere, on round decimals, and next to where a result jumps.
class Values {
  public:
    explicit Values(std::uint64_t seed) : mBits(seed) {}

    std::uint64_t below(std::uint64_t limit) { return mBits() % limit; }

    /// In a range, every order of magnitude alike; all 53 bits of the mantissa vary.
    double spread(double from, double to) {
        const double fraction = std::ldexp(static_cast<double>(mBits() >> 11), -doubleBits);
        int exponentFrom = 0;
        int exponentTo = 0;
        std::frexp(from, &exponentFrom);
        std::frexp(to, &exponentTo);
        const auto octaves = static_cast<std::uint64_t>(exponentTo - exponentFrom + 1);
        const double value = std::ldexp(1.0 + fraction, exponentFrom - 1 + static_cast<int>(below(octaves)));
        return std::min(std::max(value, from), to);
    }

    /// A value or one of its neighbours, up to two away.
    double near(double value) {
        const auto steps = static_cast<int>(below(5)) - 2;
        for (int step = 0; step < std::abs(steps); ++step) {
            value = std::nextafter(value, steps < 0 ? 0.0 : HUGE_VAL);
        }
        return value;
    }

    double rate() {
        switch (below(4)) {
        case 0:
            return clampedRate(near(ticksPerSecond / static_cast<double>(10 + below(4294967286ULL))));
        case 1:
            return clampedRate(near(ticksPerSecond / static_cast<double>(10 + below(100000))));
        case 2:
            return clampedRate(static_cast<double>(15 + below(100000000)) / 1000.0);
        default:
            return spread(lowestRate, highestRate);
        }
    }

    /// Microseconds up to a limit; half ticks are 8 ns apart.
    double time(double from, double limit) {
        double value = 0;
        switch (below(3)) {
        case 0:
            value = near(static_cast<double>(below(static_cast<std::uint64_t>(limit * 125.0))) / 125.0);
            break;
        case 1:
            value = near(static_cast<double>(below(1000000)) / 125.0);
            break;
        default:
            value = spread(0.001, limit);
        }
        return std::min(std::max(value, from), limit);
    }

  private:
    static double clampedRate(double rate) { return std::min(std::max(rate, lowestRate), highestRate); }

    std::mt19937_64 mBits;
};

std::string hexadecimal(std::uint64_t value) {
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(value));
    return text.data();
}

/// The digest of a sweep is the same for every build; it is printed so that two builds can be laid side by
/// side.
void expectDigest(const char* sweep, const Digest& digest, const char* expected) {
    std::cout << sweep << ' ' << hexadecimal(digest.value()) << '\n';
    EXPECT_EQ(hexadecimal(digest.value()), expected);
}

TEST(TriggerUnits, TheHighestRateIsTenTicksAndTheLowestAll32Bits) {
    EXPECT_EQ(trigger::periodTicks(highestRate), 10U);
    EXPECT_EQ(trigger::periodTicks(lowestRate), 4294967296U);
}

TEST(TriggerUnits, ARateBecomesItsPeriodInTicksCutOff) {
    Values values(1);
    Digest digest;
    for (unsigned count = 0; count < sweepSize; ++count) {
        const double rate = values.rate();
        const Number seconds = product(scaled(fromDouble(rate), 4), nanosecond, doubleBits);
        const std::uint64_t expected = truncated(quotient(one, seconds, doubleBits));
        const std::uint64_t ticks = trigger::periodTicks(rate);
        ASSERT_EQ(ticks, expected) << std::hexfloat << rate;
        digest.add(ticks);
    }
    expectDigest("periods", digest, "d7ab02c69a62061f");
}

TEST(TriggerUnits, ARateGoesThroughItsPeriodInExtendedPrecision) {
    Values values(2);
    Digest digest;
    for (unsigned count = 0; count < shortSweepSize; ++count) {
        const double rate = values.rate();
        const Number there =
            quotient(one, product(scaled(fromDouble(rate), 4), nanosecond, extendedBits), extendedBits);
        const Number back = quotient(one, product(scaled(there, 4), nanosecond, extendedBits), extendedBits);
        const double result = trigger::rateThroughPeriod(rate);
        ASSERT_EQ(result, toDouble(exact::rounded(back, doubleBits))) << std::hexfloat << rate;
        digest.add(result);
    }
    expectDigest("round trips", digest, "d3039e9df2d9f78d");
}

TEST(TriggerUnits, ADelayBecomesTicksHalvesUp) {
    Values values(3);
    Digest digest;
    for (unsigned count = 0; count < sweepSize; ++count) {
        const double delay = values.time(0.0, 34000000.0);
        const Number sixteenths = product(fromDouble(delay), thousand, doubleBits);
        const std::uint64_t expected = truncated(plusHalf(scaled(sixteenths, -4), doubleBits));
        const auto ticks = static_cast<std::uint64_t>(trigger::delayTicks(delay));
        ASSERT_EQ(ticks, expected) << std::hexfloat << delay;
        digest.add(ticks);
    }
    expectDigest("delays", digest, "50b976dca6bfbc2b");
}

TEST(TriggerUnits, AWidthBecomesTicksHalvesUp) {
    const Number ticksPerMicrosecond = fromDouble(62.5);
    Values values(4);
    Digest digest;
    for (unsigned count = 0; count < sweepSize; ++count) {
        const double width = values.time(1.0, 68000000.0);
        const std::uint64_t expected =
            truncated(plusHalf(product(fromDouble(width), ticksPerMicrosecond, doubleBits), doubleBits));
        const std::uint64_t ticks = trigger::widthTicks(width);
        ASSERT_EQ(ticks, expected) << std::hexfloat << width;
        digest.add(ticks);
    }
    expectDigest("widths", digest, "b587faebfb77b1f4");
}

TEST(TriggerUnits, ADebounceTimeBecomesStepsHalvesUp) {
    Values values(5);
    Digest digest;
    for (unsigned count = 0; count < shortSweepSize; ++count) {
        const double time = values.below(2) == 0
                                ? values.near(static_cast<double>(2 * values.below(64) + 1) * 0.024)
                                : values.spread(0.096, 3.024);
        const Number steps =
            quotient(product(fromDouble(time), thousand, doubleBits), fortyEight, doubleBits);
        const std::uint64_t result = trigger::debounceSteps(time);
        ASSERT_EQ(result, truncated(plusHalf(steps, doubleBits))) << std::hexfloat << time;
        digest.add(result);
    }
    expectDigest("debounce times", digest, "2a1b9af1392eef7a");
}

TEST(TriggerUnits, TicksBecomeMicrosecondsAndFrequencies) {
    Values values(6);
    Digest digest;
    for (unsigned count = 0; count < shortSweepSize; ++count) {
        const std::uint64_t ticks = 1 + values.below(4294967295ULL);
        const Number sixteenfold = scaled(fromInteger(ticks), 4);
        const double microseconds = trigger::microseconds(ticks);
        ASSERT_EQ(microseconds, toDouble(quotient(sixteenfold, thousand, doubleBits))) << ticks;
        const Number seconds = product(sixteenfold, nanosecond, doubleBits);
        const double frequency = trigger::frequency(ticks);
        ASSERT_EQ(frequency, toDouble(quotient(one, seconds, doubleBits))) << ticks;
        digest.add(microseconds);
        digest.add(frequency);
    }
    expectDigest("readings", digest, "9c23d05ef391e2c1");
}

TEST(TriggerUnits, DebounceStepsBecomeMicroseconds) {
    for (unsigned steps = 0; steps <= 63; ++steps) {
        const double expected = steps == 0 ? 0.0 : toDouble(quotient(fromInteger(48 * steps), thousand, 53));
        EXPECT_EQ(trigger::debounceMicroseconds(steps), expected) << steps;
    }
}

TEST(TriggerUnits, APeriodOfNoTicksIsAnInfiniteFrequency) { EXPECT_EQ(trigger::frequency(0), HUGE_VAL); }

// ---- the judge itself

TEST(ExactArithmetic, RoundsHalvesToEven) {
    const Number tiny = scaled(one, -53);
    EXPECT_EQ(toDouble(plusHalf(fromDouble(0.5), doubleBits)), 1.0);
    EXPECT_EQ(truncated(fromDouble(7.99)), 7U);
    EXPECT_EQ(truncated(fromDouble(0.99)), 0U);
    // 2^53 + 1 and 2^53 + 3 lie half way between two doubles.
    EXPECT_EQ(toDouble(exact::rounded(fromInteger((1ULL << 53) + 1), doubleBits)), 9007199254740992.0);
    EXPECT_EQ(toDouble(exact::rounded(fromInteger((1ULL << 53) + 3), doubleBits)), 9007199254740996.0);
    EXPECT_EQ(toDouble(plusHalf(tiny, doubleBits)), 0.5 + std::ldexp(1.0, -53));
    EXPECT_EQ(toDouble(plusHalf(scaled(tiny, -60), doubleBits)), 0.5);
}

TEST(ExactArithmetic, AgreesWithTheProcessorsDoubles) {
    Values values(7);
    for (unsigned count = 0; count < shortSweepSize / 4; ++count) {
        const double first = values.spread(1e-9, 1e9);
        const double second = values.spread(1e-9, 1e9);
        const volatile double multiplied = first * second;
        const volatile double divided = first / second;
        const volatile double raised = first + 0.5;
        ASSERT_EQ(toDouble(product(fromDouble(first), fromDouble(second), doubleBits)), multiplied);
        ASSERT_EQ(toDouble(quotient(fromDouble(first), fromDouble(second), doubleBits)), divided);
        ASSERT_EQ(toDouble(plusHalf(fromDouble(first), doubleBits)), raised);
    }
}

TEST(ExactArithmetic, AgreesWithTheProcessorsExtendedFormat) {
    const auto toExtended = [](const Number& number) {
        return std::ldexp(static_cast<long double>(number.mantissa), number.exponent);
    };
    Values values(8);
    for (unsigned count = 0; count < shortSweepSize / 4; ++count) {
        const double first = values.spread(1e-9, 1e9);
        const double second = values.spread(1e-9, 1e9);
        const long double multiplied = static_cast<long double>(first) * second;
        const long double divided = static_cast<long double>(first) / second;
        ASSERT_EQ(toExtended(product(fromDouble(first), fromDouble(second), extendedBits)), multiplied);
        ASSERT_EQ(toExtended(quotient(fromDouble(first), fromDouble(second), extendedBits)), divided);
    }
}

} // namespace
