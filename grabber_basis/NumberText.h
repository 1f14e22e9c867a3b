#pragma once

#include <cstdint>
#include <string>

/// Numbers as the text files hold them: with a decimal point and without grouping, whatever locale the
/// process has set, and the same on every architecture. None of these functions reads or changes the locale
/// of the process.
namespace kavo::text {

/// The printf conversion "%.12g": twelve significant digits, trailing zeros removed.
std::string shortDouble(double value);
/// The printf conversion "%.12f": twelve digits behind the point.
std::string fixedDouble(double value);

/// The longest decimal integer at the start of the text; blanks and a sign may lead. A text that is no
/// number, and null, give 0; a number beyond the range gives its nearest end.
std::int32_t toInt32(const char* text);
/// The same for an unsigned 64-bit number; a leading minus sign negates modulo 2^64.
std::uint64_t toUInt64(const char* text);
/// The same for a floating-point number, which is always finite. Numbers spelled in words ("nan", "inf") are
/// no numbers.
double toDouble(const char* text);

} // namespace kavo::text
