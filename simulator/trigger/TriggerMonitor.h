#pragma once

#include "simulator/trigger/PulseDownscale.h"

namespace simulator {

/// A flag that stays until it is cleared. Its clear register clears it with 2 and keeps it down with 1.
class StickyFlag {
  public:
    /// True when the flag was down and goes up.
    bool raise() {
        if (mHeld || mRaised)
            return false;
        mRaised = true;
        return true;
    }
    void control(std::uint32_t mode) {
        mHeld = mode == modeHold;
        if (mode == modeHold || mode == modePulse)
            mRaised = false;
    }
    bool raised() const { return mRaised; }

  private:
    bool mRaised = false;
    bool mHeld = false;
};

/// Sees whether the camera answers each action command with a picture before the next command.
class FrameCheck {
  public:
    /// True when the command before this one got no answer.
    bool actionCommand() {
        if (mHeld)
            return false;
        const bool missing = mWaiting;
        mWaiting = true;
        if (mPending < UINT32_MAX)
            ++mPending;
        return missing;
    }
    void frameStarted() {
        mWaiting = false;
        if (mPending > 0)
            --mPending;
    }
    /// Value of the reset register: 2 forgets what is open, 1 keeps forgetting.
    void control(std::uint32_t mode) {
        mHeld = mode == modeHold;
        if (mode == modeHold || mode == modePulse) {
            mWaiting = false;
            mPending = 0;
        }
    }
    /// Action commands that no frame start has answered yet.
    std::uint32_t pending() const { return mPending; }

  private:
    bool mWaiting = false;
    bool mHeld = false;
    std::uint32_t mPending = 0;
};

} // namespace simulator
