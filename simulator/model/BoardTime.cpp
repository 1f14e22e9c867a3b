#include "simulator/model/BoardModel.h"

#include <algorithm>
#include <chrono>
#include <string>

/// What happens on the board as its time goes on.

namespace simulator {
namespace {

/// A sleeper looks around at least this often, for clocks that were switched meanwhile.
constexpr std::chrono::milliseconds longestSleep(100);

} // namespace

Tick BoardModel::nextActivity() const {
    return std::min({mTrigger.system().nextActivity(), mPorts[0]->camera().nextActivity(),
                     mPorts[1]->camera().nextActivity()});
}

void BoardModel::catchUp() {
    const Tick now = mClock.now();
    for (Tick next = nextActivity(); next <= now; next = nextActivity()) {
        mTick = std::max(mTick, next);
        mTrigger.system().advanceTo(mTick);
        for (unsigned port = 0; port < Board::numberOfPorts; ++port) {
            runPort(port);
        }
    }
    mTick = std::max(mTick, now);
    mTrigger.system().advanceTo(mTick);
    for (const std::unique_ptr<ImagePort>& port : mPorts) {
        port->dma().deliver();
    }
}

void BoardModel::runPort(unsigned port) {
    ImagePort& imagePort = *mPorts[port];
    if (imagePort.camera().nextActivity() > mTick) {
        return;
    }
    switch (imagePort.camera().run(mTick)) {
    case Camera::Step::exposureBegins:
        mTrigger.recordExposure(port, true, mTick);
        break;
    case Camera::Step::frameStarts:
        mTrigger.recordExposure(port, false, mTick);
        mTrigger.system().frameStarted(port, mTick);
        break;
    case Camera::Step::frameArrived:
        mTrigger.system().frameArrived(port, mTick);
        storeFrame(port);
        break;
    case Camera::Step::nothing:
        break;
    }
}

void BoardModel::storeFrame(unsigned port) {
    const bool hadOverflowed = mPorts[port]->frameMemory().hasOverflowed();
    if (mPorts[port]->store()) {
        return;
    }
    ++mLostPictures[port];
    if (!hadOverflowed) {
        mEvents.raise(mTick, "Device1_Process" + std::to_string(port) + "_Overflow_Overflow");
    }
}

void BoardModel::expose(unsigned port, Tick now) {
    if (mPorts[port]->camera().expose(now)) {
        mTrigger.recordExposure(port, true, now);
    }
}

void BoardModel::sleepUntil(Tick tick, Guard& guard) {
    const Tick now = mClock.now();
    const auto ticks = static_cast<std::int64_t>(std::min<Tick>(tick - std::min(now, tick), INT32_MAX));
    const std::chrono::nanoseconds time(ticks * static_cast<std::int64_t>(BoardClock::nanosecondsPerTick));
    mChanged.wait_for(guard, std::min<std::chrono::nanoseconds>(time, longestSleep));
}

} // namespace simulator
