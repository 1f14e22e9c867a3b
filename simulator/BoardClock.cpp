#include "simulator/BoardClock.h"

namespace simulator {

BoardClock::BoardClock() : mWallStart(WallClock::now()) {}

void BoardClock::useWallClock() {
    const std::lock_guard<std::mutex> guard(mLock);
    mTicksAtStart = nowUnlocked();
    mWallStart = WallClock::now();
    mSteppedByHand = false;
}

void BoardClock::stepByHand() {
    const std::lock_guard<std::mutex> guard(mLock);
    mTicksAtStart = nowUnlocked();
    mSteppedByHand = true;
}

bool BoardClock::isSteppedByHand() const {
    const std::lock_guard<std::mutex> guard(mLock);
    return mSteppedByHand;
}

void BoardClock::advance(std::uint64_t ticks) {
    const std::lock_guard<std::mutex> guard(mLock);
    if (mSteppedByHand) {
        mTicksAtStart += ticks;
    }
}

void BoardClock::advanceTo(std::uint64_t tick) {
    const std::lock_guard<std::mutex> guard(mLock);
    if (mSteppedByHand && tick > mTicksAtStart) {
        mTicksAtStart = tick;
    }
}

std::uint64_t BoardClock::now() const {
    const std::lock_guard<std::mutex> guard(mLock);
    return nowUnlocked();
}

void BoardClock::restart(bool steppedByHand) {
    const std::lock_guard<std::mutex> guard(mLock);
    mTicksAtStart = 0;
    mWallStart = WallClock::now();
    mSteppedByHand = steppedByHand;
}

std::uint64_t BoardClock::nowUnlocked() const {
    if (mSteppedByHand) {
        return mTicksAtStart;
    }
    const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(WallClock::now() - mWallStart);
    return mTicksAtStart + static_cast<std::uint64_t>(elapsed.count()) / nanosecondsPerTick;
}

} // namespace simulator
