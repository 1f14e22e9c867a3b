#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orbctl {

/// A named bit of the extended camera status.
struct CameraStatusBit {
    unsigned bit;
    const char* name; ///< for people: "camera connected"
    const char* key;  ///< as JSON member: "cameraConnected"
};

/// The bits that have a name: the runtime's own as the board in software has them, and the applet's overflow.
const std::vector<CameraStatusBit>& cameraStatusBits();

bool isSet(std::uint32_t status, const CameraStatusBit& bit);
/// Which quarter of the frame memory the fill level is in, 0 to 3.
unsigned fillBand(std::uint32_t status);
/// "below 25 %", "25 to 49 %", "50 to 74 %", "75 % and above".
std::string fillBandText(std::uint32_t status);
/// The bits that are set and have no name, in their order.
std::vector<unsigned> unnamedBits(std::uint32_t status);

} // namespace orbctl
