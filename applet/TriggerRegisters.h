#pragma once

#include <array>

/// One-shot request of a "..._Mode" register; 0 and 1 are levels there.
constexpr unsigned pulseRequest = 2;

/// Bits of the shared monitoring register, per port.
namespace monitoring {

constexpr std::array<unsigned, 2> exceededPeriod{1U << 0, 1U << 3};
constexpr std::array<unsigned, 2> queueFull{1U << 1, 1U << 4};
constexpr std::array<unsigned, 2> missingFrame{1U << 2, 1U << 5};

} // namespace monitoring
