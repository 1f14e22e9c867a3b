#include "console/ZlibCompression.h"

#include <cstdlib>
#include <memory>
#include <new>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace orbctl {

namespace {

/// Of 5 and more: how hard the compressor searches. Pictures of cameras gain little from more.
constexpr int quality = 5;

} // namespace

std::string zlibCompressed(const std::string& bytes) {
    int length = 0;
    // The compressor takes the bytes as not constant, but only reads them.
    auto* const source = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    const std::unique_ptr<unsigned char, decltype(&std::free)> compressed(
        stbi_zlib_compress(source, static_cast<int>(bytes.size()), &length, quality), &std::free);
    if (!compressed)
        throw std::bad_alloc();
    return {reinterpret_cast<const char*>(compressed.get()), static_cast<std::size_t>(length)};
}

} // namespace orbctl
