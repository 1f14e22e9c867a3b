#include "simulator/image/OutputPicture.h"

#include <algorithm>

namespace simulator {
namespace {

/// Writes pixels one after another until the target is full.
class PixelWriter {
  public:
    PixelWriter(const OutputSettings& output, std::uint8_t* target, std::size_t size)
        : mOutput(output), mNext(target), mEnd(target + size) {}

    bool isFull() const { return mNext == mEnd; }

    void write(std::uint16_t pixel) {
        const std::uint32_t looked = mOutput.lookupTable != nullptr ? (*mOutput.lookupTable)[pixel] : pixel;
        if (mOutput.isEightBit) {
            writeByte(looked >> 4);
            return;
        }
        const std::uint32_t word = mOutput.isLeftAligned ? looked << 4 : looked;
        writeByte(word);
        writeByte(word >> 8);
    }

  private:
    void writeByte(std::uint32_t byte) {
        if (mNext != mEnd) {
            *mNext++ = static_cast<std::uint8_t>(byte);
        }
    }

    const OutputSettings& mOutput;
    std::uint8_t* mNext;
    std::uint8_t* mEnd;
};

} // namespace

std::size_t outputBytes(const Region& region, const OutputSettings& output) {
    const std::uint64_t pixels = region[0].pixels(0) + region[1].pixels(1);
    return static_cast<std::size_t>(pixels) * output.bytesOfPixel();
}

void writeOutput(const AssembledPicture& picture, const Region& region, const OutputSettings& output,
                 std::uint8_t* target, std::size_t size) {
    PixelWriter writer(output, target, size);
    const std::uint32_t rows = std::max(region[0].height, region[1].height);
    for (std::uint32_t row = 0; row < rows && !writer.isFull(); ++row) {
        const RegionOfHalf& half = region[row % 2];
        if (row >= half.height) {
            continue;
        }
        for (std::uint32_t column = 0; column < half.width; ++column) {
            writer.write(picture.at(half.left + column, half.top + row));
        }
    }
}

} // namespace simulator
