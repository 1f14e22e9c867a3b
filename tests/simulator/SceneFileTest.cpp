#include "simulator/SceneFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

namespace simulator {
namespace {

class SceneFileTest : public testing::Test {
  protected:
    void SetUp() override { mBoard.resetAndStepByHand(); }

    void set(const std::string& lines) {
        std::ofstream(mFile) << lines;
        setScene(mBoard, mFile);
    }

    std::string mistakeIn(const std::string& lines) {
        try {
            set(lines);
        } catch (const std::runtime_error& mistake) {
            return std::string(mistake.what()).substr(mFile.size());
        }
        return {};
    }

    Board& mBoard = Board::at(7);
    const kavo::test::TemporaryFolder mFolder;
    const std::string mFile = mFolder.path("some.scene");
};

TEST_F(SceneFileTest, SetsEveryPropertyOfACamera) {
    set("# a scene\n\ncamera 1 sensor 2048 512\n  camera 1 format mono12 # deep\ncamera 1 packet 1500\n"
        "camera 1 cables straight\ncamera 1 exposure 100.5\ncamera 1 readout 16\ncamera 1 rate 50\n"
        "camera 1 power off\n");
    const CameraSetup camera = mBoard.camera(1);
    EXPECT_EQ(camera.sensorWidth, 2048u);
    EXPECT_EQ(camera.sensorHeight, 512u);
    EXPECT_EQ(camera.pixelFormat, PixelFormat::mono12);
    EXPECT_EQ(camera.packetBytes, 1500u);
    EXPECT_FALSE(camera.cablesCrossed);
    EXPECT_EQ(camera.exposureTicks, 6281u);
    EXPECT_EQ(camera.readoutTicks, 1000u);
    EXPECT_EQ(camera.freeRunningTicks, 1250000u);
    EXPECT_FALSE(camera.connected);
    EXPECT_EQ(mBoard.camera(0).sensorWidth, 1024u);
}

TEST_F(SceneFileTest, DrivesInputs) {
    set("input 0 high\ninput 5 pulses 16 16 16 3\n");
    mBoard.clock().advance(100000);
    const std::string input = "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_";
    EXPECT_EQ(mBoard.eventCount(input + "Pin0"), 1u);
    EXPECT_EQ(mBoard.eventCount(input + "Pin5"), 3u);
}

TEST_F(SceneFileTest, TellsMistakesWithTheirLine) {
    EXPECT_EQ(mistakeIn("\nfoo\n"), ", line 2: a line begins with camera or input");
    EXPECT_EQ(mistakeIn("camera 0 colour red\n"), ", line 1: a camera has no colour");
    EXPECT_EQ(mistakeIn("camera 2 power on\n"), ", line 1: a board has the camera ports 0 and 1");
    EXPECT_EQ(mistakeIn("camera 0 sensor 64\n"), ", line 1: the line ends before the sensor's height");
    EXPECT_EQ(mistakeIn("camera 0 sensor 64 64 64\n"), ", line 1: too many words: 64");
    EXPECT_EQ(mistakeIn("camera 0 packet 1.5\n"), ", line 1: the packet size is a whole number");
    EXPECT_EQ(mistakeIn("camera 0 packet x\n"), ", line 1: the packet size is no number, or out of range");
    EXPECT_EQ(mistakeIn("camera 0 exposure -1\n"), ", line 1: the exposure is no number, or out of range");
    EXPECT_EQ(mistakeIn("camera 0 exposure 1x\n"), ", line 1: the exposure is no number, or out of range");
    EXPECT_EQ(mistakeIn("camera 0 cables red\n"), ", line 1: what the cables are is crossed or straight");
    EXPECT_EQ(mistakeIn("camera 0 format mono9\n"),
              ", line 1: a format is mono8, mono8signed, mono10, mono12 or mono16");
    EXPECT_EQ(mistakeIn("camera 0 sensor 8 8\n"),
              ", line 1: a sensor has 16 to 4096 columns and 2 to 4096 rows");
    EXPECT_NE(mistakeIn("camera 0 pictures /no where\n"), "");
    EXPECT_EQ(mistakeIn("input 8 high\n"), ", line 1: a board has the trigger inputs 0 to 7");
    EXPECT_EQ(mistakeIn("input 0 up\n"), ", line 1: an input is high, low or gets pulses");
    EXPECT_THROW(setScene(mBoard, mFile + ".missing"), std::runtime_error);
}

} // namespace
} // namespace simulator
