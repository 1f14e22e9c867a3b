#include "simulator/model/Camera.h"

#include <algorithm>
#include <stdexcept>

namespace simulator {
namespace {

bool isWithin(std::uint32_t value, std::uint32_t lowest, std::uint32_t highest) {
    return value >= lowest && value <= highest;
}

void check(const CameraSetup& setup) {
    if (!isWithin(setup.sensorWidth, 16, 4096) || !isWithin(setup.sensorHeight, 2, 4096)) {
        throw std::invalid_argument("a sensor has 16 to 4096 columns and 2 to 4096 rows");
    }
    if (!isWithin(setup.packetBytes, 44, 9036)) {
        throw std::invalid_argument("a packet has 44 to 9036 bytes");
    }
    switch (setup.pixelFormat) {
    case PixelFormat::mono8:
    case PixelFormat::mono8Signed:
    case PixelFormat::mono10:
    case PixelFormat::mono12:
    case PixelFormat::mono16:
        return;
    }
    throw std::invalid_argument("a camera has no such pixel format");
}

std::shared_ptr<const PictureSource> makeSource(const CameraSetup& setup, unsigned port) {
    return setup.pictureFolder.empty() ? makeTestChart(port) : makePictureFolder(setup.pictureFolder);
}

} // namespace

Camera::Camera(unsigned port) : mPort(port) { reset(); }

void Camera::replace(const CameraSetup& setup, Tick now) {
    check(setup);
    mSource = makeSource(setup, mPort);
    mSetup = std::make_shared<const CameraSetup>(setup);
    mExposureEnd = neverTick;
    mArrival = neverTick;
    mNextFreeExposure = runsFree() ? now + setup.freeRunningTicks : neverTick;
}

void Camera::reset() {
    replace(CameraSetup(), 0);
    mExposures = 0;
    mExposedPicture = 0;
    mTravellingPicture = 0;
    mArrivedPicture = 0;
}

bool Camera::expose(Tick now) {
    const Tick end = now + mSetup->exposureTicks;
    const bool mustWait = mArrival != neverTick && mArrival > end;
    if (!mSetup->connected || isExposing() || mustWait) {
        return false;
    }
    mExposureEnd = end;
    mExposedPicture = ++mExposures;
    return true;
}

Tick Camera::nextActivity() const { return std::min({mArrival, mExposureEnd, mNextFreeExposure}); }

Camera::Step Camera::run(Tick now) {
    if (mArrival <= now) {
        mArrival = neverTick;
        mArrivedPicture = mTravellingPicture;
        return Step::frameArrived;
    }
    if (mExposureEnd <= now) {
        mTravellingPicture = mExposedPicture;
        mArrival = mExposureEnd + mSetup->readoutTicks;
        mExposureEnd = neverTick;
        return Step::frameStarts;
    }
    if (mNextFreeExposure <= now) {
        mNextFreeExposure += mSetup->freeRunningTicks;
        return expose(now) ? Step::exposureBegins : Step::nothing;
    }
    return Step::nothing;
}

} // namespace simulator
