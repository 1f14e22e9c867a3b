#pragma once

#include "simulator/model/DmaChannel.h"

#include <array>
#include <deque>

namespace simulator {

/// The frame memory of a port: pictures wait in two halves until the DMA takes them. Each half has room for
/// the half of four pictures of 4096 x 4096 pixels.
class FrameMemory {
  public:
    static constexpr std::uint64_t pixelsOfHalf = std::uint64_t{4096} * 4096 * 4 / 2;

    /// False when a half has no room for it: the picture is lost and the memory has overflowed.
    bool store(StoredPicture picture) {
        for (unsigned half = 0; half < 2; ++half) {
            if (picture.region[half].pixels(half) > pixelsOfHalf - mUsed[half]) {
                mHasOverflowed = true;
                return false;
            }
        }
        for (unsigned half = 0; half < 2; ++half) {
            mUsed[half] += picture.region[half].pixels(half);
        }
        mPictures.push_back(std::move(picture));
        return true;
    }

    bool isEmpty() const { return mPictures.empty(); }

    StoredPicture take() {
        StoredPicture picture = std::move(mPictures.front());
        mPictures.pop_front();
        for (unsigned half = 0; half < 2; ++half) {
            mUsed[half] -= picture.region[half].pixels(half);
        }
        return picture;
    }

    /// How full a half is, 0 to 100 percent.
    std::uint64_t fillLevel(unsigned half) const { return mUsed[half] * 100 / pixelsOfHalf; }
    /// Whether a picture was lost since the memory was cleared.
    bool hasOverflowed() const { return mHasOverflowed; }

    void clear() {
        mPictures.clear();
        mUsed = {};
        mHasOverflowed = false;
    }

  private:
    std::deque<StoredPicture> mPictures;
    std::array<std::uint64_t, 2> mUsed{};
    bool mHasOverflowed = false;
};

} // namespace simulator
