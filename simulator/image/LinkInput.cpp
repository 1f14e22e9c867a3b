#include "simulator/image/LinkInput.h"

#include <algorithm>

namespace simulator {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t packetHeaderBytes = 36;

/// A 16-bit sample as the camera's format has it.
std::uint16_t cameraPixel(std::uint16_t sample, PixelFormat format) {
    switch (format) {
    case PixelFormat::mono8:
        return static_cast<std::uint16_t>(sample >> 8);
    case PixelFormat::mono8Signed:
        return static_cast<std::uint16_t>((sample >> 8) - 128);
    case PixelFormat::mono10:
        return static_cast<std::uint16_t>(sample >> 6);
    case PixelFormat::mono12:
        return static_cast<std::uint16_t>(sample >> 4);
    default:
        return sample;
    }
}

/// A pixel from the wire at the 12 bits of the design; a format that the design does not know counts as 16
/// bits.
std::uint16_t designPixel(std::uint16_t pixel, std::uint32_t format) {
    switch (static_cast<PixelFormat>(format)) {
    case PixelFormat::mono8:
        return static_cast<std::uint16_t>(pixel << 4);
    case PixelFormat::mono8Signed:
        return static_cast<std::uint16_t>(((pixel + 128) & 0xFF) << 4);
    case PixelFormat::mono10:
        return static_cast<std::uint16_t>((pixel & 0x3FF) << 2);
    case PixelFormat::mono12:
        return static_cast<std::uint16_t>(pixel & 0xFFF);
    default:
        return static_cast<std::uint16_t>(pixel >> 4);
    }
}

/// The picture as a stream of bytes, two-byte pixels with the low byte first.
Bytes wireBytes(const GrayPicture& picture, PixelFormat format) {
    const bool isWide = bytesOfPixel(static_cast<std::uint32_t>(format)) == 2;
    Bytes bytes(picture.samples.size() * (isWide ? 2 : 1));
    std::uint8_t* next = bytes.data();
    for (const std::uint16_t sample : picture.samples) {
        const std::uint16_t pixel = cameraPixel(sample, format);
        *next++ = static_cast<std::uint8_t>(pixel);
        if (isWide) {
            *next++ = static_cast<std::uint8_t>(pixel >> 8);
        }
    }
    return bytes;
}

/// What arrives at each link: packets alternately, the camera's first cable first.
std::array<Bytes, 2> sendOverLinks(const Bytes& bytes, const CameraSetup& camera) {
    const std::size_t payload = camera.packetBytes - packetHeaderBytes;
    std::array<Bytes, 2> links;
    std::size_t link = camera.cablesCrossed ? 1 : 0;
    for (std::size_t start = 0; start < bytes.size(); start += payload) {
        const std::size_t end = std::min(start + payload, bytes.size());
        links[link].insert(links[link].end(), bytes.begin() + static_cast<std::ptrdiff_t>(start),
                           bytes.begin() + static_cast<std::ptrdiff_t>(end));
        link = 1 - link;
    }
    return links;
}

/// Takes up to a number of pixels from a link; the place moves on.
void takePixels(const Bytes& link, std::size_t& place, std::uint32_t count, std::uint32_t format,
                std::vector<std::uint16_t>& pixels) {
    const std::uint32_t step = bytesOfPixel(format);
    const std::size_t whole = std::min<std::size_t>(count, (link.size() - place) / step);
    for (std::size_t i = 0; i < whole; ++i, place += step) {
        const unsigned high = step == 2 ? link[place + 1] : 0u;
        pixels.push_back(designPixel(static_cast<std::uint16_t>(link[place] | (high << 8)), format));
    }
}

std::vector<std::uint16_t> interleave(const std::array<Bytes, 2>& links, const LinkSettings& settings) {
    std::vector<std::uint16_t> pixels;
    pixels.reserve(links[0].size() + links[1].size());
    std::array<std::size_t, 2> places{};
    const std::size_t first = settings.isSwapped ? 1 : 0;
    std::size_t before = SIZE_MAX;
    while (pixels.size() != before) {
        before = pixels.size();
        for (const std::size_t link : {first, 1 - first}) {
            takePixels(links[link], places[link], settings.lineLengths[link], settings.formats[link], pixels);
        }
    }
    return pixels;
}

} // namespace

std::uint32_t bytesOfPixel(std::uint32_t format) {
    return format == static_cast<std::uint32_t>(PixelFormat::mono8) ? 1 : 2;
}

AssembledPicture receivePicture(const GrayPicture& picture, const CameraSetup& camera,
                                const LinkSettings& settings) {
    AssembledPicture assembled;
    if (settings.cameraWidth == 0) {
        return assembled;
    }
    assembled.pixels = interleave(sendOverLinks(wireBytes(picture, camera.pixelFormat), camera), settings);
    assembled.width = settings.cameraWidth;
    assembled.height =
        static_cast<std::uint32_t>((assembled.pixels.size() + assembled.width - 1) / assembled.width);
    assembled.pixels.resize(std::size_t{assembled.width} * assembled.height);
    return assembled;
}

} // namespace simulator
