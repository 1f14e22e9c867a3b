#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

ProgramResult ran(const std::string& commands) { return console().input(commands).run({"run"}); }

} // namespace

TEST(DefaultsCommand, ShowsEverySettingOfBothPorts) {
    const ProgramResult result = orbctl({"--set", "1:FG_WIDTH=640", "defaults", "--json"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(evaluated(result.output,
                        "len(data), [(p['port'], p['default']['value'], p['now']['value']) for p "
                        "in data if p['name']=='FG_WIDTH']"),
              "108 [(0, 1024, 1024), (1, 1024, 640)]\n")
        << "53 settings of a configuration and the lookup table, for each port";
}

TEST(DefaultsCommand, ShowsOnlyWhatMoved) {
    const ProgramResult result =
        orbctl({"--set", "1:FG_WIDTH=640", "--set", "0:FG_PROCESSING_INVERT=1", "defaults", "--changed"});
    EXPECT_EQ(result.output, "Port  Parameter             Default     Now\n"
                             "0     FG_PROCESSING_INVERT  FG_OFF (0)  FG_ON (1)\n"
                             "0     FG_LUT_VALUE          ...         4096 elements differ\n"
                             "1     FG_WIDTH              1024        640\n")
        << result.messages;
    const ProgramResult none = orbctl({"defaults", "--changed"});
    EXPECT_EQ(none.output, "");
    EXPECT_EQ(none.messages, "Every parameter has its default\n");
}

TEST(DefaultsCommand, AppliesDefaultsWhateverStandsInTheirWay) {
    const ProgramResult result =
        ran("set FG_WIDTH=64 --port both\n"
            "set FG_XOFFSET=4032 FG_TRIGGER_FRAMESPERSECOND=200\n"
            "set FG_TRIGGERIN_DOWNSCALE=9 FG_TRIGGERIN_DOWNSCALE_PHASE=8\n"
            "set FG_AREATRIGGERMODE=ATM_EXTERNAL FG_TRIGGERSTATE=TS_ACTIVE --port 1\n"
            "lut set gamma=0.5 --port 1\nlut set type=file --port 1\n"
            "defaults --apply\n"
            "defaults --changed\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "Every parameter has its default\nEvery parameter has its default\n");
    EXPECT_NE(result.output.find("port 0: FG_WIDTH = 1024 (was 64)\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("port 0: FG_XOFFSET = 0 (was 4032)\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("port 1: FG_LUT_VALUE: "), std::string::npos) << result.output;
}

TEST(DefaultsCommand, AppliesToOnePortOnly) {
    const ProgramResult result =
        ran("set FG_WIDTH=64 --port both\ndefaults --apply --port 0\nget -n FG_WIDTH --port both\n");
    EXPECT_EQ(result.output, "port 0: FG_WIDTH = 1024 (was 64)\n1024\n64\n") << result.messages;
}

TEST(DefaultsCommand, RestoresATableThatWasWrittenByHand) {
    const ProgramResult result =
        ran("lut set 5..7=0\ndefaults --apply\nget -n FG_LUT_VALUE[6]\ndefaults --changed\n");
    EXPECT_EQ(result.output, "port 0: FG_LUT_VALUE: 3 of 4096 elements changed\n6\n") << result.messages;
}

TEST(DefaultsCommand, SendsNoTriggerAndClearsNothing) {
    const ProgramResult result = orbctl({"defaults", "--json"});
    for (const char* const action :
         {"FG_SENDSOFTWARETRIGGER", "FG_LUT_SAVE_FILE", "FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR"})
        EXPECT_EQ(result.output.find(action), std::string::npos) << action;
}

TEST(DefaultsCommand, IsNotForASlave) {
    const ProgramResult result = orbctl({"--slave", "defaults"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "orbctl: a slave shares the board as it is: its start values are not known\n");
}

} // namespace orbctl::test
