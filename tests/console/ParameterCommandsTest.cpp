#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>
#include <regex>

namespace orbctl::test {

namespace {

using Words = std::vector<std::string>;

/// A command that ends with a message and prints no value.
struct Refusal {
    const char* name;
    Words words;
    int status;
    const char* message;
};

void PrintTo(const Refusal& refusal, std::ostream* stream) { *stream << refusal.name; }

class RefusedCommand : public ::testing::TestWithParam<Refusal> {};

} // namespace

TEST_P(RefusedCommand, SaysWhatWasWrong) {
    const ProgramResult result = orbctl(GetParam().words);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, std::string("orbctl: ") + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Console, RefusedCommand,
    ::testing::Values(
        Refusal{"OffStep", {"set", "FG_WIDTH=20"}, 1, "FG_WIDTH: 20 is off its step of 16 (-7080)"},
        Refusal{"OutOfRange", {"set", "FG_WIDTH=5000"}, 1, "FG_WIDTH: 5000 is outside 16 .. 4096 (-6000)"},
        Refusal{"MovedLimit",
                {"set", "FG_WIDTH=1024", "FG_XOFFSET=16", "FG_WIDTH=4096"},
                1,
                "FG_WIDTH: 4096 is outside 16 .. 4080 (-6000)"},
        Refusal{"HiddenStep",
                {"set", "FG_MTU_SIZE=1496"},
                1,
                "FG_MTU_SIZE: 1496 is off its step, which is not the one that its description names (-7080)"},
        Refusal{"ReadOnly", {"set", "FG_PIXELDEPTH=8"}, 1, "FG_PIXELDEPTH cannot be written (-12)"},
        Refusal{"ReadOnlyWithoutDescription",
                {"set", "FG_NR_OF_DMAS=8"},
                1,
                "FG_NR_OF_DMAS cannot be written (-12)"},
        Refusal{"NoEntry",
                {"set", "FG_FORMAT=2"},
                1,
                "FG_FORMAT: 2 is none of FG_GRAY (3), FG_GRAY16 (1) (-6000)"},
        Refusal{
            "OnlyOnTheOtherPort",
            {"set", "FG_AREATRIGGERMODE=3"},
            1,
            "FG_AREATRIGGERMODE: 3 is none of ATM_GENERATOR (1), ATM_EXTERNAL (2), ATM_SOFTWARE (4) (-6000)"},
        Refusal{"BothPortsNamed",
                {"set", "--port", "both", "FG_WIDTH=20"},
                1,
                "port 0: FG_WIDTH: 20 is off its step of 16 (-7080)"},
        Refusal{"UnknownSymbol",
                {"set", "FG_FORMAT=FG_GREY"},
                2,
                "FG_FORMAT: \"FG_GREY\" is no entry of the enumeration (FG_GRAY, FG_GRAY16)"},
        Refusal{"NoNumber",
                {"set", "FG_WIDTH=wide"},
                2,
                "FG_WIDTH: \"wide\" is no unsigned 32-bit number (16 .. 4096, step 16)"},
        Refusal{"NoSetting", {"set", "FG_WIDTH"}, 2, "\"FG_WIDTH\" is no setting; write NAME=VALUE"},
        Refusal{"MisspelledSet",
                {"set", "FG_WITDH=16"},
                3,
                "there is no parameter FG_WITDH; did you mean FG_WIDTH?"},
        Refusal{"MisspelledGet", {"get", "width"}, 3, "there is no parameter width; did you mean FG_WIDTH?"},
        Refusal{"MisspelledDescribe",
                {"describe", "FG_FROMAT"},
                3,
                "there is no parameter FG_FROMAT; did you mean FG_FORMAT?"},
        Refusal{"NothingClose", {"get", "QQQQQQ"}, 3, "there is no parameter QQQQQQ"},
        Refusal{"UnknownId", {"get", "99"}, 3, "there is no parameter with the id 99"},
        Refusal{"HugeId", {"get", "99999999999"}, 3, "there is no parameter with the id 99999999999"},
        Refusal{"UnknownCategory",
                {"list", "-c", "Lokup Table"},
                3,
                "there is no category Lokup Table; did you mean Lookup Table?"},
        Refusal{"FieldWithoutElement",
                {"get", "FG_LUT_VALUE"},
                2,
                "FG_LUT_VALUE is a field; name one of its elements, such as FG_LUT_VALUE[0]"},
        Refusal{"ElementTooLarge",
                {"get", "FG_LUT_VALUE[4096]"},
                2,
                "FG_LUT_VALUE has the elements 0 .. 4095, not 4096"},
        Refusal{"ElementOfNoField", {"get", "FG_WIDTH[0]"}, 2, "FG_WIDTH has no elements"},
        Refusal{"BadGlobalSetting",
                {"--set", "FG_WIDTH=20", "get", "FG_WIDTH"},
                1,
                "port 0: FG_WIDTH: 20 is off its step of 16 (-7080)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ParameterCommands, GetPrintsNameAndValue) {
    const ProgramResult result = orbctl({"get", "FG_WIDTH", "FG_FORMAT", "FG_QEL_FILE"});
    EXPECT_EQ(result.output, "FG_WIDTH = 1024\nFG_FORMAT = FG_GRAY (3)\nFG_QEL_FILE = Orbelline.qel\n");
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.status, 0);
}

TEST(ParameterCommands, GetTakesIdsPortsAndPlainValues) {
    EXPECT_EQ(orbctl({"get", "100"}).output, "FG_WIDTH = 1024\n");
    EXPECT_EQ(orbctl({"get", "-n", "FG_FORMAT", "FG_WIDTH"}).output, "FG_GRAY\n1024\n");
    EXPECT_EQ(orbctl({"get", "--port", "both", "FG_WIDTH"}).output,
              "port 0: FG_WIDTH = 1024\nport 1: FG_WIDTH = 1024\n");
}

TEST(ParameterCommands, GetShowsTheUnit) {
    EXPECT_EQ(orbctl({"get", "FG_MTU_SIZE"}).output, "FG_MTU_SIZE = 7204 byte\n");
}

TEST(ParameterCommands, SetIsSilentAndReadsBackInTheSameSession) {
    const ProgramResult result = console()
                                     .input("set FG_WIDTH 640 --port 1\nset 200=0x100 'FG_FORMAT=Gray "
                                            "16bit'\nget FG_WIDTH FG_HEIGHT FG_FORMAT -n\n"
                                            "get FG_WIDTH -n --port 1\n")
                                     .run({"run"});
    EXPECT_EQ(result.output, "1024\n256\nFG_GRAY16\n640\n");
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.status, 0);
}

TEST(ParameterCommands, SetWritesNothingWhereOneNameIsWrong) {
    const ProgramResult result =
        console().input("set FG_WIDTH=640 FG_NONSENSE=1\nget -n FG_WIDTH\n").run({"run", "--keep-going"});
    EXPECT_EQ(result.output, "1024\n");
    EXPECT_EQ(result.status, 3);
}

TEST(ParameterCommands, GlobalSettingsReachBothPortsOrOne) {
    const ProgramResult result = orbctl({"--set", "FG_HEIGHT=256", "--set", "1:FG_WIDTH=512", "get", "-n",
                                         "FG_WIDTH", "FG_HEIGHT", "--port", "both"});
    EXPECT_EQ(result.output, "1024\n256\n512\n256\n") << result.messages;
}

TEST(ParameterCommands, AFieldIsReadAndWrittenByElement) {
    const ProgramResult result =
        console().input("set FG_LUT_VALUE[5]=100\nget FG_LUT_VALUE[5] FG_LUT_VALUE[6]\n").run({"run"});
    EXPECT_EQ(result.output, "FG_LUT_VALUE[5] = 100\nFG_LUT_VALUE[6] = 6\n") << result.messages;
}

TEST(ParameterCommands, NegativeValuesNeedNoQuoting) {
    const ProgramResult result =
        console().input("set FG_PROCESSING_OFFSET -0.5\nget -n FG_PROCESSING_OFFSET\n").run({"run"});
    EXPECT_EQ(result.output, "-0.5\n") << result.messages;
}

TEST(ParameterCommands, DescribeTellsEverything) {
    const ProgramResult result = orbctl({"describe", "FG_MTU_SIZE", "FG_SWAP_CHANNELS"});
    EXPECT_EQ(result.status, 0);
    for (const char* const expected :
         {"FG_MTU_SIZE\n  Size of the MTU configured for the link. Value - 4 has to be a multiple of 8.\n",
          "  Id            200351\n", "  Display name  MTU size\n", "  Category      Camera\n",
          "  Access        read, write\n", "  Unit          byte\n", "  Range         44 .. 9036, step 4\n",
          "    FG_YES  1  Yes\n    FG_NO   0  No\n"})
        EXPECT_NE(result.output.find(expected), std::string::npos) << expected << "in\n" << result.output;
}

TEST(ParameterCommands, DescribeKnowsWhatIsNotDescribed) {
    const ProgramResult result = orbctl({"describe", "FG_NR_OF_DMAS"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("Access    not told"), std::string::npos) << result.output;
}

TEST(ParameterCommands, ListHasEveryParameterOnce) {
    const ProgramResult result = orbctl({"list"});
    EXPECT_EQ(result.status, 0);
    const std::regex row("\n  FG_[A-Z0-9_]+");
    const std::sregex_iterator rows(result.output.begin(), result.output.end(), row);
    EXPECT_EQ(std::distance(rows, std::sregex_iterator()), 93);
    EXPECT_EQ(result.output.rfind("Camera\n", 0), 0U) << "categories stand in their own order";
    EXPECT_EQ(result.output.find('\033'), std::string::npos) << "plain text for a pipe";
}

TEST(ParameterCommands, ListShowsOneCategoryWhateverItsCase) {
    const ProgramResult result = orbctl({"list", "--category", "roi"});
    EXPECT_EQ(result.output, "ROI\n"
                             "  FG_WIDTH    1024  rw-  16 .. 4096, step 16\n"
                             "  FG_HEIGHT   1024  rw-  2 .. 4096\n"
                             "  FG_XOFFSET  0     rw-  0 .. 3072, step 16\n"
                             "  FG_YOFFSET  0     rw-  0 .. 3072\n");
}

TEST(ParameterCommands, ListShowsBothPorts) {
    const ProgramResult result = orbctl({"list", "-c", "ROI", "--port", "both", "--set", "1:FG_WIDTH=512"});
    EXPECT_NE(result.output.find("Port 0: ROI\n  FG_WIDTH    1024"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\nPort 1: ROI\n  FG_WIDTH    512"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("FG_XOFFSET  0     rw-  0 .. 3584"), std::string::npos) << result.output;
}

TEST(ParameterCommands, ColourIsForTerminalsOnly) {
    EXPECT_NE(
        console().environment("TERM", "xterm").runOnTerminal({"list", "-c", "ROI"}).output.find("\033[1mROI"),
        std::string::npos);
    EXPECT_EQ(console().environment("TERM", "dumb").runOnTerminal({"list", "-c", "ROI"}).output.find('\033'),
              std::string::npos);
    EXPECT_EQ(console()
                  .environment("TERM", "xterm")
                  .environment("NO_COLOR", "1")
                  .runOnTerminal({"list", "-c", "ROI"})
                  .output.find('\033'),
              std::string::npos);
}

TEST(ParameterCommands, RunStopsAtTheFirstFailureAndNamesTheLine) {
    const ProgramResult result =
        console().input("get -n FG_WIDTH\n\nset FG_WIDTH=20 # no\nget -n FG_HEIGHT\n").run({"run"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "1024\n");
    EXPECT_EQ(result.messages, "orbctl: FG_WIDTH: 20 is off its step of 16 (-7080)\n"
                               "standard input, line 3: set FG_WIDTH=20 # no\n");
}

TEST(ParameterCommands, RunGoesOnWhereAsked) {
    const ProgramResult result =
        console().input("set FG_WIDTH=20\nget -n FG_HEIGHT\n").run({"run", "--keep-going"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "1024\n");
}

TEST(ParameterCommands, RunRefusesToRunItself) {
    EXPECT_EQ(console().input("run\n").run({"run"}).status, 2);
    EXPECT_EQ(orbctl({"run", "/nowhere"}).status, 3);
}

} // namespace orbctl::test
