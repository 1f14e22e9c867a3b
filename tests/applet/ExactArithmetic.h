#pragma once

#include <cstdint>

/// Arithmetic in integers, rounded exactly where a test says so: what a processor's floating point is to be
/// judged by. Only positive numbers; every operation rounds to the nearest number of a precision, halves to
/// the even one.
namespace exact {

/// Bits of a double and of the extended format.
constexpr int doubleBits = 53;
constexpr int extendedBits = 64;

/// mantissa x 2^exponent; the mantissa's top bit is set, but for zero.
struct Number {
    std::uint64_t mantissa;
    int exponent;
};

Number fromInteger(std::uint64_t value);
/// The value that a double holds, with no rounding.
Number fromDouble(double value);
/// Of a number that a double holds exactly; anything else is a failure of the test.
double toDouble(const Number& number);

Number rounded(const Number& number, int bits);
Number product(const Number& first, const Number& second, int bits);
Number quotient(const Number& dividend, const Number& divisor, int bits);
/// The number times a power of two, which rounds nothing.
Number scaled(const Number& number, int powerOfTwo);
/// The number plus a half; the number is below 2^52.
Number plusHalf(const Number& number, int bits);
/// Its integer part; the number is below 2^64.
std::uint64_t truncated(const Number& number);

} // namespace exact
