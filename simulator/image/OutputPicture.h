#pragma once

#include "simulator/image/LinkInput.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace simulator {

/// Region of one half of the frame memory: half 0 holds the even rows of the region, half 1 the odd ones.
struct RegionOfHalf {
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0; ///< rows of the whole region, of which the half holds every second one

    /// Pixels that a half holds of one picture.
    std::uint64_t pixels(unsigned half) const { return std::uint64_t{width} * rows(half); }
    std::uint32_t rows(unsigned half) const { return (height + 1 - half) / 2; }
};

using Region = std::array<RegionOfHalf, 2>;

/// Behind the frame memory: lookup table and output format.
struct OutputSettings {
    std::shared_ptr<const std::vector<std::uint32_t>>
        lookupTable; ///< 4096 elements of 12 bits; null: unchanged
    bool isEightBit = false;
    bool isLeftAligned = false; ///< the 12 bits at the top of the 16

    std::size_t bytesOfPixel() const { return isEightBit ? 1 : 2; }
};

/// Bytes of a picture that leaves the board.
std::size_t outputBytes(const Region& region, const OutputSettings& output);

/// Reads a picture from the frame memory row by row, alternately from the two halves, and writes it as the
/// host gets it: 16-bit pixels have their low byte first. Halves that disagree show as rows of different
/// length and place.
/// \param target  receives at most \p size bytes; a longer picture is cut
void writeOutput(const AssembledPicture& picture, const Region& region, const OutputSettings& output,
                 std::uint8_t* target, std::size_t size);

} // namespace simulator
