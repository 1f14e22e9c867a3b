#include "simulator/model/BoardModel.h"

#include <algorithm>
#include <chrono>

/// What happens on the board as its time goes on.

namespace simulator {
namespace {

/// A sleeper looks around at least this often, for clocks that were switched meanwhile.
constexpr std::chrono::milliseconds longestSleep(100);

std::string processName(unsigned port) { return "Device1_Process" + std::to_string(port) + '_'; }

std::string frameEvent(unsigned port, const char* what) {
    return "Device1_Process2_Trigger_Monitoring_FVALEvents_Cam" + std::to_string(port) + "_Frame" + what;
}

} // namespace

Tick BoardModel::nextActivity() const {
    return std::min(mPorts[0]->camera().nextActivity(), mPorts[1]->camera().nextActivity());
}

void BoardModel::catchUp() {
    const Tick now = mClock.now();
    for (Tick next = nextActivity(); next <= now; next = nextActivity()) {
        mTick = std::max(mTick, next);
        for (unsigned port = 0; port < Board::numberOfPorts; ++port) {
            runPort(port);
        }
    }
    mTick = std::max(mTick, now);
    for (const std::unique_ptr<ImagePort>& port : mPorts) {
        port->dma().deliver();
    }
}

void BoardModel::runPort(unsigned port) {
    ImagePort& imagePort = *mPorts[port];
    if (imagePort.camera().nextActivity() > mTick) {
        return;
    }
    const std::optional<Camera::Step> step = imagePort.camera().run(mTick);
    if (step == Camera::Step::frameStarts) {
        mEvents.raise(mTick, frameEvent(port, "Start"));
    } else if (step == Camera::Step::frameArrived) {
        mEvents.raise(mTick, frameEvent(port, "End"));
        const bool wasOverflowed = imagePort.frameMemory().hasOverflowed();
        if (!imagePort.store()) {
            ++mLostPictures[port];
            if (!wasOverflowed) {
                mEvents.raise(mTick, processName(port) + "Overflow_Overflow");
            }
        }
    }
}

void BoardModel::sleepUntil(Tick tick, Guard& guard) {
    const Tick now = mClock.now();
    const auto ticks = static_cast<std::int64_t>(std::min<Tick>(tick - std::min(now, tick), INT32_MAX));
    const std::chrono::nanoseconds time(ticks * static_cast<std::int64_t>(BoardClock::nanosecondsPerTick));
    mChanged.wait_for(guard, std::min<std::chrono::nanoseconds>(time, longestSleep));
}

} // namespace simulator
