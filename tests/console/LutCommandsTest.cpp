#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

using kavo::test::fileContent;

class LutCommands : public ::testing::Test {
  protected:
    static ProgramResult ran(const std::string& commands) {
        return console().input(commands).run({"run", "--keep-going"});
    }

    const kavo::test::TemporaryFolder mFolder;
    const std::string mFile = mFolder.path("a.lut");
};

} // namespace

TEST_F(LutCommands, ShowTellsWhatFillsTheTable) {
    const ProgramResult result = orbctl({"--set", "FG_PROCESSING_INVERT=FG_ON", "lut"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(result.output.substr(0, result.output.find("  1024")),
              "Lookup table of port 0\n"
              "  Type       LUT_TYPE_PROCESSING\n"
              "  Processor  offset 0, gain 1, gamma 1, invert on\n"
              "  File       none\n"
              "  Outputs    0 .. 4095\n"
              "  Input  Output\n  0      4095\n  256    3839\n  512    3583\n  768    3327\n");
    EXPECT_EQ(orbctl({"lut", "show"}).output, orbctl({"lut"}).output);
}

TEST_F(LutCommands, ShowWritesEveryEntry) {
    EXPECT_NE(orbctl({"lut", "show", "--all"}).output.find("\n  1023   1023\n  1024   1024\n"),
              std::string::npos);
    const std::string json = orbctl({"lut", "show", "--json", "--port", "both"}).output;
    EXPECT_EQ(evaluated(json, "[t['port'] for t in data], data[1]['values'] == list(range(4096)), "
                              "data[0]['gamma'], data[0]['invert']"),
              "[0, 1] True 1 False\n");
}

TEST_F(LutCommands, SetTakesShortNamesAndInputs) {
    const ProgramResult result =
        ran("lut set gain=2 invert=on\nget -n FG_PROCESSING_GAIN FG_PROCESSING_INVERT\n"
            "lut set 3=77 10..12=0x0f --port 1\n"
            "get -n FG_LUT_VALUE[3] FG_LUT_VALUE[10] FG_LUT_VALUE[12] FG_LUT_VALUE[13] "
            "--port 1\nlut show --port 1\n");
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.output.rfind("2\nFG_ON\n77\n15\n15\n13\n", 0), 0U) << result.output;
    EXPECT_NE(result.output.find("entries set by hand"), std::string::npos);
}

TEST_F(LutCommands, SetRefusesInWords) {
    EXPECT_EQ(orbctl({"lut", "set", "gain=5000"}).messages,
              "orbctl: FG_PROCESSING_GAIN: 5000 is outside 0 .. 4096 (-6000)\n");
    EXPECT_EQ(orbctl({"lut", "set", "5=4096"}).messages,
              "orbctl: FG_LUT_VALUE: 4096 is outside 0 .. 4095 (-6000)\n");
    for (const char* const target :
         {"gian=1", "4096=0", "9..8=0", "1..=0", "..=0", "0..99999999999999999999=1"}) {
        const ProgramResult result = orbctl({"lut", "set", target});
        EXPECT_EQ(result.status, 2) << target;
        EXPECT_NE(result.messages.find("is none of offset, gain, gamma, invert, type"), std::string::npos);
    }
}

TEST_F(LutCommands, SetSaysWhereTheProcessorIsIdle) {
    const ProgramResult result = ran("lut set type=file\nlut set gamma=2\nlut set type=processor\n");
    EXPECT_EQ(result.messages, "port 0: the table comes from a file; the processor's values take effect with "
                               "type=processor\n");
}

TEST_F(LutCommands, SavesOnePortAndLoadsItIntoAnother) {
    const ProgramResult result =
        ran("lut set gain=2\nlut save " + mFile + "\nlut load " + mFile +
            " --port 1\nget -n FG_LUT_TYPE FG_LUT_CUSTOM_FILE FG_LUT_VALUE[100] --port 1\n");
    EXPECT_EQ(result.messages, "The table of port 0 is in " + mFile + "\nport 1: " + mFile +
                                   " is loaded, 4094 of 4096 entries changed\n");
    EXPECT_EQ(result.output, "LUT_TYPE_CUSTOM\n" + mFile + "\n200\n");
    EXPECT_EQ(fileContent(mFile).rfind("# Lut data file v1.1\n", 0), 0U);
    EXPECT_EQ(orbctl({"lut", "save", mFile, "--port", "both"}).status, 2);
}

TEST_F(LutCommands, AFailedLoadLeavesEverythingAsItWas) {
    const std::string former = mFolder.makeFile("former.lut", "[gray]\nnrOfElements=2;\n0,9;\n1,8;\n");
    const ProgramResult result =
        ran("lut load none.lut\nget -n FG_LUT_TYPE FG_LUT_CUSTOM_FILE FG_LUT_VALUE[0]\n"
            "lut load " +
            former +
            "\nlut load none.lut\nget -n FG_LUT_TYPE FG_LUT_CUSTOM_FILE "
            "FG_LUT_VALUE[0] FG_LUT_VALUE[2]\n");
    EXPECT_EQ(result.output, "LUT_TYPE_PROCESSING\n\n0\nLUT_TYPE_CUSTOM\n" + former + "\n9\n2\n");
    EXPECT_NE(result.messages.find("orbctl: none.lut cannot be loaded: the file does not exist (-2076)\n"),
              std::string::npos);
    EXPECT_EQ(orbctl({"lut", "load", "none.lut"}).status, 3);
    EXPECT_EQ(orbctl({"lut", "save", mFolder.path("missing/a.lut")}).status, 3);
}

TEST_F(LutCommands, PlotShowsBothPortsInTextSvgAndPng) {
    const std::string svg = mFolder.path("a.svg");
    const std::string png = mFolder.path("a.png");
    const ProgramResult result = orbctl({"--set", "1:FG_PROCESSING_GAMMA=2.5", "lut", "plot", "--svg", svg,
                                         "--png", png, "-w", "40", "--height", "8"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "The plot is in " + svg + "\nThe plot is in " + png + "\n");
    EXPECT_NE(result.output.find("⣀⣀⣀  port 0: offset 0, gain 1, gamma 1, invert off\n"
                                 "▄▄▄  port 1: offset 0, gain 1, gamma 2.5, invert off\n"),
              std::string::npos)
        << result.output;
    EXPECT_EQ(fileContent(svg).rfind("<svg ", 0), 0U);
    EXPECT_NE(fileContent(svg).find("gamma 2.5"), std::string::npos);
    EXPECT_EQ(fileContent(png).substr(1, 3), "PNG");
}

TEST_F(LutCommands, PlotHasColoursOnATerminal) {
    const ProgramResult result = console()
                                     .environment("TERM", "xterm")
                                     .runOnTerminal({"--set", "1:FG_PROCESSING_INVERT=1", "lut", "plot"});
    EXPECT_NE(result.output.find("\033[32m⣀\033[0m"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\033[33m▄▄▄\033[0m  port 1: offset 0, gain 1, gamma 1, invert on"),
              std::string::npos)
        << result.output;
}

TEST_F(LutCommands, PlotNamesAFileThatCannotBeWritten) {
    const std::string file = mFolder.path("missing/a.svg");
    const ProgramResult result = orbctl({"lut", "plot", "--svg", file});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: " + file + " cannot be written\n");
}

} // namespace orbctl::test
