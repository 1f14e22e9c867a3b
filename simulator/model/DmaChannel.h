#pragma once

#include "simulator/image/OutputPicture.h"
#include "simulator/image/PictureSource.h"
#include "simulator/model/ImageMemory.h"

#include <memory>
#include <optional>
#include <vector>

namespace simulator {

/// A picture in the frame memory: everything that decides what it shows, drawn only when the host gets it.
struct StoredPicture {
    std::uint64_t number = 0;
    std::shared_ptr<const PictureSource> source;
    std::shared_ptr<const CameraSetup> camera;
    LinkSettings links;
    Region region;
};

/// One DMA channel: takes pictures from the frame memory into the image memory of a program, round and round.
class DmaChannel {
  public:
    static constexpr int endless = -1;

    DmaChannel() = default;
    ~DmaChannel() { stop(); }
    DmaChannel(const DmaChannel&) = delete;
    DmaChannel& operator=(const DmaChannel&) = delete;

    /// \param pictures  number of pictures, or endless
    /// \param memory    null: pictures are counted and thrown away
    /// \param owner     who may stop it besides a program that names the channel
    /// \return false when the channel or the memory is in use
    bool start(int pictures, std::shared_ptr<dma_mem> memory, const void* owner);
    /// False when it was not started.
    bool stop();
    /// Stops, and nothing is known of any picture any more.
    void reset();

    /// Takes pictures: started, and not all of them have come.
    bool isTaking() const { return mIsStarted && (mWanted == endless || mLastPicture < mWanted); }
    bool isStarted() const { return mIsStarted; }
    const void* owner() const { return mOwner; }
    const dma_mem* memory() const { return mMemory.get(); }
    int lastPicture() const { return mLastPicture; }
    std::size_t transferredBytes() const { return mTransferredBytes; }

    void take(StoredPicture picture, OutputSettings output);
    /// Draws the pictures that were taken since the last call, each place of the memory once.
    void deliver();

  private:
    struct Pending {
        StoredPicture picture;
        OutputSettings output;
    };

    bool mIsStarted = false;
    int mWanted = 0;
    int mLastPicture = 0;
    std::size_t mTransferredBytes = 0;
    const void* mOwner = nullptr;
    std::shared_ptr<dma_mem> mMemory;
    std::vector<std::optional<Pending>> mPending; ///< one for each place of the memory
    bool mHasPending = false;
};

} // namespace simulator
