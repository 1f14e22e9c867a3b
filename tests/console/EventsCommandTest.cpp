#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>

namespace orbctl::test {

namespace {

/// Pulses on input 3 without end, an edge each millisecond.
Program withPulses(const kavo::test::TemporaryFolder& folder) {
    return console().environment("ORBELLINE_BOARD_SCENE",
                                 folder.makeFile("scene", "input 3 pulses 1000 1000 1000 0\n"));
}

} // namespace

TEST(EventsCommand, ListsEveryEventWithAMaskOfItsOwn) {
    const std::string json = orbctl({"events", "--json"}).output;
    EXPECT_EQ(evaluated(json, "len(data), len({e['name'] for e in data}), len({e['mask'] for e in data}), "
                              "all(bin(e['mask']).count('1') == 1 for e in data)"),
              "32 32 32 True\n");
}

TEST(EventsCommand, ListsOnlyWhatMatches) {
    const ProgramResult result = orbctl({"events", "FG_OVERFLOW"});
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 2) << result.output;
    EXPECT_EQ(result.output.rfind("FG_OVERFLOW_CAM0  0x", 0), 0U) << result.output;
    const ProgramResult none = orbctl({"events", "nothing"});
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.messages, "orbctl: there is no event with nothing in its name\n");
}

TEST(EventsCommand, WatchShowsEventsWithTheTimeOfTheBoard) {
    const kavo::test::TemporaryFolder folder;
    const ProgramResult result =
        withPulses(folder).run({"events", "TRIGGER_INPUT", "--watch", "-n", "4", "-t", "30"});
    EXPECT_EQ(result.status, 0) << result.messages;
    // An edge comes on the whole millisecond; the debounce filter takes 21 ticks of 48 ns.
    const std::string time = "[0-9]+\\.[0-9]{3}001008 s  ";
    const std::string rising = time + "FG_TRIGGER_INPUT3_RISING\n";
    const std::string falling = time + "FG_TRIGGER_INPUT3_FALLING\n";
    const std::regex eitherFirst("(" + rising + falling + rising + falling + ")|(" + falling + rising +
                                 falling + rising + ")");
    EXPECT_TRUE(std::regex_match(result.output, eitherFirst)) << result.output;
}

TEST(EventsCommand, WatchWritesAJsonObjectOnEachLine) {
    const kavo::test::TemporaryFolder folder;
    const ProgramResult result =
        withPulses(folder).run({"events", "INPUT3_RISING", "--watch", "--json", "-n", "1", "-t", "30"});
    EXPECT_EQ(
        evaluated(result.output,
                  "data['name'], data['tick'] % 125000, abs(data['seconds'] - data['tick'] * 16e-9) < 1e-9"),
        "FG_TRIGGER_INPUT3_RISING 62563 True\n")
        << result.output << result.messages;
}

TEST(EventsCommand, WatchEndsAfterItsTimeAndAtCtrlC) {
    const ProgramResult timed = orbctl({"events", "MISSING", "--watch", "-t", "0.05"});
    EXPECT_EQ(timed.status, 0);
    EXPECT_EQ(timed.output, "");
    const ProgramResult stopped =
        console().interruptAfter(1500).run({"--set", "FG_TRIGGERSTATE=TS_ACTIVE", "events", "--watch"});
    EXPECT_EQ(stopped.status, 0);
    EXPECT_NE(stopped.output.find("FG_START_OF_FRAME_CAM_PORT_0\n"), std::string::npos);
}

TEST(EventsCommand, CountAndTimeAreForWatching) {
    const ProgramResult result = orbctl({"events", "-n", "3"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.messages, "orbctl: --count and --time end a --watch\n");
}

} // namespace orbctl::test
