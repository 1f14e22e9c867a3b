#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orbctl {

// Numbers as text, the same in every locale: an applet may switch the locale of the process.

/// The shortest text that reads back as the same double; without an exponent where that stays readable.
std::string textOf(double number);
std::string textOf(std::uint64_t number);
std::string textOf(std::int64_t number);
/// With a fixed number of digits behind the point.
std::string textWithDigits(double number, int digits);
/// "0x" and at least \p digits hexadecimal digits.
std::string hexadecimalText(std::uint64_t number, int digits = 1);

/// A whole number, decimal or hexadecimal ("0x1f"); empty where the text is anything else or does not fit.
std::optional<std::uint64_t> unsignedFrom(std::string_view text);
std::optional<std::int64_t> signedFrom(std::string_view text);
/// A number such as "-0.5", "1e3", "inf"; whole hexadecimal numbers are taken too.
std::optional<double> doubleFrom(std::string_view text);

} // namespace orbctl
