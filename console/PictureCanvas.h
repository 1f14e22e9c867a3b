#pragma once

#include "console/PictureFile.h"

#include <string>
#include <vector>

namespace orbctl {

/// A gray picture to draw into, white at first; 0 is black. Whatever lies outside is left out.
class PictureCanvas {
  public:
    PictureCanvas(unsigned width, unsigned height)
        : mWidth(width), mHeight(height), mPixels(width * height, 255) {}

    /// The picture, valid as long as the canvas.
    GrayPicture picture() const { return {mWidth, mHeight, 1, mPixels.data()}; }
    unsigned char at(unsigned x, unsigned y) const { return mPixels[y * mWidth + x]; }

    void fill(int x, int y, int width, int height, unsigned char gray);
    /// Draws a line of text with its upper left corner here. Characters beyond ASCII show as "?".
    void text(int x, int y, const std::string& text, unsigned char gray);
    /// Width of a text in pixels.
    static int textWidth(const std::string& text);

    static constexpr int textHeight = 24;

  private:
    unsigned mWidth;
    unsigned mHeight;
    std::vector<unsigned char> mPixels;
};

} // namespace orbctl
