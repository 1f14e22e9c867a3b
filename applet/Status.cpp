// How full a port's frame memory is, and the camera's status with it. Nothing here is cached.

#include "applet/AppletWrapper.h"

#include <algorithm>

namespace error = kavo::error;

namespace {

constexpr unsigned fullPercent = 100;
constexpr unsigned percentPerBand = 25;
constexpr unsigned highestBand = 3;
constexpr unsigned overflowBit = 5;
constexpr unsigned bandBit = 6;
/// Bits 5 to 7 are the applet's own.
constexpr unsigned runtimeStatusBits = ~(1U << overflowBit | highestBand << bandBit);

} // namespace

int FgQxWrapperImpl::readOverflow(int port, unsigned* out) {
    return readDesign(port, design::Overflow_OverflowOccurred, out);
}

int FgQxWrapperImpl::readFillLevel(int port, unsigned* out) {
    unsigned overflow = 0;
    if (const int code = readOverflow(port, &overflow); code != error::ok) {
        return code;
    }
    if (overflow == 1) {
        return readConstant(fullPercent, out);
    }
    std::array<unsigned, 2> levels{};
    int code = readDesign(port, design::Buffer_0_DRAM_A_0_FillLevel, &levels[0]);
    code = code != error::ok ? code : readDesign(port, design::Buffer_0_DRAM_A_1_FillLevel, &levels[1]);
    return code == error::ok ? readConstant(std::max(levels[0], levels[1]), out) : code;
}

int FgQxWrapperImpl::readExtendedCameraStatus(int port, unsigned* out) {
    unsigned fillLevel = 0;
    unsigned overflow = 0;
    // The runtime may fill 64 bits.
    std::uint64_t runtimeStatus = 0;
    int code = readFillLevel(port, &fillLevel);
    code = code != error::ok ? code : readOverflow(port, &overflow);
    code = code != error::ok ? code : getUnwrappedParameter(FG_CAMSTATUS_EXTENDED, &runtimeStatus, port);
    if (code != error::ok) {
        return code;
    }
    const unsigned band = std::min(fillLevel / percentPerBand, highestBand);
    const unsigned status = static_cast<unsigned>(runtimeStatus) & runtimeStatusBits;
    return readConstant(status | band << bandBit | overflow << overflowBit, out);
}

int FgQxWrapperImpl::readCameraStatus(int port, unsigned* out) {
    unsigned status = 0;
    const int code = readExtendedCameraStatus(port, &status);
    return code == error::ok ? readConstant(status & 1, out) : code;
}
