#pragma once

#include "simulator/CameraSetup.h"
#include "simulator/image/PictureSource.h"
#include "simulator/trigger/TriggerListener.h"

#include <memory>

namespace simulator {

/// One camera in time: it exposes when told, then its picture starts to arrive, and later has arrived. It
/// exposes the next picture while the last one still travels, as long as the new one would not have to wait
/// for it.
class Camera {
  public:
    enum class Step { nothing, exposureBegins, frameStarts, frameArrived };

    explicit Camera(unsigned port);

    const CameraSetup& setup() const { return *mSetup; }
    std::shared_ptr<const CameraSetup> sharedSetup() const { return mSetup; }
    std::shared_ptr<const PictureSource> source() const { return mSource; }
    /// Replaces the camera; a picture under way is lost.
    /// \throws std::invalid_argument for a setup that cannot be
    void replace(const CameraSetup& setup, Tick now);
    void reset();

    /// Starts an exposure; false when the camera is off or busy, and nothing comes of it.
    bool expose(Tick now);
    std::uint64_t exposures() const { return mExposures; }
    bool isExposing() const { return mExposureEnd != neverTick; }

    /// When the camera next does something by itself; neverTick when it does not.
    Tick nextActivity() const;
    /// Takes the step that nextActivity() told. An exposure begins here only when the camera runs free.
    Step run(Tick now);
    /// Number of the picture that has arrived last, from 1.
    std::uint64_t arrivedPicture() const { return mArrivedPicture; }

  private:
    bool runsFree() const { return mSetup->connected && mSetup->freeRunningTicks > 0; }

    unsigned mPort;
    std::shared_ptr<const CameraSetup> mSetup;
    std::shared_ptr<const PictureSource> mSource;
    Tick mNextFreeExposure = neverTick;
    Tick mExposureEnd = neverTick;
    Tick mArrival = neverTick;
    std::uint64_t mExposures = 0;
    std::uint64_t mExposedPicture = 0;
    std::uint64_t mTravellingPicture = 0;
    std::uint64_t mArrivedPicture = 0;
};

} // namespace simulator
