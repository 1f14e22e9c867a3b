#include "simulator/image/PictureSource.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace simulator {
namespace {

constexpr std::uint16_t white = 0xFFFF;
constexpr std::uint16_t black = 0;
constexpr std::uint32_t gridDistance = 64;
constexpr std::uint32_t barStep = 8;
constexpr std::uint32_t diagonals = 4;
constexpr std::uint32_t digitColumns = 3;
constexpr std::uint32_t digitRows = 5;

/// Digits 0 to 9 and a hyphen, 3 x 5 dots, a row in three bits, the left dot highest.
constexpr std::array<std::array<std::uint8_t, digitRows>, 11> digitDots = {{
    {7, 5, 5, 5, 7},
    {2, 6, 2, 2, 7},
    {7, 1, 7, 4, 7},
    {7, 1, 3, 1, 7},
    {5, 5, 7, 1, 1},
    {7, 4, 7, 1, 7},
    {7, 4, 7, 5, 7},
    {7, 1, 2, 2, 2},
    {7, 5, 7, 5, 7},
    {7, 5, 7, 1, 7},
    {0, 0, 7, 0, 0},
}};

/// A smooth ramp above, sixteen steps below: the one shows the bit depth, the other the order of the columns.
std::uint16_t background(std::uint32_t x, std::uint32_t y, const GrayPicture& picture) {
    const auto ramp = static_cast<std::uint16_t>(x * white / picture.width);
    return y < picture.height / 2 ? ramp : static_cast<std::uint16_t>(white - (ramp & 0xF000));
}

void fill(GrayPicture& picture, std::uint32_t left, std::uint32_t top, std::uint32_t width,
          std::uint32_t height, std::uint16_t sample) {
    const std::uint32_t right = std::min(left + width, picture.width);
    const std::uint32_t bottom = std::min(top + height, picture.height);
    for (std::uint32_t y = top; y < bottom; ++y) {
        for (std::uint32_t x = left; x < right; ++x) {
            picture.at(x, y) = sample;
        }
    }
}

void drawBackground(GrayPicture& picture) {
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        for (std::uint32_t x = 0; x < picture.width; ++x) {
            const bool onGrid = x % gridDistance == 0 || y % gridDistance == 0;
            const std::uint16_t ground = background(x, y, picture);
            picture.at(x, y) = onGrid ? static_cast<std::uint16_t>(ground ^ 0x8000) : ground;
        }
    }
}

/// Lines that only run through where every row stands in its place.
void drawDiagonals(GrayPicture& picture) {
    const std::uint32_t distance = std::max(1u, picture.width / diagonals);
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        const auto shift = static_cast<std::uint32_t>(std::uint64_t{y} * picture.width / picture.height);
        for (std::uint32_t start = 0; start < picture.width; start += distance) {
            fill(picture, (start + shift) % picture.width, y, 2, 1, black);
        }
    }
}

/// A bright bar that wanders to the right with every frame.
void drawBar(GrayPicture& picture, std::uint64_t number) {
    const auto barLeft = static_cast<std::uint32_t>(number * barStep % picture.width);
    fill(picture, barLeft, 0, barStep, picture.height, white);
}

void drawDigit(GrayPicture& picture, std::size_t digit, std::uint32_t left, std::uint32_t top,
               std::uint32_t dot) {
    for (std::uint32_t row = 0; row < digitRows; ++row) {
        for (std::uint32_t column = 0; column < digitColumns; ++column) {
            const bool isSet = ((digitDots[digit][row] >> (digitColumns - 1 - column)) & 1) != 0;
            fill(picture, left + column * dot, top + row * dot, dot, dot, isSet ? white : black);
        }
    }
}

void drawLabel(GrayPicture& picture, const std::string& label) {
    const std::uint32_t dot = std::max(1u, std::min(picture.width, picture.height) / 64);
    std::uint32_t left = dot;
    for (const char letter : label) {
        drawDigit(picture, letter == '-' ? 10u : static_cast<std::size_t>(letter - '0'), left, dot, dot);
        left += (digitColumns + 1) * dot;
    }
}

class TestChart : public PictureSource {
  public:
    explicit TestChart(unsigned port) : mPort(port) {}

    GrayPicture picture(std::uint64_t number, std::uint32_t width, std::uint32_t height) const override {
        GrayPicture chart(width, height);
        drawBackground(chart);
        drawDiagonals(chart);
        drawBar(chart, number);
        drawLabel(chart, std::to_string(mPort) + '-' + std::to_string(number));
        return chart;
    }

  private:
    unsigned mPort;
};

} // namespace

std::shared_ptr<const PictureSource> makeTestChart(unsigned port) {
    return std::make_shared<TestChart>(port);
}

} // namespace simulator
