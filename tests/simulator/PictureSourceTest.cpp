#include "simulator/image/PictureSource.h"
#include "simulator/image/PictureFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace simulator {
namespace {

class PictureSourceTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        mFolder =
            std::filesystem::path(testing::TempDir()) / (std::string("PictureSourceTest.") + test->name());
        std::filesystem::remove_all(mFolder);
        std::filesystem::create_directories(mFolder);
    }
    void TearDown() override { std::filesystem::remove_all(mFolder); }

    std::string write(const std::string& name, const std::string& bytes) const {
        const std::string file = (mFolder / name).string();
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    std::filesystem::path mFolder;
};

TEST_F(PictureSourceTest, ChartMovesAndBearsItsNumber) {
    const auto chart = makeTestChart(0);
    const GrayPicture first = chart->picture(1, 320, 200);
    EXPECT_EQ(first.samples, chart->picture(1, 320, 200).samples);
    EXPECT_NE(first.samples, chart->picture(2, 320, 200).samples);
    EXPECT_NE(first.samples, makeTestChart(1)->picture(1, 320, 200).samples)
        << "each port has a mark of its own";
    EXPECT_EQ(chart->picture(7, 16, 2).samples.size(), 32u);
    EXPECT_EQ(chart->picture(UINT64_MAX, 4096, 2).samples.size(), 8192u);
}

TEST_F(PictureSourceTest, ReadsRawAndPlainPgm) {
    const std::string blackAndWhite = {'\0', '\xFF'};
    const auto raw = readPictureFile(write("raw.pgm", "P5\n# words\n2 1\n255\n" + blackAndWhite));
    ASSERT_TRUE(raw);
    EXPECT_EQ(raw->samples, (std::vector<std::uint16_t>{0, 0xFFFF}));
    const auto wide = readPictureFile(write("wide.pgm", std::string("P5 1 1 65535\n\x12\x34", 15)));
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->samples, (std::vector<std::uint16_t>{0x1234}));
    const auto plain = readPictureFile(write("plain.pgm", "P2\n3 1 # head\n4\n0 2\n# between\n4"));
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->samples, (std::vector<std::uint16_t>{0, 0x8000, 0xFFFF}));
}

TEST_F(PictureSourceTest, RefusesWhatIsNoPicture) {
    const char* const damaged[] = {"",
                                   "P6 1 1 255\nxyz",
                                   "P5 0 1 255\n",
                                   "P5 2 2 255\nabc",
                                   "P5 1 1 70000\nab",
                                   "P5 99999 1 255\n",
                                   "P2 2 1 255\n1",
                                   "P5 -1 1 255\na"};
    for (const char* bytes : damaged) {
        EXPECT_FALSE(readPictureFile(write("damaged.pgm", bytes))) << bytes;
    }
    EXPECT_FALSE(readPictureFile(write("damaged.png", "no picture")));
    EXPECT_FALSE(readPictureFile((mFolder / "missing.png").string()));
    EXPECT_FALSE(readPictureFile((mFolder / "missing.pgm").string()));
    std::filesystem::create_directory(mFolder / "folder.pgm");
    EXPECT_FALSE(readPictureFile((mFolder / "folder.pgm").string()));
    std::filesystem::create_directory(mFolder / "folder.png");
    EXPECT_FALSE(readPictureFile((mFolder / "folder.png").string()));
}

TEST_F(PictureSourceTest, ReadsPng) {
    // A gray picture of 2 x 1 pixels, 0 and 255.
    const unsigned char bytes[] = {
        0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52, 0x00,
        0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x01, 0x08, 0x00, 0x00, 0x00, 0x00, 0xD1, 0x93, 0x20, 0xDF, 0x00,
        0x00, 0x00, 0x0B, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x63, 0x60, 0xF8, 0x0F, 0x00, 0x01, 0x02, 0x01,
        0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};
    const auto picture =
        readPictureFile(write("small.png", std::string(reinterpret_cast<const char*>(bytes), sizeof bytes)));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 2u);
    EXPECT_EQ(picture->samples, (std::vector<std::uint16_t>{0, 0xFFFF}));
}

TEST_F(PictureSourceTest, FolderShowsItsPicturesInTurn) {
    write("b.pgm", "P5 16 2 255\n" + std::string(32, '\xFF'));
    write("a.pgm", "P2 1 1 1\n0");
    write("c.txt", "no picture");
    const auto folder = makePictureFolder(mFolder.string());
    EXPECT_EQ(folder->picture(1, 16, 2).samples, std::vector<std::uint16_t>(32, 0));
    EXPECT_EQ(folder->picture(2, 16, 2).samples, std::vector<std::uint16_t>(32, 0xFFFF));
    EXPECT_EQ(folder->picture(3, 16, 2).samples, std::vector<std::uint16_t>(32, 0));
}

TEST_F(PictureSourceTest, FolderWithoutPicturesIsRefused) {
    write("c.txt", "no picture");
    EXPECT_THROW(makePictureFolder(mFolder.string()), std::invalid_argument);
    EXPECT_THROW(makePictureFolder((mFolder / "missing").string()), std::invalid_argument);
    write("damaged.pgm", "P5");
    EXPECT_THROW(makePictureFolder(mFolder.string()), std::invalid_argument);
}

TEST_F(PictureSourceTest, PicturesKeepTheirShapeOnTheSensor) {
    GrayPicture wide(4, 2);
    wide.samples.assign(8, 9);
    const GrayPicture fitted = fitPicture(wide, 8, 8);
    EXPECT_EQ(fitted.at(0, 1), 0u);
    EXPECT_EQ(fitted.at(0, 2), 9u);
    EXPECT_EQ(fitted.at(7, 5), 9u);
    EXPECT_EQ(fitted.at(7, 6), 0u);
    GrayPicture large(64, 128);
    large.samples.assign(64 * 128, 7);
    const GrayPicture shrunk = fitPicture(large, 16, 16);
    EXPECT_EQ(shrunk.at(3, 8), 0u);
    EXPECT_EQ(shrunk.at(4, 8), 7u);
    EXPECT_EQ(fitPicture(wide, 4, 2).samples, wide.samples);
}

} // namespace
} // namespace simulator
