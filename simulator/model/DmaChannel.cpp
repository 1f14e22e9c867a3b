#include "simulator/model/DmaChannel.h"

#include <algorithm>
#include <utility>

namespace simulator {

bool DmaChannel::start(int pictures, std::shared_ptr<dma_mem> memory, const void* owner) {
    if (isTaking() || (memory != nullptr && memory != mMemory && memory->isInUse)) {
        return false;
    }
    stop();
    if (memory != nullptr) {
        mPending.resize(memory->pictures.size());
        memory->isInUse = true;
    }
    mMemory = std::move(memory);
    mIsStarted = true;
    mWanted = pictures;
    mLastPicture = 0;
    mTransferredBytes = 0;
    mOwner = owner;
    return true;
}

bool DmaChannel::stop() {
    const bool wasStarted = std::exchange(mIsStarted, false);
    if (mMemory != nullptr) {
        mMemory->isInUse = false;
    }
    mMemory.reset();
    mPending.clear();
    mHasPending = false;
    mOwner = nullptr;
    return wasStarted;
}

void DmaChannel::reset() {
    stop();
    mLastPicture = 0;
    mTransferredBytes = 0;
}

void DmaChannel::take(StoredPicture picture, OutputSettings output) {
    mTransferredBytes = outputBytes(picture.region, output);
    if (mMemory != nullptr) {
        mPending[static_cast<std::size_t>(mLastPicture) % mPending.size()] =
            Pending{std::move(picture), std::move(output)};
        mHasPending = true;
    }
    ++mLastPicture;
}

void DmaChannel::deliver() {
    if (!std::exchange(mHasPending, false)) {
        return;
    }
    for (std::size_t place = 0; place < mPending.size(); ++place) {
        if (!mPending[place]) {
            continue;
        }
        const Pending pending = std::move(*mPending[place]);
        mPending[place].reset();
        const CameraSetup& camera = *pending.picture.camera;
        const GrayPicture seen =
            pending.picture.source->picture(pending.picture.number, camera.sensorWidth, camera.sensorHeight);
        writeOutput(receivePicture(seen, camera, pending.picture.links), pending.picture.region,
                    pending.output, mMemory->pictures[place], mMemory->pictureBytes);
    }
}

} // namespace simulator
