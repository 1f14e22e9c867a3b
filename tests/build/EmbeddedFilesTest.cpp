#include "tests/build/BuiltLibrary.h"

#include <memory>

#include <gtest/gtest.h>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#include <stb/stb_image.h>

namespace orbelline::tests {

TEST(EmbeddedFiles, TheIconHasTheSizeThatTheAppletReports) {
    EXPECT_EQ(fileBytes(ORBELLINE_ICON).size(), 3164U);
}

TEST(EmbeddedFiles, TheIconIsAPictureWithTransparentAndSolidPixels) {
    int width = 0;
    int height = 0;
    int channels = 0;
    const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
        stbi_load(ORBELLINE_ICON, &width, &height, &channels, STBI_rgb_alpha), stbi_image_free);
    ASSERT_NE(pixels, nullptr) << stbi_failure_reason();
    EXPECT_EQ(width, 48);
    EXPECT_EQ(height, 48);
    EXPECT_EQ(channels, 4);
    const auto alphaAt = [&](int column, int row) { return pixels.get()[4 * (row * width + column) + 3]; };
    EXPECT_EQ(alphaAt(0, 0), 0) << "a corner";
    EXPECT_EQ(alphaAt(29, 24), 255) << "the middle of the lens";
}

TEST(EmbeddedFiles, TheLibraryHoldsTheIconUnchanged) {
    EXPECT_NE(fileBytes(libraryPath()).find(fileBytes(ORBELLINE_ICON)), std::string::npos);
}

TEST(EmbeddedFiles, TheLibraryHoldsTheDesignImageUnchanged) {
    EXPECT_NE(fileBytes(libraryPath()).find(fileBytes(ORBELLINE_DESIGN_IMAGE_FILE)), std::string::npos);
}

} // namespace orbelline::tests
