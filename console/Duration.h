#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orbctl {

/// Ticks of board time in a second: one tick is 16 ns.
constexpr double ticksPerSecond = 62.5e6;

/// Reads "500ms", "20us", "1.5s", "160ns" as ticks, rounded; empty where the text is no time or below 0.
std::optional<std::uint64_t> ticksFrom(std::string_view text);
/// A time for people: "125 ms", "20 us", with at most four digits.
std::string durationText(double ticks);

} // namespace orbctl
