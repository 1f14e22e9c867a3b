#pragma once

#include "simulator/CameraSetup.h"
#include "simulator/image/GrayPicture.h"

#include <array>
#include <cstdint>
#include <vector>

namespace simulator {

/// The registers of a port's link input at the moment when a picture arrives.
struct LinkSettings {
    std::array<std::uint32_t, 2>
        lineLengths{};                      ///< pixels that are taken from a link before the other one's turn
    std::array<std::uint32_t, 2> formats{}; ///< pixel format of each link, see PixelFormat
    bool isSwapped = false;                 ///< the second link has the first turn
    std::uint32_t cameraWidth = 0;          ///< pixels in a line of the picture that is put together
};

/// A picture behind the link input: 12-bit pixels in lines of cameraWidth, the last line filled up with 0.
struct AssembledPicture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint16_t> pixels;

    /// 0 beside and below the picture.
    std::uint16_t at(std::uint32_t x, std::uint32_t y) const {
        return x < width && y < height ? pixels[std::size_t{y} * width + x] : std::uint16_t{0};
    }
};

/// Bytes of a pixel on the wire: 1 for format 0, 2 for any other.
std::uint32_t bytesOfPixel(std::uint32_t format);

/// Sends a picture over the two links of a camera and puts it together as the registers say. Where they agree
/// with the camera and its cables, the outcome is the picture; where not, it is what the pixels in that order
/// show.
AssembledPicture receivePicture(const GrayPicture& picture, const CameraSetup& camera,
                                const LinkSettings& settings);

} // namespace simulator
