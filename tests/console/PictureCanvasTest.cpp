#include "console/PictureCanvas.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orbctl {

namespace {

long darkPixels(const PictureCanvas& canvas) {
    const GrayPicture picture = canvas.picture();
    return std::count(picture.pixels, picture.pixels + picture.bytes(), 0);
}

} // namespace

TEST(PictureCanvas, IsWhiteAtFirst) {
    const PictureCanvas canvas(7, 5);
    EXPECT_EQ(canvas.picture().bytes(), 35U);
    EXPECT_EQ(canvas.at(6, 4), 255);
    EXPECT_EQ(darkPixels(canvas), 0);
}

TEST(PictureCanvas, LeavesOutWhatLiesOutside) {
    PictureCanvas canvas(10, 10);
    canvas.fill(-5, -5, 8, 8, 0);
    canvas.fill(8, 8, 100, 100, 0);
    canvas.fill(20, 3, 5, 5, 0);
    canvas.fill(3, 3, 0, 5, 0);
    EXPECT_EQ(darkPixels(canvas), 9 + 4);
    canvas.text(-20, -5, "outside on the left, the right and above", 0);
    canvas.text(0, 200, "below", 0);
}

TEST(PictureCanvas, DrawsLettersWithinTheirWidth) {
    const std::string text = "gamma 0.5";
    PictureCanvas canvas(200, 40);
    canvas.text(10, 5, text, 0);
    EXPECT_GT(darkPixels(canvas), 100);
    const auto width = static_cast<unsigned>(PictureCanvas::textWidth(text));
    for (unsigned y = 0; y < 40; ++y)
        for (unsigned x = 0; x < 200; ++x)
            if (x < 10 || x >= 10 + width || y < 5 || y >= 5 + PictureCanvas::textHeight) {
                EXPECT_EQ(canvas.at(x, y), 255) << x << " " << y;
            }
}

TEST(PictureCanvas, ShowsAQuestionMarkForWhatItHasNoLetterFor) {
    PictureCanvas canvas(100, 30);
    canvas.text(0, 0, "\xC3\xA4\n\x01", 0);
    PictureCanvas marks(100, 30);
    marks.text(0, 0, "????", 0);
    const GrayPicture first = canvas.picture();
    EXPECT_TRUE(std::equal(first.pixels, first.pixels + first.bytes(), marks.picture().pixels));
    EXPECT_GT(darkPixels(canvas), 0);
}

TEST(PictureCanvas, TakesALongText) {
    PictureCanvas canvas(3000, 30);
    canvas.text(0, 0, std::string(1000, '@') + std::string(1000, '%'), 0);
    EXPECT_GT(darkPixels(canvas), 1000);
}

} // namespace orbctl
