#pragma once

#include <cstdint>

namespace simulator {

/// The two control values of a register whose name ends in "_Mode".
constexpr std::uint32_t modeHold = 1;
constexpr std::uint32_t modePulse = 2;

/// Counts pulses from 1 to the downscale and lets the selected one pass. A downscale of 0 acts as 1; a
/// selected pulse outside 1 .. downscale lets nothing pass.
class PulseDownscale {
  public:
    /// Counts one pulse and tells whether it passes.
    bool count(std::uint32_t downscale, std::uint32_t selectedPulse) {
        if (mHeld)
            return false;
        ++mCounted;
        const bool passes = mCounted == selectedPulse && mCounted <= (downscale == 0 ? 1 : downscale);
        if (mCounted >= downscale)
            mCounted = 0;
        return passes;
    }

    /// Value of the clear register: 2 starts the count again, 1 keeps it in clear and lets nothing pass.
    void control(std::uint32_t mode) {
        mHeld = mode == modeHold;
        if (mode == modeHold || mode == modePulse)
            mCounted = 0;
    }

  private:
    std::uint32_t mCounted = 0;
    bool mHeld = false;
};

} // namespace simulator
