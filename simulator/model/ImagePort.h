#pragma once

#include "simulator/model/Camera.h"
#include "simulator/model/DesignStore.h"
#include "simulator/model/DmaChannel.h"
#include "simulator/model/FrameMemory.h"

#include <array>

namespace simulator {

/// One camera port from the camera to the host: link input, frame memory, lookup table, output format and
/// DMA. It owns the design parameters of its Process.
class ImagePort {
  public:
    ImagePort(DesignStore& store, unsigned port);

    Camera& camera() { return mCamera; }
    const Camera& camera() const { return mCamera; }
    DmaChannel& dma() { return mDma; }
    const DmaChannel& dma() const { return mDma; }

    /// Begins an acquisition; what the frame memory holds from before is thrown away.
    bool start(int pictures, std::shared_ptr<dma_mem> memory, const void* owner);
    void reset();

    /// A picture has arrived at the links. False when the frame memory overflowed.
    bool store();
    const FrameMemory& frameMemory() const { return mFrameMemory; }
    /// The runtime's extended camera status: bit 0 the camera is there, bits 1 and 2 its links are up, bit 3
    /// an acquisition runs.
    std::uint32_t cameraStatus() const;

  private:
    struct HalfCells {
        DesignCell& left;
        DesignCell& top;
        DesignCell& width;
        DesignCell& height;
    };

    HalfCells claimHalf(DesignStore& store, const std::string& prefix, unsigned half);
    LinkSettings linkSettings() const;
    Region region() const;
    OutputSettings outputSettings() const;
    void transfer();

    std::string mPrefix;
    std::array<DesignCell*, 2> mLineLengths;
    std::array<DesignCell*, 2> mFormats;
    DesignCell& mSwap;
    DesignCell& mCameraWidth;
    std::array<HalfCells, 2> mHalves;
    DesignCell& mLookupTable;
    DesignCell& mFormat;
    DesignCell& mAlignment;
    Camera mCamera;
    FrameMemory mFrameMemory;
    DmaChannel mDma;
};

} // namespace simulator
