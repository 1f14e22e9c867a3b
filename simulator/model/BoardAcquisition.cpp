#include "platform/ParameterIds.h"
#include "simulator/model/BoardModel.h"
#include "simulator/RuntimeCodes.h"

#include <algorithm>
#include <utility>

/// Acquisition: what programs start, stop and wait for.

namespace simulator {

void BoardModel::claimRuntimeParameters() {
    mRuntimeParameters.answerWith(FG_CAMSTATUS_EXTENDED,
                                  [this](unsigned dmaIndex) { return mPorts[dmaIndex]->cameraStatus(); });
    mRuntimeParameters.answerWith(FG_TRANSFER_LEN, [this](unsigned dmaIndex) {
        return static_cast<std::uint32_t>(mPorts[dmaIndex]->dma().transferredBytes());
    });
    mRuntimeParameters.answerWith(FG_DMASTATUS, [this](unsigned dmaIndex) {
        return std::uint32_t{mPorts[dmaIndex]->dma().isTaking()};
    });
}

int BoardModel::checkAcquisition(unsigned dmaIndex, const dma_mem* memory) const {
    if (dmaIndex >= Board::numberOfPorts) {
        return code::invalidParameter;
    }
    const bool isOther = memory != nullptr && memory != mPorts[dmaIndex]->dma().memory();
    return isOther ? code::notAcquiring : code::ok;
}

int BoardModel::startAcquisition(unsigned dmaIndex, int pictures, std::shared_ptr<dma_mem> memory,
                                 const void* owner) {
    const Guard guard = enter();
    if (dmaIndex >= Board::numberOfPorts || pictures == 0) {
        return code::invalidParameter;
    }
    const int wanted = pictures < 0 ? DmaChannel::endless : pictures;
    if (!mPorts[dmaIndex]->start(wanted, std::move(memory), owner)) {
        return code::busy;
    }
    mLostPictures[dmaIndex] = 0;
    return code::ok;
}

int BoardModel::stopAcquisition(unsigned dmaIndex, const dma_mem* memory) {
    const Guard guard = enter();
    const int result = checkAcquisition(dmaIndex, memory);
    if (result != code::ok) {
        return result;
    }
    const bool wasStarted = mPorts[dmaIndex]->dma().stop();
    mChanged.notify_all();
    return wasStarted ? code::ok : code::notAcquiring;
}

void BoardModel::stopAcquisitionsOf(const void* owner) {
    const Guard guard = enter();
    for (const std::unique_ptr<ImagePort>& port : mPorts) {
        if (port->dma().isStarted() && port->dma().owner() == owner) {
            port->dma().stop();
        }
    }
    mChanged.notify_all();
}

void BoardModel::stopAcquisitionsInto(const dma_mem* memory) {
    const Guard guard = enter();
    for (const std::unique_ptr<ImagePort>& port : mPorts) {
        if (memory != nullptr && port->dma().memory() == memory) {
            port->dma().stop();
        }
    }
    mChanged.notify_all();
}

int BoardModel::lastPicture(unsigned dmaIndex, const dma_mem* memory) {
    const Guard guard = enter();
    const int result = checkAcquisition(dmaIndex, memory);
    return result == code::ok ? mPorts[dmaIndex]->dma().lastPicture() : result;
}

std::optional<int> BoardModel::answerToWait(const DmaChannel& dma, int picture) const {
    if (dma.lastPicture() >= picture) {
        return dma.lastPicture();
    }
    return dma.isTaking() ? std::nullopt : std::optional<int>(code::notAcquiring);
}

int BoardModel::waitForPicture(unsigned dmaIndex, int picture, int seconds, const dma_mem* memory) {
    Guard guard = enter();
    const int result = checkAcquisition(dmaIndex, memory);
    if (result != code::ok) {
        return result;
    }
    std::uint32_t ownTimeout = 0;
    mRuntimeParameters.read(FG_TIMEOUT, dmaIndex, ownTimeout);
    const Tick patience = seconds < 0 ? Tick{ownTimeout} : static_cast<Tick>(seconds);
    const Tick deadline = mTick + patience * BoardClock::ticksPerSecond;
    const DmaChannel& dma = mPorts[dmaIndex]->dma();
    for (;;) {
        const std::optional<int> answer = answerToWait(dma, picture);
        if (answer || mTick >= deadline) {
            return answer.value_or(code::timeout);
        }
        const Tick next = std::min(nextActivity(), deadline);
        if (mClock.isSteppedByHand()) {
            mClock.advanceTo(next);
        } else {
            sleepUntil(next, guard);
        }
        catchUp();
    }
}

std::uint64_t BoardModel::lostPictures(unsigned dmaIndex) {
    const Guard guard = enter();
    return mLostPictures[dmaIndex];
}

CameraSetup BoardModel::camera(unsigned port) {
    const Guard guard = enter();
    return mPorts[port]->camera().setup();
}

void BoardModel::setCamera(unsigned port, const CameraSetup& setup) {
    const Guard guard = enter();
    mPorts[port]->camera().replace(setup, mTick);
    mChanged.notify_all();
}

std::uint64_t BoardModel::exposures(unsigned port) {
    const Guard guard = enter();
    return mPorts[port]->camera().exposures();
}

} // namespace simulator
