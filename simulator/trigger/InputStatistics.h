#pragma once

#include "simulator/trigger/PulseDownscale.h"
#include "simulator/trigger/TriggerListener.h"

#include <algorithm>

namespace simulator {

/// Pulse count of 16 bits that wraps, with a clear register.
class PulseCount {
  public:
    void count() {
        if (!mHeld)
            ++mPulses;
    }
    void control(std::uint32_t mode) {
        mHeld = mode == modeHold;
        if (mode == modeHold || mode == modePulse)
            mPulses = 0;
    }
    std::uint32_t pulses() const { return mPulses; }

  private:
    std::uint16_t mPulses = 0;
    bool mHeld = false;
};

/// Periods between rising edges in ticks: the last one, the shortest and the longest. All are 0 until there
/// was a period, and stop at 2^32 - 1.
class PeriodStatistics {
  public:
    void rise(Tick now) {
        if (mHasRisen)
            measure(now - mLastRise);
        mLastRise = now;
        mHasRisen = true;
    }
    void clearShortestAndLongest() { mShortest = mLongest = 0; }

    std::uint32_t last() const { return mLast; }
    std::uint32_t shortest() const { return mShortest; }
    std::uint32_t longest() const { return mLongest; }

  private:
    void measure(Tick period) {
        mLast = static_cast<std::uint32_t>(std::min<Tick>(period, UINT32_MAX));
        mShortest = mShortest == 0 ? mLast : std::min(mShortest, mLast);
        mLongest = std::max(mLongest, mLast);
    }

    bool mHasRisen = false;
    Tick mLastRise = 0;
    std::uint32_t mLast = 0;
    std::uint32_t mShortest = 0;
    std::uint32_t mLongest = 0;
};

} // namespace simulator
