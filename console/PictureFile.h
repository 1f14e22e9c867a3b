#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orbctl {

/// A gray picture as the board delivers it: rows from top to bottom, no padding, 16-bit pixels low byte
/// first.
struct GrayPicture {
    unsigned width = 0;
    unsigned height = 0;
    unsigned bytesPerPixel = 1; ///< 1 or 2
    const unsigned char* pixels = nullptr;

    std::size_t rowBytes() const { return std::size_t{width} * bytesPerPixel; }
    std::size_t bytes() const { return rowBytes() * height; }
};

enum class PictureFormat { png, pgm };

/// The file's bytes: PGM with 8 bits or 16 bits, high byte first, as that format demands.
std::string pgmBytes(const GrayPicture& picture);
/// The file's bytes: gray PNG with 8 or 16 bits; no bit of a 16-bit picture is lost.
/// \throws std::bad_alloc
std::string pngBytes(const GrayPicture& picture);

/// \throws Failure (notFound) where the file cannot be written
void writePicture(const GrayPicture& picture, PictureFormat format, const std::string& file);

/// "png" or "pgm".
std::string extensionOf(PictureFormat format);
PictureFormat pictureFormatFrom(std::string_view name);

} // namespace orbctl
