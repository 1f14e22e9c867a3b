#include "console/PictureFile.h"

#include "console/NumberText.h"
#include "console/WholeFile.h"
#include "console/ZlibCompression.h"

#include <array>

namespace orbctl {

namespace {

using namespace std::string_literals;

/// Rows for a file that wants the high byte of a pixel first, each behind a prefix.
std::string rowsHighByteFirst(const GrayPicture& picture, std::string_view rowPrefix) {
    std::string rows;
    rows.reserve((picture.rowBytes() + rowPrefix.size()) * picture.height);
    for (unsigned line = 0; line < picture.height; ++line) {
        rows += rowPrefix;
        const unsigned char* const row = picture.pixels + line * picture.rowBytes();
        if (picture.bytesPerPixel == 1) {
            rows.append(reinterpret_cast<const char*>(row), picture.rowBytes());
            continue;
        }
        for (std::size_t byte = 0; byte < picture.rowBytes(); byte += 2) {
            rows += static_cast<char>(row[byte + 1]);
            rows += static_cast<char>(row[byte]);
        }
    }
    return rows;
}

std::array<std::uint32_t, 256> checksumTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1) != 0 ? 0xEDB88320U ^ (rest >> 1) : rest >> 1;
        table[byte] = rest;
    }
    return table;
}

std::uint32_t checksum(std::string_view bytes) {
    static const std::array<std::uint32_t, 256> table = checksumTable();
    std::uint32_t rest = 0xFFFFFFFFU;
    for (const char byte : bytes)
        rest = table[(rest ^ static_cast<unsigned char>(byte)) & 0xFF] ^ (rest >> 8);
    return rest ^ 0xFFFFFFFFU;
}

std::string bigEndian(std::uint32_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>((number >> shift) & 0xFF);
    return bytes;
}

std::string chunk(const std::string& type, const std::string& content) {
    const std::string checked = type + content;
    return bigEndian(static_cast<std::uint32_t>(content.size())) + checked + bigEndian(checksum(checked));
}

std::string header(const GrayPicture& picture) {
    const char bitDepth = static_cast<char>(8 * picture.bytesPerPixel);
    return bigEndian(picture.width) + bigEndian(picture.height) + bitDepth + "\0\0\0\0"s;
}

} // namespace

std::string pgmBytes(const GrayPicture& picture) {
    const std::string largest = picture.bytesPerPixel == 1 ? "255" : "65535";
    return "P5\n" + textOf(std::uint64_t{picture.width}) + " " + textOf(std::uint64_t{picture.height}) +
           "\n" + largest + "\n" + rowsHighByteFirst(picture, "");
}

std::string pngBytes(const GrayPicture& picture) {
    const std::string noFilter(1, '\0');
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header(picture)) +
           chunk("IDAT", zlibCompressed(rowsHighByteFirst(picture, noFilter))) + chunk("IEND", "");
}

void writePicture(const GrayPicture& picture, PictureFormat format, const std::string& file) {
    const std::string bytes = format == PictureFormat::png ? pngBytes(picture) : pgmBytes(picture);
    writeWholeFile(file, bytes);
}

std::string extensionOf(PictureFormat format) { return format == PictureFormat::png ? "png" : "pgm"; }

PictureFormat pictureFormatFrom(std::string_view name) {
    return name == "pgm" ? PictureFormat::pgm : PictureFormat::png;
}

} // namespace orbctl
