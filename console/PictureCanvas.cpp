#include "console/PictureCanvas.h"

#include <stb/stb_easy_font.h>

#include <algorithm>

namespace orbctl {

namespace {

constexpr float textScale = 2;
/// The font needs some 270 bytes a character.
constexpr std::size_t bytesPerCharacter = 600;

/// A corner as the font gives it.
struct Corner {
    float x;
    float y;
    float z;
    unsigned char colour[4];
};

std::string drawable(const std::string& text) {
    std::string result = text;
    std::replace_if(
        result.begin(), result.end(), [](char character) { return character < ' ' || character > '~'; }, '?');
    return result;
}

int scaled(float place) { return static_cast<int>(place * textScale); }

} // namespace

void PictureCanvas::fill(int x, int y, int width, int height, unsigned char gray) {
    const auto inside = [](int place, unsigned limit) {
        return std::clamp(place, 0, static_cast<int>(limit));
    };
    const int end = inside(x + width, mWidth);
    for (int line = inside(y, mHeight); line < inside(y + height, mHeight); ++line)
        for (int column = inside(x, mWidth); column < end; ++column)
            mPixels[static_cast<std::size_t>(line) * mWidth + static_cast<std::size_t>(column)] = gray;
}

void PictureCanvas::text(int x, int y, const std::string& text, unsigned char gray) {
    std::string characters = drawable(text);
    std::vector<Corner> corners(characters.size() * bytesPerCharacter / sizeof(Corner) + 4);
    const int quads = stb_easy_font_print(0, 0, characters.data(), nullptr, corners.data(),
                                          static_cast<int>(corners.size() * sizeof(Corner)));
    for (int quad = 0; quad < quads; ++quad) {
        const Corner& first = corners[static_cast<std::size_t>(quad) * 4];
        const Corner& opposite = corners[static_cast<std::size_t>(quad) * 4 + 2];
        fill(x + scaled(first.x), y + scaled(first.y), scaled(opposite.x - first.x),
             scaled(opposite.y - first.y), gray);
    }
}

int PictureCanvas::textWidth(const std::string& text) {
    std::string characters = drawable(text);
    return scaled(static_cast<float>(stb_easy_font_width(characters.data())));
}

} // namespace orbctl
