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

bool PulseGenerator::arrive(Tick now) {
    if (mHeld || !mSettings.queueMode)
        return true;
    const bool accepted =
        mSettings.queueEnabled ? mFillLevel < limit() : mFillLevel == 0 && periodPassed(now);
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

Tick PulseGenerator::nextActivity() const {
    const bool wanted = !mSettings.queueMode || mFillLevel > 0;
    return wanted && !mHeld ? readyAt() : neverTick;
}

Tick PulseGenerator::readyAt() const {
    return mFresh ? 0 : mLastPulse + mSettings.minimumPeriodNumber + minimumPeriodOffset;
}

std::uint32_t PulseGenerator::limit() const { return std::min(mSettings.queueFullValue, queueCapacity); }

} // namespace simulator
