#pragma once

#include <cstdint>
#include <vector>

namespace simulator {

/// What a sensor sees: 16-bit samples, 0 black to 65535 white, row by row.
struct GrayPicture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint16_t> samples; ///< width x height

    GrayPicture() = default;
    GrayPicture(std::uint32_t pictureWidth, std::uint32_t pictureHeight)
        : width(pictureWidth), height(pictureHeight), samples(std::size_t{pictureWidth} * pictureHeight) {}

    std::uint16_t& at(std::uint32_t x, std::uint32_t y) { return samples[std::size_t{y} * width + x]; }
    std::uint16_t at(std::uint32_t x, std::uint32_t y) const { return samples[std::size_t{y} * width + x]; }
};

} // namespace simulator
