#include "simulator/image/LinkInput.h"
#include "simulator/image/OutputPicture.h"

#include <gtest/gtest.h>

#include <numeric>

namespace simulator {
namespace {

/// Every sample tells its place; the low bits too.
GrayPicture numberedPicture(std::uint32_t width, std::uint32_t height) {
    GrayPicture picture(width, height);
    for (std::size_t i = 0; i < picture.samples.size(); ++i) {
        picture.samples[i] = static_cast<std::uint16_t>(i * 40503u);
    }
    return picture;
}

/// A camera of 64 x 32 pixels and the registers that agree with it.
struct Scene {
    GrayPicture picture = numberedPicture(64, 32);
    CameraSetup camera;
    LinkSettings links;

    explicit Scene(PixelFormat format = PixelFormat::mono8) {
        camera.pixelFormat = format;
        camera.cablesCrossed = false;
        camera.packetBytes = 36 + 96;
        const auto code = static_cast<std::uint32_t>(format);
        const std::uint32_t line = 96 / bytesOfPixel(code);
        links.lineLengths = {line, line};
        links.formats = {code, code};
        links.cameraWidth = 64;
    }

    AssembledPicture receive() const { return receivePicture(picture, camera, links); }

    std::vector<std::uint16_t> expected(unsigned keptBits) const {
        std::vector<std::uint16_t> pixels;
        const unsigned dropped = 16 - keptBits;
        for (const std::uint16_t sample : picture.samples) {
            pixels.push_back(static_cast<std::uint16_t>(((sample >> dropped) << dropped) >> 4));
        }
        return pixels;
    }
};

TEST(LinkInputTest, AgreeingRegistersGiveThePictureInEveryFormat) {
    const std::pair<PixelFormat, unsigned> formats[] = {{PixelFormat::mono8, 8},
                                                        {PixelFormat::mono8Signed, 8},
                                                        {PixelFormat::mono10, 10},
                                                        {PixelFormat::mono12, 12},
                                                        {PixelFormat::mono16, 16}};
    for (const auto& format : formats) {
        const Scene scene(format.first);
        const AssembledPicture assembled = scene.receive();
        EXPECT_EQ(assembled.width, 64u);
        EXPECT_EQ(assembled.height, 32u);
        EXPECT_EQ(assembled.pixels, scene.expected(format.second)) << static_cast<int>(format.first);
    }
}

TEST(LinkInputTest, CrossedCablesExchangePacketsUntilTheSwapMendsThem) {
    Scene scene;
    scene.camera.cablesCrossed = true;
    const AssembledPicture crossed = scene.receive();
    const std::vector<std::uint16_t> straight = scene.expected(8);
    ASSERT_EQ(crossed.pixels.size(), straight.size());
    EXPECT_NE(crossed.pixels, straight);
    EXPECT_TRUE(std::equal(straight.begin(), straight.begin() + 96, crossed.pixels.begin() + 96))
        << "the first packet has the second place";
    scene.links.isSwapped = true;
    EXPECT_EQ(scene.receive().pixels, straight);
    scene.camera.cablesCrossed = false;
    EXPECT_NE(scene.receive().pixels, straight) << "the swap harms straight cables";
}

TEST(LinkInputTest, WrongLineLengthScrambles) {
    Scene scene;
    scene.links.lineLengths[1] = 92;
    const AssembledPicture assembled = scene.receive();
    const std::vector<std::uint16_t> straight = scene.expected(8);
    EXPECT_TRUE(std::equal(straight.begin(), straight.begin() + 188, assembled.pixels.begin()));
    EXPECT_NE(assembled.pixels, straight);
}

TEST(LinkInputTest, WrongPixelFormatScrambles) {
    Scene wide(PixelFormat::mono12);
    wide.links.formats = {0, 0};
    EXPECT_EQ(wide.receive().height, 64u) << "twice as many pixels of one byte";
    Scene narrow;
    narrow.links.formats = {4, 4};
    EXPECT_EQ(narrow.receive().height, 16u) << "half as many pixels of two bytes";
}

TEST(LinkInputTest, WrongCameraWidthSlantsThePicture) {
    Scene scene;
    scene.links.cameraWidth = 48;
    const AssembledPicture assembled = scene.receive();
    EXPECT_EQ(assembled.width, 48u);
    EXPECT_EQ(assembled.height, 43u) << "the last line is filled up";
    EXPECT_EQ(assembled.pixels[48], scene.expected(8)[48]);
    EXPECT_EQ(assembled.pixels.back(), 0u);
}

TEST(LinkInputTest, RegistersOfZeroTakeNothing) {
    Scene scene;
    scene.links.lineLengths = {0, 0};
    EXPECT_TRUE(scene.receive().pixels.empty());
    scene.links.lineLengths = {96, 0};
    EXPECT_EQ(scene.receive().pixels.size(), 64u * 17u) << "one link only: 11 of 22 packets";
    scene.links.cameraWidth = 0;
    EXPECT_TRUE(scene.receive().pixels.empty());
}

AssembledPicture numberedFrame() {
    AssembledPicture frame;
    frame.width = 64;
    frame.height = 32;
    frame.pixels.resize(64 * 32);
    std::iota(frame.pixels.begin(), frame.pixels.end(), std::uint16_t{0});
    return frame;
}

Region bothHalves(std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height) {
    const RegionOfHalf half{left, top, width, height};
    return {half, half};
}

std::vector<std::uint8_t> written(const Region& region, const OutputSettings& output) {
    std::vector<std::uint8_t> bytes(outputBytes(region, output));
    writeOutput(numberedFrame(), region, output, bytes.data(), bytes.size());
    return bytes;
}

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t pixel) {
    return bytes[2 * pixel] | static_cast<std::uint32_t>(bytes[2 * pixel + 1] << 8);
}

TEST(OutputPictureTest, RegionIsCutOut) {
    const std::vector<std::uint8_t> bytes = written(bothHalves(16, 3, 32, 5), OutputSettings());
    ASSERT_EQ(bytes.size(), 32u * 5 * 2);
    EXPECT_EQ(wordAt(bytes, 0), 3u * 64 + 16);
    EXPECT_EQ(wordAt(bytes, 32), 4u * 64 + 16);
    EXPECT_EQ(wordAt(bytes, 5 * 32 - 1), 7u * 64 + 47);
}

TEST(OutputPictureTest, WhatLiesBesideThePictureIsBlack) {
    const std::vector<std::uint8_t> bytes = written(bothHalves(48, 31, 32, 2), OutputSettings());
    EXPECT_EQ(wordAt(bytes, 15), 31u * 64 + 63);
    EXPECT_EQ(wordAt(bytes, 16), 0u);
    EXPECT_EQ(wordAt(bytes, 32), 0u);
}

TEST(OutputPictureTest, FormatsShiftTheTwelveBits) {
    OutputSettings output;
    const Region region = bothHalves(63, 31, 1, 1);
    EXPECT_EQ(wordAt(written(region, output), 0), 2047u);
    output.isLeftAligned = true;
    EXPECT_EQ(wordAt(written(region, output), 0), 2047u << 4);
    output.isEightBit = true;
    EXPECT_EQ(written(region, output), (std::vector<std::uint8_t>{2047 >> 4}));
}

TEST(OutputPictureTest, EveryPixelPassesTheLookupTable) {
    auto table = std::make_shared<std::vector<std::uint32_t>>(4096, 5);
    (*table)[2047] = 4095;
    OutputSettings output;
    output.lookupTable = table;
    const std::vector<std::uint8_t> bytes = written(bothHalves(62, 31, 2, 1), output);
    EXPECT_EQ(wordAt(bytes, 0), 5u);
    EXPECT_EQ(wordAt(bytes, 1), 4095u);
}

TEST(OutputPictureTest, HalvesThatDisagreeShow) {
    Region region = bothHalves(0, 0, 16, 4);
    region[1].left = 16;
    const std::vector<std::uint8_t> shifted = written(region, OutputSettings());
    EXPECT_EQ(wordAt(shifted, 0), 0u);
    EXPECT_EQ(wordAt(shifted, 16), 64u + 16) << "odd rows come from their own place";
    region = bothHalves(0, 0, 16, 4);
    region[1].width = 8;
    EXPECT_EQ(outputBytes(region, OutputSettings()), (2u * 16 + 2 * 8) * 2);
    EXPECT_EQ(wordAt(written(region, OutputSettings()), 24), 2u * 64) << "the rows do not line up";
    region = bothHalves(0, 0, 16, 4);
    region[0].height = 8;
    EXPECT_EQ(outputBytes(region, OutputSettings()), (4u + 2) * 16 * 2);
    EXPECT_EQ(wordAt(written(region, OutputSettings()), 5 * 16), 6u * 64) << "the rest is even rows only";
}

TEST(OutputPictureTest, ShortTargetsAreNotOverrun) {
    std::vector<std::uint8_t> bytes(7, 0xEE);
    writeOutput(numberedFrame(), bothHalves(0, 1, 16, 4), OutputSettings(), bytes.data(), 5);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{64, 0, 65, 0, 66, 0xEE, 0xEE}));
}

} // namespace
} // namespace simulator
