#pragma once

#include "simulator/Visibility.h"

#include <chrono>
#include <cstdint>
#include <mutex>

namespace simulator {

/// Board time: a count of ticks of 16 ns (62.5 MHz) since power-on. It is driven by the wall clock, or
/// stepped by hand so that every sequence can be checked tick by tick. Every function may be called from any
/// thread.
class SIMULATOR_PUBLIC BoardClock {
  public:
    static constexpr std::uint64_t ticksPerSecond = 62500000;
    static constexpr std::uint64_t nanosecondsPerTick = 16;

    BoardClock();

    /// Board time follows the wall clock from its present value on. This is the state after power-on.
    void useWallClock();
    /// Board time stands still until advance() moves it.
    void stepByHand();
    bool isSteppedByHand() const;

    /// Moves a clock that is stepped by hand forward; a clock driven by the wall is left alone. What the
    /// board does in that time happens when the board is next asked for anything.
    void advance(std::uint64_t ticks);

    /// The same up to a tick; a tick that has passed changes nothing.
    void advanceTo(std::uint64_t tick);

    /// Board time in ticks.
    std::uint64_t now() const;

    /// Back to tick 0.
    void restart(bool steppedByHand);

  private:
    using WallClock = std::chrono::steady_clock;

    std::uint64_t nowUnlocked() const;

    mutable std::mutex mLock;
    bool mSteppedByHand = false;
    std::uint64_t mTicksAtStart = 0;
    WallClock::time_point mWallStart;
};

} // namespace simulator
