#pragma once

#include "console/PictureFile.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

struct dma_mem;

namespace orbctl {

class AppletHandle;

/// Size of the pictures that a port delivers with its present settings.
struct PictureGeometry {
    unsigned width = 0;
    unsigned height = 0;
    unsigned bytesPerPixel = 1;

    std::size_t bytes() const { return std::size_t{width} * height * bytesPerPixel; }
};

/// \throws Failure (refused) where the applet does not tell
PictureGeometry geometryOf(const AppletHandle& applet, unsigned port);

/// Some pictures of one port, acquired into memory; the acquisition runs while this lives.
class PictureBatch {
  public:
    /// \throws Failure (refused) where the acquisition does not start
    PictureBatch(const AppletHandle& applet, unsigned port, const PictureGeometry& geometry, unsigned count);
    ~PictureBatch();
    PictureBatch(const PictureBatch&) = delete;
    PictureBatch& operator=(const PictureBatch&) = delete;

    /// Asks the board once how many pictures have come.
    /// \throws Failure  (refused)
    void poll();
    unsigned arrived() const { return mArrived; }
    bool isComplete() const { return mArrived >= mPixels.size(); }
    unsigned port() const { return mPort; }
    /// \param index  from 0
    GrayPicture picture(unsigned index) const;

    /// How many pictures came in the time that seconds() tells: the time from the first to the last, or,
    /// where all were seen at once, from the start.
    unsigned intervals() const;
    double seconds() const;

  private:
    using Clock = std::chrono::steady_clock;

    const AppletHandle& mApplet;
    unsigned mPort;
    PictureGeometry mGeometry;
    std::vector<std::vector<unsigned char>> mPixels;
    dma_mem* mMemory = nullptr;
    unsigned mArrived = 0;
    unsigned mFirstSeen = 0;
    Clock::time_point mStart;
    Clock::time_point mFirstTime;
    Clock::time_point mLastTime;
};

/// What was acquired on one port.
struct PortResult {
    unsigned port = 0;
    PictureGeometry geometry;
    unsigned pictures = 0;
    unsigned intervals = 0;
    double seconds = 0;

    /// Frames per second by the wall clock; 0 where too few pictures came to tell.
    double rate() const { return seconds > 0 ? intervals / seconds : 0; }
};

/// Pictures of several ports at the same time, a memory full after another.
class Acquisition {
  public:
    using PictureHandler = std::function<void(unsigned port, unsigned number, const GrayPicture& picture)>;
    using ProgressHandler = std::function<void(std::size_t done)>;

    /// \param count    pictures of each port
    /// \param timeout  longest time without a new picture, in seconds
    Acquisition(const AppletHandle& applet, const std::vector<unsigned>& ports, unsigned count,
                double timeout);

    /// Acquires the next pictures that fit into memory. Ends early when an interruption is asked for.
    /// \param progress  receives the pictures that came so far, of all ports and memories
    /// \throws Failure (refused) where a picture does not come or the board refuses; those that came can be
    /// taken
    void acquireSome(const ProgressHandler& progress);
    /// Hands over what acquireSome() brought, numbered from 1 for each port.
    void takePictures(const PictureHandler& handler);

    bool isComplete() const { return mDone >= mCount; }
    const std::vector<PortResult>& results() const { return mResults; }

  private:
    void startBatches();
    void waitForBatches(const ProgressHandler& progress);
    bool areBatchesComplete() const;
    std::size_t arrived() const;
    [[noreturn]] void failTimeout() const;

    const AppletHandle& mApplet;
    unsigned mCount;
    double mTimeout;
    unsigned mDone = 0; ///< pictures of each port in the memories that are full
    std::vector<std::unique_ptr<PictureBatch>> mBatches;
    std::vector<PortResult> mResults;
};

} // namespace orbctl
