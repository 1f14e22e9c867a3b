#include "simulator/trigger/PulseGenerator.h"

#include <algorithm>

namespace simulator {

void PulseGenerator::controlClear(std::uint32_t mode) {
    mHeld = mode == modeHold;
    if (mode != modeHold && mode != modePulse)
        return;
    mFillLevel = 0;
    mFresh = true;
}

// While an entry waits the period has not passed: the pulse would have been given.
bool PulseGenerator::arrive(Tick now) {
    if (mHeld || !mSettings.queueMode)
        return true;
    const bool accepted = mSettings.queueEnabled ? mFillLevel < limit() : periodPassed(now);
    if (accepted)
        ++mFillLevel;
    return accepted;
}

void PulseGenerator::givePulse(Tick now) {
    mLastPulse = now;
    mFresh = false;
    if (mSettings.queueMode && mSequence.count(mSettings.sequenceDownscale, mSettings.sequenceSelectedPulse))
        --mFillLevel;
}

std::uint32_t PulseGenerator::limit() const { return std::min(mSettings.queueFullValue, queueCapacity); }

} // namespace simulator
