#include "simulator/model/ImagePort.h"

#include <utility>

namespace simulator {
namespace {

constexpr std::size_t lookupTableElements = 4096;

std::uint32_t word(const DesignCell& cell) { return static_cast<std::uint32_t>(cell.read()); }

} // namespace

ImagePort::ImagePort(DesignStore& store, unsigned port)
    : mPrefix("Device1_Process" + std::to_string(port) + '_'),
      mLineLengths{&store.claim(mPrefix + "LAG_MTUSizeCam0_LineLength"),
                   &store.claim(mPrefix + "LAG_MTUSizeCam1_LineLength")},
      mFormats{&store.claim(mPrefix + "Camera0_PixelFormat"), &store.claim(mPrefix + "Camera1_PixelFormat")},
      mSwap(store.claim(mPrefix + "LAG_Swap_Swap_Value")),
      mCameraWidth(store.claim(mPrefix + "LAG_CameraWidth_LineLength")), mHalves{claimHalf(store, mPrefix, 0),
                                                                                 claimHalf(store, mPrefix,
                                                                                           1)},
      mLookupTable(store.claim(mPrefix + "LookupTable_LookupTable_LUTcontent")),
      mFormat(store.claim(mPrefix + "OutputFormat_FG_FORMAT_SelectSource")),
      mAlignment(store.claim(mPrefix + "OutputFormat_FG_BITALIGNMENT_Value")), mCamera(port) {
    store.claim(mPrefix + "Overflow_OverflowOccurred").compute = [this] {
        return std::uint64_t{mFrameMemory.hasOverflowed()};
    };
}

ImagePort::HalfCells ImagePort::claimHalf(DesignStore& store, const std::string& prefix, unsigned half) {
    const std::string memory = prefix + "Buffer_0_DRAM_A_" + std::to_string(half) + '_';
    store.claim(memory + "FillLevel").compute = [this, half] { return mFrameMemory.fillLevel(half); };
    return {store.claim(memory + "XOffset"), store.claim(memory + "YOffset"), store.claim(memory + "XLength"),
            store.claim(memory + "YLength")};
}

bool ImagePort::start(int pictures, std::shared_ptr<dma_mem> memory, const void* owner) {
    if (!mDma.start(pictures, std::move(memory), owner)) {
        return false;
    }
    mFrameMemory.clear();
    return true;
}

void ImagePort::reset() {
    mDma.reset();
    mFrameMemory.clear();
    mCamera.reset();
}

LinkSettings ImagePort::linkSettings() const {
    LinkSettings settings;
    settings.lineLengths = {word(*mLineLengths[0]), word(*mLineLengths[1])};
    settings.formats = {word(*mFormats[0]), word(*mFormats[1])};
    settings.isSwapped = word(mSwap) != 0;
    settings.cameraWidth = word(mCameraWidth);
    return settings;
}

Region ImagePort::region() const {
    Region region;
    for (std::size_t half = 0; half < region.size(); ++half) {
        const HalfCells& cells = mHalves[half];
        region[half] = {word(cells.left), word(cells.top), word(cells.width), word(cells.height)};
    }
    return region;
}

OutputSettings ImagePort::outputSettings() const {
    OutputSettings output;
    if (mLookupTable.table != nullptr && mLookupTable.table->size() == lookupTableElements) {
        output.lookupTable = mLookupTable.table;
    }
    output.isEightBit = word(mFormat) != 0;
    output.isLeftAligned = word(mAlignment) != 0;
    return output;
}

bool ImagePort::store() {
    const Region present = region();
    if (present[0].pixels(0) + present[1].pixels(1) == 0) {
        return true; // an empty region takes nothing from the camera
    }
    const bool isStored = mFrameMemory.store(
        {mCamera.arrivedPicture(), mCamera.source(), mCamera.sharedSetup(), linkSettings(), present});
    transfer();
    return isStored;
}

void ImagePort::transfer() {
    while (mDma.isTaking() && !mFrameMemory.isEmpty()) {
        mDma.take(mFrameMemory.take(), outputSettings());
    }
}

std::uint32_t ImagePort::cameraStatus() const {
    const std::uint32_t cameraAndLinks = mCamera.setup().connected ? 7 : 0;
    return cameraAndLinks | (mDma.isTaking() ? 8u : 0u);
}

} // namespace simulator
