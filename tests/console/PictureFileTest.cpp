#include "console/PictureFile.h"
#include "console/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

#include <memory>

namespace orbctl {

namespace {

using namespace std::string_literals;

const unsigned char pixels[] = {0x01, 0x10, 0x02, 0x20, 0x03, 0x30, 0x04, 0x40, 0x05, 0x50, 0x06, 0x60};
const GrayPicture eightBit{3, 2, 1, pixels};
const GrayPicture sixteenBit{3, 2, 2, pixels};

template <typename Pixel>
using Pixels = std::unique_ptr<Pixel, decltype(&std::free)>;

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

TEST(PictureFile, WritesEightBitPgm) {
    EXPECT_EQ(pgmBytes(eightBit), "P5\n3 2\n255\n\x01\x10\x02\x20\x03\x30"s);
}

TEST(PictureFile, WritesSixteenBitPgmWithTheHighByteFirst) {
    EXPECT_EQ(pgmBytes(sixteenBit), "P5\n3 2\n65535\n\x10\x01\x20\x02\x30\x03\x40\x04\x50\x05\x60\x06"s);
}

TEST(PictureFile, WritesEightBitPngThatReadsBack) {
    const std::string file = pngBytes(eightBit);
    int width = 0;
    int height = 0;
    int channels = 0;
    const Pixels<stbi_uc> read(
        stbi_load_from_memory(bytesOf(file), static_cast<int>(file.size()), &width, &height, &channels, 0),
        &std::free);
    ASSERT_TRUE(read);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(read.get()), 6), "\x01\x10\x02\x20\x03\x30");
    EXPECT_EQ(width, 3);
    EXPECT_EQ(height, 2);
    EXPECT_EQ(channels, 1);
}

TEST(PictureFile, WritesSixteenBitPngWithEveryBit) {
    const std::string file = pngBytes(sixteenBit);
    int width = 0;
    int height = 0;
    int channels = 0;
    EXPECT_EQ(stbi_is_16_bit_from_memory(bytesOf(file), static_cast<int>(file.size())), 1);
    const Pixels<stbi_us> read(
        stbi_load_16_from_memory(bytesOf(file), static_cast<int>(file.size()), &width, &height, &channels, 0),
        &std::free);
    ASSERT_TRUE(read);
    const std::vector<unsigned> values(read.get(), read.get() + 6);
    EXPECT_EQ(values, (std::vector<unsigned>{0x1001, 0x2002, 0x3003, 0x4004, 0x5005, 0x6006}));
}

TEST(PictureFile, EndsEveryPngChunkWithItsChecksum) {
    const std::string end = "\0\0\0\0IEND\xAE\x42\x60\x82"s;
    const std::string file = pngBytes(eightBit);
    EXPECT_EQ(file.substr(file.size() - end.size()), end);
}

TEST(PictureFile, CompressesALargePicture) {
    const std::vector<unsigned char> black(1024 * 1024);
    const std::string file = pngBytes({1024, 1024, 1, black.data()});
    EXPECT_LT(file.size(), 20000U);
}

TEST(PictureFile, WritesTheBytesIntoAFile) {
    const kavo::test::TemporaryFolder folder;
    writePicture(eightBit, PictureFormat::pgm, folder.path("picture.pgm"));
    EXPECT_EQ(kavo::test::fileContent(folder.path("picture.pgm")), pgmBytes(eightBit));
}

TEST(PictureFile, TellsWhereAFileCannotBeWritten) {
    try {
        writePicture(eightBit, PictureFormat::png, "/dev/full");
        FAIL() << "a full disk was not noticed";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "/dev/full cannot be written");
        EXPECT_EQ(failure.status(), ExitStatus::notFound);
    }
}

} // namespace orbctl
