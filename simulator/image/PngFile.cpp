#include "simulator/image/PngFile.h"

#include <cstdio>
#include <memory>

// The reader comes as one header that is not written for this project's warnings.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wcast-qual"
#pragma GCC diagnostic ignored "-Wpedantic"
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_MAX_DIMENSIONS 65536
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

namespace simulator {
namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct SampleDeleter {
    void operator()(stbi_us* samples) const { stbi_image_free(samples); }
};

} // namespace

std::optional<GrayPicture> readPngFile(const std::string& name) {
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(name.c_str(), "rb"));
    if (file == nullptr) {
        return std::nullopt;
    }
    int width = 0;
    int height = 0;
    int channels = 0;
    const std::unique_ptr<stbi_us, SampleDeleter> samples(
        stbi_load_from_file_16(file.get(), &width, &height, &channels, 1));
    if (samples == nullptr || width < 1 || height < 1) {
        return std::nullopt;
    }
    GrayPicture picture(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
    picture.samples.assign(samples.get(), samples.get() + picture.samples.size());
    return picture;
}

} // namespace simulator
