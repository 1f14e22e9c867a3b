#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

std::string lastLine(const std::string& text) {
    const std::size_t end = text.find_last_not_of('\n');
    const std::size_t start = text.find_last_of('\n', end);
    return text.substr(start + 1, end - start);
}

unsigned long countOf(const std::string& text, const std::string& part) {
    unsigned long count = 0;
    for (std::size_t place = 0; (place = text.find(part, place)) != std::string::npos; ++place)
        ++count;
    return count;
}

Program overApplet(const char* fault) {
    return console()
        .environment("ORBELLINE_APPLET", ORBELLINE_WRONG_APPLET_FILE)
        .environment("ORBELLINE_RIGHT_APPLET", ORBELLINE_APPLET_FILE)
        .environment("ORBELLINE_APPLET_FAULT", fault);
}

} // namespace

TEST(CheckCommand, MakesThousandsOfChecksThatAllHold) {
    const ProgramResult result = orbctl({"check"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    const unsigned long made = std::stoul(lastLine(result.output));
    EXPECT_GT(made, 2000U);
    EXPECT_EQ(lastLine(result.output), std::to_string(made) + " checks, all hold");
    EXPECT_EQ(countOf(result.output, "ok   "), made);
}

TEST(CheckCommand, TellsEachCheckOnALine) {
    const std::string output = orbctl({"check", "FG_WIDTH", "--port", "1"}).output;
    EXPECT_NE(output.find("ok   port 1: FG_WIDTH accepts its maximum: 4096\n"), std::string::npos);
    EXPECT_NE(output.find("ok   port 1: FG_WIDTH refuses what is off its step: 17\n"), std::string::npos);
    EXPECT_EQ(output.find("ok   port 0: FG_WIDTH accepts"), std::string::npos);
    EXPECT_EQ(output.find("FG_FORMAT accepts"), std::string::npos);
}

TEST(CheckCommand, TriesWhatAnotherParameterMovesWithItsNewLimits) {
    const std::string output = orbctl({"check", "FG_WIDTH", "FG_LUT_TYPE", "FG_TRIGGERQUEUE_MODE"}).output;
    EXPECT_NE(output.find("FG_XOFFSET accepts its maximum: 2048 with FG_WIDTH = 2048\n"), std::string::npos);
    EXPECT_NE(output.find("FG_XOFFSET refuses what lies above its maximum: 2049 with FG_WIDTH = 2048\n"),
              std::string::npos);
    EXPECT_NE(output.find("FG_PROCESSING_GAIN remembers what is written while it is read-only"),
              std::string::npos);
    EXPECT_NE(output.find("FG_SENDSOFTWARETRIGGER accepts its maximum: 2040 with FG_TRIGGERQUEUE_MODE = "),
              std::string::npos);
}

TEST(CheckCommand, BriefTellsOnlyTheTotalWhereAllHolds) {
    const ProgramResult result = orbctl({"check", "--brief", "FG_HEIGHT", "FG_TRIGGERIN_*"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(lastLine(result.output) + "\n", result.output);
}

TEST(CheckCommand, JsonHasEachCheckAndTheTotal) {
    const ProgramResult result = orbctl({"check", "FG_FORMAT", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(evaluated(result.output, "len(data['checks'])==data['made'],data['failed'],data['skipped']"),
              "True 0 0\n");
    EXPECT_EQ(evaluated(result.output, "[c['detail'] for c in data['checks'] if c['port']==0 and "
                                       "c['check']=='accepts its entry']"),
              "['FG_GRAY (3)', 'FG_GRAY16 (1)']\n");
    const ProgramResult brief = orbctl({"check", "FG_FORMAT", "--json", "--brief"});
    EXPECT_EQ(evaluated(brief.output, "data['checks'],data['made']>0"), "[] True\n");
}

TEST(CheckCommand, ChecksFunctionsByGroup) {
    const ProgramResult result = orbctl({"check", "events"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("ok   FG_TRIGGER_INPUT3_RISING has its mask by its name\n"),
              std::string::npos);
    EXPECT_EQ(result.output.find("accepts"), std::string::npos);
}

TEST(CheckCommand, UnknownNameIsNotFound) {
    const ProgramResult result = orbctl({"check", "FG_WITDH"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: there is no parameter FG_WITDH; did you mean FG_WIDTH?\n");
    EXPECT_EQ(orbctl({"check", "FG_NO*"}).status, 3);
}

TEST(CheckCommand, FailureIsToldWithWhatWasExpected) {
    const ProgramResult result =
        overApplet("acceptsEverything").run({"check", "--brief", "--port", "0", "FG_WIDTH"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("FAIL port 0: FG_WIDTH refuses what is off its step: 17: expected the value "
                                 "is off its step (-7080), got no error (0)\n"),
              std::string::npos);
    EXPECT_EQ(result.output.find("ok "), std::string::npos);
    EXPECT_NE(lastLine(result.output).find(" failed"), std::string::npos);
}

TEST(CheckCommand, LeavesTheBoardAsItWas) {
    const std::string before = "set FG_WIDTH=640 FG_XOFFSET=512 FG_FORMAT=FG_GRAY16 FG_LUT_VALUE[9]=3\n"
                               "set FG_TRIGGER_FRAMESPERSECOND=100.123456789012 FG_TRIGGERQUEUE_MODE=FG_ON\n"
                               "set FG_AREATRIGGERMODE=ATM_EXTERNAL --port 1\n";
    const std::string show = "get FG_WIDTH FG_XOFFSET FG_FORMAT FG_LUT_VALUE[9] FG_LUT_VALUE[10] "
                             "FG_TRIGGER_FRAMESPERSECOND FG_AREATRIGGERMODE FG_TRIGGERQUEUE_MODE "
                             "FG_SENDSOFTWARETRIGGER --port both\n";
    const ProgramResult checked = console().input(before + "check --brief\n" + show).run({"run"});
    const ProgramResult untouched = console().input(before + show).run({"run"});
    EXPECT_EQ(checked.status, 0) << checked.output << checked.messages;
    const std::size_t total = checked.output.find('\n') + 1;
    EXPECT_EQ(checked.output.substr(total), untouched.output);
    EXPECT_NE(untouched.output.find("100.123456789012"), std::string::npos);
}

TEST(CheckCommand, FileThatIsNamedIsLeftAlone) {
    const kavo::test::TemporaryFolder folder;
    const std::string file = folder.path("mine.lut");
    const std::string input = "set FG_LUT_SAVE_FILE=" + file + "\nset FG_LUT_VALUE[9]=3\n" +
                              "check FG_LUT_SAVE_FILE FG_LUT_TYPE --brief\nget FG_LUT_SAVE_FILE\n";
    const ProgramResult result = console().input(input).run({"run"});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find("skip port 0: FG_LUT_SAVE_FILE takes a file name: "), std::string::npos);
    EXPECT_NE(result.output.find(file), std::string::npos);
    EXPECT_NE(kavo::test::fileContent(file).find("\n9,9;\n"), std::string::npos);
}

TEST(CheckCommand, ValueThatAnotherParameterStandsAgainstIsSkipped) {
    const ProgramResult result =
        console().input("set FG_LUT_CUSTOM_FILE=absent.lut\ncheck FG_LUT_TYPE --brief\n").run({"run"});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(
        result.output.find("skip port 0: FG_LUT_TYPE accepts its entry: another parameter stands against "
                           "LUT_TYPE_CUSTOM (0) (-2076)\n"),
        std::string::npos);
    EXPECT_NE(lastLine(result.output).find(" checks, all hold, 1 skipped"), std::string::npos);
}

TEST(CheckCommand, UnknownAppletIsCheckedByItsDescriptionsAlone) {
    const ProgramResult result =
        overApplet("bearsAnotherName").run({"check", "--brief", "--port", "0", "FG_*"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("skip port 0: FG_TRIGGER_FRAMESPERSECOND accepts its maximum: another "
                                 "parameter stands against 6250000 (-2079)\n"),
              std::string::npos);
    EXPECT_NE(result.output.find("FAIL port 0: FG_MTU_SIZE accepts the value above its minimum: 48: "),
              std::string::npos);
    EXPECT_EQ(result.output.find("FG_WIDTH"), std::string::npos);
}

TEST(CheckCommand, CtrlCEndsItEarlyAndRestores) {
    const ProgramResult result = console().interruptAfter(300).run({"check"});
    EXPECT_EQ(result.status, 130);
    EXPECT_NE(lastLine(result.output).find("; stopped before the end"), std::string::npos);
    EXPECT_NE(result.output.find("FG_WIDTH has at the end what it had at the beginning\n"),
              std::string::npos);
}

} // namespace orbctl::test
