#include "console/CameraStatus.h"

namespace orbctl {

namespace {

constexpr unsigned fillBandShift = 6;
constexpr std::uint32_t fillBandMask = 3;

} // namespace

const std::vector<CameraStatusBit>& cameraStatusBits() {
    static const std::vector<CameraStatusBit> bits = {
        {0, "camera connected", "cameraConnected"},
        {1, "link 0 up", "link0Up"},
        {2, "link 1 up", "link1Up"},
        {3, "acquiring", "acquiring"},
        {5, "overflow", "overflow"},
    };
    return bits;
}

bool isSet(std::uint32_t status, const CameraStatusBit& bit) { return (status >> bit.bit & 1) != 0; }

unsigned fillBand(std::uint32_t status) { return status >> fillBandShift & fillBandMask; }

std::string fillBandText(std::uint32_t status) {
    static const char* const texts[] = {"below 25 %", "25 to 49 %", "50 to 74 %", "75 % and above"};
    return texts[fillBand(status)];
}

std::vector<unsigned> unnamedBits(std::uint32_t status) {
    std::uint32_t rest = status & ~(fillBandMask << fillBandShift);
    for (const CameraStatusBit& bit : cameraStatusBits())
        rest &= ~(std::uint32_t{1} << bit.bit);
    std::vector<unsigned> bits;
    for (unsigned bit = 0; bit < 32; ++bit)
        if ((rest >> bit & 1) != 0)
            bits.push_back(bit);
    return bits;
}

} // namespace orbctl
