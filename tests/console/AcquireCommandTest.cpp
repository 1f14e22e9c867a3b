#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>

namespace orbctl::test {

namespace {

using kavo::test::fileContent;
using kavo::test::TemporaryFolder;

class AcquireCommand : public ::testing::Test {
  protected:
    std::size_t filesIn(const std::string& folder) const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(mFolder.path(folder)))
            count += entry.is_regular_file() ? 1 : 0;
        return count;
    }

    /// orbctl over a board whose cameras run free at a rate, or wait for their triggers (0).
    Program consoleWithCameras(const std::string& rate) const {
        const std::string scene = "camera 0 rate " + rate + "\ncamera 1 rate " + rate + "\n";
        return console().environment("ORBELLINE_BOARD_SCENE", mFolder.makeFile("scene-" + rate, scene));
    }
    ProgramResult acquire(const std::vector<std::string>& words) const {
        return consoleWithCameras("200").run(words);
    }

    TemporaryFolder mFolder;
};

} // namespace

TEST_F(AcquireCommand, WritesPicturesOfBothPortsIntoANewFolder) {
    const ProgramResult result = acquire({"acquire", "-n", "3", "--out", mFolder.path("a/b")});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(filesIn("a/b"), 6U);
    EXPECT_EQ(fileContent(mFolder.path("a/b/port1-0003.png")).substr(1, 3), "PNG");
    EXPECT_EQ(result.messages, "Pictures are in " + mFolder.path("a/b") + "\n")
        << "no progress bar in a pipe";
    EXPECT_TRUE(std::regex_match(
        result.output, std::regex("port 0: 3 pictures of 1024 x 1024, 8 bit, [0-9.]+ frames per second\n"
                                  "port 1: 3 pictures of 1024 x 1024, 8 bit, [0-9.]+ frames per second\n")))
        << result.output;
}

TEST_F(AcquireCommand, TellsARateThatCanBe) {
    const ProgramResult result = acquire({"acquire", "-n", "20", "-f", "pgm", "--out", mFolder.path("p")});
    std::smatch found;
    std::string rest = result.output;
    for (int port = 0; port < 2; ++port) {
        ASSERT_TRUE(std::regex_search(rest, found, std::regex("([0-9.]+) frames per second")))
            << result.output;
        const double rate = std::stod(found[1]);
        EXPECT_GT(rate, 0.5) << result.output;
        EXPECT_LT(rate, 5000) << result.output;
        rest = found.suffix();
    }
}

TEST_F(AcquireCommand, TakesPicturesThatTheTriggerSystemAsksFor) {
    const ProgramResult result = consoleWithCameras("0").run(
        {"--set", "FG_TRIGGER_FRAMESPERSECOND=100", "--set", "FG_TRIGGERSTATE=TS_ACTIVE", "acquire", "-n",
         "4", "-f", "pgm", "--out", mFolder.path("p")});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(filesIn("p"), 8U);
}

TEST_F(AcquireCommand, NamesTheStoppedTriggerWhereNoPictureComes) {
    const ProgramResult result = consoleWithCameras("0").run(
        {"acquire", "-n", "2", "--timeout", "0.2", "-p", "1", "--out", mFolder.path("p")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages,
              "orbctl: port 1: picture 1 did not come within 0.2 s; the trigger system is stopped "
              "(FG_TRIGGERSTATE is TS_SYNC_STOP)\n");
}

TEST_F(AcquireCommand, KeepsThePicturesThatCameBeforeATimeout) {
    const ProgramResult result =
        consoleWithCameras("0")
            .input(
                "set FG_AREATRIGGERMODE=ATM_SOFTWARE FG_TRIGGERQUEUE_MODE=FG_ON FG_TRIGGERSTATE=TS_ACTIVE\n"
                "trigger send 2\nacquire -n 5 -p 0 --timeout 1 -f pgm -o " +
                mFolder.path("p") + "\n")
            .run({"run"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages.rfind("orbctl: port 0: picture ", 0), 0U) << result.messages;
    EXPECT_GE(filesIn("p"), 1U);
    EXPECT_LT(filesIn("p"), 5U);
}

TEST_F(AcquireCommand, FollowsRegionAndFormatOfEachPort) {
    const ProgramResult result =
        acquire({"--set", "FG_WIDTH=320", "--set", "FG_HEIGHT=2", "--set", "1:FG_FORMAT=FG_GRAY16", "acquire",
                 "-f", "pgm", "-o", mFolder.path("p")});
    EXPECT_EQ(result.output, "port 0: 1 picture of 320 x 2, 8 bit\nport 1: 1 picture of 320 x 2, 16 bit\n")
        << result.messages;
    const std::string eight = fileContent(mFolder.path("p/port0-0001.pgm"));
    const std::string sixteen = fileContent(mFolder.path("p/port1-0001.pgm"));
    EXPECT_EQ(eight.rfind("P5\n320 2\n255\n", 0), 0U);
    EXPECT_EQ(eight.size(), 13U + 640U);
    EXPECT_EQ(sixteen.rfind("P5\n320 2\n65535\n", 0), 0U);
    EXPECT_EQ(sixteen.size(), 15U + 1280U);
}

TEST_F(AcquireCommand, SixteenBitPicturesHoldTheEightBitOnesInTheirHighByte) {
    const auto pixelsOf = [&](const std::vector<std::string>& settings, const std::string& name) {
        std::vector<std::string> words;
        for (const std::string& setting : settings)
            words.insert(words.end(), {"--set", setting});
        words.insert(words.end(),
                     {"--set", "FG_HEIGHT=2", "acquire", "-p", "0", "-f", "pgm", "-o", mFolder.path(name)});
        EXPECT_EQ(acquire(words).status, 0);
        const std::string file = fileContent(mFolder.path(name + "/port0-0001.pgm"));
        return file.substr(file.find("5\n", 8) + 2);
    };
    const std::string eight = pixelsOf({}, "eight");
    const std::string left = pixelsOf({"FG_FORMAT=FG_GRAY16"}, "left");
    ASSERT_EQ(eight.size(), 2048U);
    ASSERT_EQ(left.size(), 4096U);
    // The test chart has a narrow bar that moves from picture to picture.
    unsigned different = 0;
    for (std::size_t pixel = 0; pixel < 2048; ++pixel)
        different += left[2 * pixel] == eight[pixel] ? 0 : 1;
    EXPECT_LE(different, 64U);
}

TEST_F(AcquireCommand, GoesOnWhereOneMemoryIsNotEnough) {
    const ProgramResult result =
        acquire({"acquire", "-p", "0", "-n", "70", "-f", "pgm", "-o", mFolder.path("p")});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(filesIn("p"), 70U);
    EXPECT_TRUE(std::filesystem::exists(mFolder.path("p/port0-0070.pgm")));
}

TEST_F(AcquireCommand, StopsCleanlyAtCtrlC) {
    const ProgramResult result = consoleWithCameras("200").interruptAfter(1500).run(
        {"acquire", "-n", "1000000", "-p", "1", "-f", "pgm", "-o", mFolder.path("p")});
    EXPECT_EQ(result.status, 130) << result.messages;
    EXPECT_NE(result.messages.find("Stopped before all pictures had come\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(mFolder.path("p/port1-0001.pgm")));
}

TEST_F(AcquireCommand, DrawsAProgressBarOnATerminal) {
    const ProgramResult result = consoleWithCameras("200")
                                     .environment("TERM", "xterm")
                                     .runOnTerminal({"acquire", "-n", "2", "-o", mFolder.path("p")});
    EXPECT_NE(result.output.find("\rAcquiring ["), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\r\033[K"), std::string::npos);
}

TEST_F(AcquireCommand, NamesAFolderThatCannotBeMade) {
    const std::string file = mFolder.makeFile("file", "");
    const ProgramResult result = orbctl({"acquire", "-o", file + "/inside"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: the folder " + file + "/inside cannot be made\n");
}

TEST_F(AcquireCommand, DemoWritesThePicturesThatItNames) {
    const ProgramResult result = orbctl({"demo", "-o", mFolder.path("demo"), "-f", "pgm"});
    EXPECT_EQ(result.status, 0) << result.messages;
    const std::regex name("[1-9]-[a-z-]+-port[01]-0001\\.pgm");
    unsigned named = 0;
    for (std::sregex_iterator found(result.output.begin(), result.output.end(), name), end; found != end;
         ++found) {
        EXPECT_TRUE(std::filesystem::exists(mFolder.path("demo/" + found->str()))) << found->str();
        ++named;
    }
    EXPECT_EQ(named, 12U);
    EXPECT_NE(result.output.find("Pictures and diagrams are in " + mFolder.path("demo")), std::string::npos);
}

TEST_F(AcquireCommand, DemoDrawsEveryTriggerMode) {
    const ProgramResult result = orbctl({"demo", "-o", mFolder.path("demo"), "-f", "pgm"});
    for (const char* const name :
         {"7-generator.svg", "8-software.svg", "9-external.svg", "10-synchronized.svg"}) {
        EXPECT_NE(result.output.find(std::string("  In ") + name + ": "), std::string::npos) << name;
        EXPECT_EQ(fileContent(mFolder.path(std::string("demo/") + name)).rfind("<svg ", 0), 0U) << name;
    }
}

TEST_F(AcquireCommand, DemoShowsThatTheSwapMendsCrossedCables) {
    ASSERT_EQ(orbctl({"demo", "-o", mFolder.path("demo"), "-f", "pgm"}).status, 0);
    // The test chart has a black diagonal; bands in the wrong order break it.
    const auto blackOnDiagonal = [&](const std::string& name) {
        const std::string file = fileContent(mFolder.path("demo/" + name));
        const std::size_t rows = file.size() - std::size_t{1024} * 1024;
        unsigned black = 0;
        for (std::size_t line = 0; line < 1024; ++line)
            black += file[rows + line * 1024 + line] == 0 ? 1 : 0;
        return black;
    };
    for (const std::string port : {"port0", "port1"}) {
        EXPECT_LT(blackOnDiagonal("5-crossed-" + port + "-0001.pgm"), 300U);
        EXPECT_GT(blackOnDiagonal("6-swapped-" + port + "-0001.pgm"), 900U);
    }
}

} // namespace orbctl::test
