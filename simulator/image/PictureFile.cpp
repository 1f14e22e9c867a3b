#include "simulator/image/PictureFile.h"

#include "simulator/image/PngFile.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <istream>

namespace simulator {
namespace {

constexpr std::uint32_t mostPixelsInARow = 65536;
constexpr std::uint64_t mostPixels = std::uint64_t{1} << 28;

struct PgmHead {
    bool isPlain = false;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t maximum = 0;
};

/// The next number of a PGM head; comments run from a hash to the end of the line.
bool readPgmNumber(std::istream& input, std::uint32_t& number) {
    while (input >> std::ws && input.peek() == '#') {
        std::string comment;
        std::getline(input, comment);
    }
    return std::isdigit(input.peek()) != 0 && static_cast<bool>(input >> number);
}

std::optional<PgmHead> readPgmHead(std::istream& input) {
    char mark[2] = {};
    PgmHead head;
    if (!input.read(mark, 2) || mark[0] != 'P' || (mark[1] != '2' && mark[1] != '5') ||
        !readPgmNumber(input, head.width) || !readPgmNumber(input, head.height) ||
        !readPgmNumber(input, head.maximum)) {
        return std::nullopt;
    }
    head.isPlain = mark[1] == '2';
    const bool isSane = head.width >= 1 && head.height >= 1 && head.width <= mostPixelsInARow &&
                        head.height <= mostPixelsInARow &&
                        std::uint64_t{head.width} * head.height <= mostPixels && head.maximum >= 1 &&
                        head.maximum <= 0xFFFF;
    return isSane ? std::optional<PgmHead>(head) : std::nullopt;
}

bool readPgmSample(std::istream& input, const PgmHead& head, std::uint32_t& sample) {
    if (head.isPlain) {
        return readPgmNumber(input, sample);
    }
    const int first = input.get();
    const int second = head.maximum > 0xFF ? input.get() : 0;
    sample = static_cast<std::uint32_t>(head.maximum > 0xFF ? (first << 8) | second : first);
    return static_cast<bool>(input);
}

std::optional<GrayPicture> readPgmFile(const std::string& name) {
    std::ifstream input(name, std::ios::binary);
    const std::optional<PgmHead> head = readPgmHead(input);
    if (!head) {
        return std::nullopt;
    }
    if (!head->isPlain) {
        input.get(); // one white space parts the head from raw samples
    }
    GrayPicture picture(head->width, head->height);
    for (std::uint16_t& sample : picture.samples) {
        std::uint32_t raw = 0;
        if (!readPgmSample(input, *head, raw)) {
            return std::nullopt;
        }
        const std::uint32_t limited = std::min(raw, head->maximum);
        sample = static_cast<std::uint16_t>((limited * 0xFFFFu + head->maximum / 2) / head->maximum);
    }
    return picture;
}

std::string lowerCaseEnding(const std::string& file) {
    const std::size_t dot = file.find_last_of('.');
    std::string ending = dot == std::string::npos ? std::string() : file.substr(dot);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return ending;
}

} // namespace

std::optional<GrayPicture> readPictureFile(const std::string& file) {
    return lowerCaseEnding(file) == ".png" ? readPngFile(file) : readPgmFile(file);
}

bool isPictureFileName(const std::string& file) {
    const std::string ending = lowerCaseEnding(file);
    return ending == ".png" || ending == ".pgm";
}

GrayPicture fitPicture(const GrayPicture& picture, std::uint32_t width, std::uint32_t height) {
    if (picture.width == width && picture.height == height) {
        return picture;
    }
    GrayPicture fitted(width, height);
    const bool fillsWidth = std::uint64_t{picture.width} * height >= std::uint64_t{picture.height} * width;
    const std::uint64_t part = fillsWidth ? width : height;
    const std::uint64_t whole = fillsWidth ? picture.width : picture.height;
    const auto scaled = [part, whole](std::uint32_t length) {
        return static_cast<std::uint32_t>(std::max<std::uint64_t>(1, length * part / whole));
    };
    const std::uint32_t usedWidth = std::min(width, scaled(picture.width));
    const std::uint32_t usedHeight = std::min(height, scaled(picture.height));
    const std::uint32_t left = (width - usedWidth) / 2;
    const std::uint32_t top = (height - usedHeight) / 2;
    for (std::uint32_t y = 0; y < usedHeight; ++y) {
        const auto sourceY = static_cast<std::uint32_t>(std::uint64_t{y} * picture.height / usedHeight);
        for (std::uint32_t x = 0; x < usedWidth; ++x) {
            const auto sourceX = static_cast<std::uint32_t>(std::uint64_t{x} * picture.width / usedWidth);
            fitted.at(left + x, top + y) = picture.at(sourceX, sourceY);
        }
    }
    return fitted;
}

} // namespace simulator
