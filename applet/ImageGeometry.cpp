// Region of interest, camera line, links of the camera, time-out.

#include "applet/AppletWrapper.h"
#include "applet/StandardParameterTable.h"

namespace error = kavo::error;
using namespace catalogue;

namespace {

constexpr IntegerLimits widthLimits = integerLimitsOf<FG_WIDTH>();
constexpr IntegerLimits heightLimits = integerLimitsOf<FG_HEIGHT>();
constexpr IntegerLimits xOffsetLimits = integerLimitsOf<FG_XOFFSET>();
constexpr IntegerLimits cameraWidthLimits = integerLimitsOf<FG_CAMERA_WIDTH>();
constexpr IntegerLimits mtuLimits = integerLimitsOf<FG_MTU_SIZE>();
constexpr IntegerLimits timeoutLimits = integerLimitsOf<FG_TIMEOUT>();

/// The frame memory of a port is square.
constexpr unsigned frameMemorySide = widthLimits.to;
static_assert(heightLimits.to == frameMemorySide);

/// IP, UDP and stream header of a packet.
constexpr unsigned packetHeaderBytes = 36;
constexpr unsigned linkLineStep = 4;

/// Whether a length fits the frame memory behind an offset. The offset may come unchecked from a file, so the
/// sum must not wrap.
bool fitsFrameMemory(unsigned length, unsigned offset) {
    return std::uint64_t{length} + offset <= frameMemorySide;
}

int checkMtuSize(unsigned value) {
    if (!mtuLimits.contain(value)) {
        return error::outOfRange;
    }
    // The description shows steps of 4; the links take every second of them.
    return value % (2 * mtuLimits.step) == mtuLimits.step ? error::ok : error::offStep;
}

} // namespace

// ---- region of interest

int FgQxWrapperImpl::commitRegion(int port, unsigned& cache, unsigned value,
                                  const std::array<DesignParameter, 2>& halves, int limitedId) {
    const int code = commit(cache, value, [&] {
        return writeDesignInOrder(port, {{halves[0], value}, {halves[1], value}});
    });
    if (code == error::ok) {
        setUpperLimit(port, limitedId, frameMemorySide - value);
    }
    return code;
}

int FgQxWrapperImpl::setWidth(int port, unsigned value) {
    if (value < widthLimits.from || !fitsFrameMemory(value, cache_FG_XOFFSET(port))) {
        return error::outOfRange;
    }
    if (value % widthLimits.step != 0) {
        return error::offStep;
    }
    return commitRegion(port, cache_FG_WIDTH(port), value,
                        {design::Buffer_0_DRAM_A_0_XLength, design::Buffer_0_DRAM_A_1_XLength}, FG_XOFFSET);
}

int FgQxWrapperImpl::setXOffset(int port, unsigned value) {
    if (!fitsFrameMemory(cache_FG_WIDTH(port), value)) {
        return error::outOfRange;
    }
    if (value % xOffsetLimits.step != 0) {
        return error::offStep;
    }
    return commitRegion(port, cache_FG_XOFFSET(port), value,
                        {design::Buffer_0_DRAM_A_0_XOffset, design::Buffer_0_DRAM_A_1_XOffset}, FG_WIDTH);
}

int FgQxWrapperImpl::setHeight(int port, unsigned value) {
    if (value < heightLimits.from || !fitsFrameMemory(value, cache_FG_YOFFSET(port))) {
        return error::outOfRange;
    }
    return commitRegion(port, cache_FG_HEIGHT(port), value,
                        {design::Buffer_0_DRAM_A_0_YLength, design::Buffer_0_DRAM_A_1_YLength}, FG_YOFFSET);
}

int FgQxWrapperImpl::setYOffset(int port, unsigned value) {
    if (!fitsFrameMemory(cache_FG_HEIGHT(port), value)) {
        return error::outOfRange;
    }
    return commitRegion(port, cache_FG_YOFFSET(port), value,
                        {design::Buffer_0_DRAM_A_0_YOffset, design::Buffer_0_DRAM_A_1_YOffset}, FG_HEIGHT);
}

// ---- camera input

int FgQxWrapperImpl::setCameraWidth(int port, unsigned value) {
    if (!cameraWidthLimits.contain(value)) {
        return error::outOfRange;
    }
    if (value % cameraWidthLimits.step != 0) {
        return error::offStep;
    }
    return commitPlain(port, cache_FG_CAMERA_WIDTH(port), value, design::LAG_CameraWidth_LineLength);
}

int FgQxWrapperImpl::setMtuSize(int port, unsigned value) {
    if (const int code = checkMtuSize(value); code != error::ok) {
        return code;
    }
    return commit(cache_FG_MTU_SIZE(port), value,
                  [&] { return setCameraAndMTUSize(port, value, cache_FG_GBE_CAMTYPE(port)); });
}

int FgQxWrapperImpl::setCameraType(int port, unsigned value) {
    if (!enumerations::PixelFormatGrayAreaGigE_LAG.contains(value)) {
        return error::outOfRange;
    }
    // While a file is loaded the cached size is the file's, and not yet judged.
    if (const int code = checkMtuSize(cache_FG_MTU_SIZE(port)); code != error::ok) {
        return code;
    }
    return commit(cache_FG_GBE_CAMTYPE(port), value,
                  [&] { return setCameraAndMTUSize(port, cache_FG_MTU_SIZE(port), value); });
}

int FgQxWrapperImpl::setCameraAndMTUSize(int port, unsigned mtuSize, unsigned camType) {
    unsigned lineLength = mtuSize - packetHeaderBytes;
    if (camType != pixelFormatMono8) {
        // Two bytes a pixel, for the signed 8-bit type as well.
        lineLength /= 2;
        if (lineLength % linkLineStep != 0) {
            return error::offStep;
        }
    }
    return writeDesignInOrder(port, {{design::LAG_MTUSizeCam0_LineLength, lineLength},
                                     {design::LAG_MTUSizeCam1_LineLength, lineLength},
                                     {design::Camera0_PixelFormat, camType},
                                     {design::Camera1_PixelFormat, camType}});
}

int FgQxWrapperImpl::setSwapChannels(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_SWAP_CHANNELS(port), value, enumerations::YesNo,
                            design::LAG_Swap_Swap_Value);
}

int FgQxWrapperImpl::setTimeout(int port, unsigned value) {
    if (!timeoutLimits.contain(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_TIMEOUT(port), value,
                  [&] { return setUnwrappedParameter(FG_TIMEOUT, &value, port); });
}
