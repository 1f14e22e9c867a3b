#pragma once

#include <cstdint>

/// Conversions between what users set and what the trigger clock counts. A tick is 16 ns. Every rounding here
/// is part of the contract: another grouping of the factors gives other register values.
namespace trigger {

constexpr double nanosecondsPerTick = 16.0;
constexpr double nanosecond = 1e-9;

/// Period in ticks of a rate in Hz, truncated. The product is rounded to a double before the quotient is
/// taken; the quotient is a double as well.
inline std::uint64_t periodTicks(double rate) {
    const double seconds = rate * nanosecondsPerTick * nanosecond;
    return static_cast<std::uint64_t>(1.0 / seconds);
}

/// A rate passed through its period in ticks and back, without an integer step, in extended precision: the
/// same rate but for the last bit.
inline double rateThroughPeriod(double rate) {
    const long double tickNanoseconds = nanosecondsPerTick;
    const long double seconds = nanosecond;
    const long double period = 1.0L / (rate * tickNanoseconds * seconds);
    return static_cast<double>(1.0L / (period * tickNanoseconds * seconds));
}

/// Period in microseconds of a rate in Hz.
inline double periodMicroseconds(double rate) { return 1e6 / rate; }

/// Ticks to microseconds, in doubles.
inline double microseconds(std::uint64_t ticks) { return static_cast<double>(ticks) * 16.0 / 1000.0; }

/// A delay in microseconds to ticks, halves up, through a signed integer.
inline std::int64_t delayTicks(double microseconds) {
    return static_cast<std::int64_t>(microseconds * 1000.0 * 0.0625 + 0.5);
}

/// A width in microseconds to ticks, halves up, through an unsigned integer: the longest needs all 32 bits.
inline std::uint64_t widthTicks(double microseconds) {
    return static_cast<std::uint64_t>(microseconds * 62.5 + 0.5);
}

/// Frequency in Hz of a measured period in ticks; infinite for 0.
inline double frequency(std::uint64_t ticks) {
    return 1.0 / (static_cast<double>(ticks) * nanosecondsPerTick * nanosecond);
}

/// A debounce time in microseconds to steps of 48 ns, halves up.
inline std::uint64_t debounceSteps(double microseconds) {
    return static_cast<std::uint64_t>(microseconds * 1000.0 / 48.0 + 0.5);
}

/// Steps of 48 ns to microseconds, in doubles.
inline double debounceMicroseconds(std::uint64_t steps) {
    return static_cast<double>(steps) * 16.0 * 3.0 / 1000.0;
}

} // namespace trigger
