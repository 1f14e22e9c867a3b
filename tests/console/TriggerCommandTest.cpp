#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

const std::string softwareMode = "set FG_AREATRIGGERMODE=ATM_SOFTWARE FG_TRIGGERQUEUE_MODE=FG_ON "
                                 "FG_TRIGGER_FRAMESPERSECOND=100 FG_TRIGGERSTATE=TS_ACTIVE\n";

/// The row of a diagram with this name, without the name.
std::string row(const std::string& diagram, const std::string& name) {
    const std::size_t begin = diagram.find("\n" + name + " ");
    if (begin == std::string::npos)
        return "no row " + name;
    const std::size_t line = begin + 1 + name.size();
    const std::string cells = diagram.substr(line, diagram.find('\n', line) - line);
    return cells.substr(cells.find_first_not_of(' '));
}

std::ptrdiff_t pulsesIn(const std::string& cells) { return std::count(cells.begin(), cells.end(), '|'); }

} // namespace

TEST(TriggerCommand, ShowsTheTriggerSystemOnOneScreen) {
    const ProgramResult result = orbctl({"trigger", "--set", "FG_TRIGGERSTATE=TS_ACTIVE"});
    EXPECT_EQ(result.status, 0) << result.messages;
    for (const char* const expected :
         {"Trigger system of port 0\n", "  Mode      ATM_GENERATOR\n", "  State     TS_ACTIVE\n",
          "  Rate      8 Hz, one frame in 125 ms\n", "Generator  pulse   delay (us)  width (us)  Output\n"})
        EXPECT_NE(result.output.find(expected), std::string::npos) << expected << "in\n" << result.output;
    EXPECT_LE(std::count(result.output.begin(), result.output.end(), '\n'), 24);
}

TEST(TriggerCommand, SendRefusesInTheWordsOfTheTrigger) {
    const ProgramResult result = orbctl({"trigger", "send", "1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages,
              "orbctl: FG_SENDSOFTWARETRIGGER: 1 was refused: the trigger mode is not Software (-2140)\n");
    const ProgramResult tooMany = orbctl({"trigger", "send", "2"});
    EXPECT_EQ(tooMany.messages, "orbctl: FG_SENDSOFTWARETRIGGER: 2 is outside 1 .. 1 pulses (-6000)\n");
}

TEST(TriggerCommand, SendFillsTheQueue) {
    const ProgramResult result =
        console().input(softwareMode + "trigger send 100\nget -n FG_SOFTWARETRIGGER_IS_BUSY\n").run({"run"});
    EXPECT_EQ(result.output, "IS_BUSY\n") << result.messages;
}

TEST(TriggerCommand, PlotShowsGeneratorPulsesAtTheirRate) {
    const ProgramResult result =
        orbctl({"--set", "FG_TRIGGERSTATE=TS_ACTIVE", "--set", "FG_TRIGGER_FRAMESPERSECOND=50", "trigger",
                "plot", "-t", "200ms", "-w", "120"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(result.output.rfind("port 0: ATM_GENERATOR, TS_ACTIVE, 50 Hz\n", 0), 0U);
    EXPECT_EQ(pulsesIn(row(result.output, "generator pulse")), 10) << result.output;
}

TEST(TriggerCommand, PlotShowsEverySoftwareTriggerAndTheQueueBehindIt) {
    const ProgramResult result =
        console()
            .input(softwareMode + "trigger plot -t 100ms -w 120 --at 10ms:FG_SENDSOFTWARETRIGGER=5\n")
            .run({"run"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(pulsesIn(row(result.output, "action command")), 5) << result.output;
    const std::string queue = row(result.output, "queue");
    EXPECT_EQ(queue.substr(0, 10), "__________");
    EXPECT_LT(queue.find('4'), queue.find('1')) << "the queue runs empty";
    EXPECT_NE(queue.find('1'), std::string::npos);
}

TEST(TriggerCommand, PlotDrivesInputPins) {
    const ProgramResult plotted =
        console()
            .input("set FG_TRIGGER_PULSEFORMGEN0_WIDTH=100\n"
                   "set FG_AREATRIGGERMODE=ATM_EXTERNAL FG_TRIGGERIN_SRC=3 FG_TRIGGER_FRAMESPERSECOND=1000\n"
                   "set FG_TRIGGERSTATE=TS_ACTIVE\ntrigger plot -t 100ms -w 120 --pulses 3:20ms:3\n")
            .run({"run"});
    EXPECT_EQ(plotted.status, 0) << plotted.messages;
    EXPECT_EQ(pulsesIn(row(plotted.output, "input 3")), 6) << plotted.output;
    EXPECT_EQ(pulsesIn(row(plotted.output, "generator pulse")), 3) << plotted.output;
}

TEST(TriggerCommand, PlotShowsWhatAStopDoesToTheOutputs) {
    const auto outputAfterStop = [](const std::string& state) {
        const ProgramResult result =
            console()
                .input("set FG_TRIGGER_FRAMESPERSECOND=10 FG_TRIGGER_PULSEFORMGEN0_WIDTH=50000 "
                       "FG_TRIGGEROUT_SELECT0=PULSEGEN0\n"
                       "trigger plot -t 100ms -w 137 --at 0:FG_TRIGGERSTATE=TS_ACTIVE --at "
                       "25ms:FG_TRIGGERSTATE=" +
                       state + "\n")
                .run({"run"});
        EXPECT_EQ(result.status, 0) << result.messages;
        return std::count(result.output.begin(), result.output.end(), '\n') > 5
                   ? row(result.output, "output 0")
                   : "";
    };
    const std::string sync = outputAfterStop("TS_SYNC_STOP");
    const std::string async = outputAfterStop("TS_ASYNC_STOP");
    const auto high = [](const std::string& cells) { return std::count(cells.begin(), cells.end(), '~'); };
    EXPECT_NEAR(static_cast<double>(high(sync)) / static_cast<double>(sync.size()), 0.5, 0.03) << sync;
    EXPECT_NEAR(static_cast<double>(high(async)) / static_cast<double>(async.size()), 0.25, 0.03) << async;
}

TEST(TriggerCommand, PlotWritesAnSvgFile) {
    const kavo::test::TemporaryFolder folder;
    const ProgramResult result = orbctl({"trigger", "plot", "-p", "both", "--svg", folder.path("plot.svg")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "The diagram is in " + folder.path("plot.svg") + "\n");
    const std::string svg = kavo::test::fileContent(folder.path("plot.svg"));
    EXPECT_NE(svg.find(">exposure, port 1</text>"), std::string::npos);
}

TEST(TriggerCommand, PlotRefusesWhatItCannotUnderstand) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"-t", "0"},
                                               {"-t", "half"},
                                               {"--at", "FG_WIDTH=16"},
                                               {"--at", "1ms:FG_WIDTH"},
                                               {"--pulses", "8:1ms"},
                                               {"--pulses", "0"},
                                               {"--pulses", "0:16ns"},
                                               {"--pulses", "0:1ms:x"}}) {
        std::vector<std::string> all{"trigger", "plot"};
        all.insert(all.end(), words.begin(), words.end());
        EXPECT_EQ(orbctl(all).status, 2) << words[0] << " " << words[1];
    }
}

TEST(WatchCommand, RepeatsACommandOnOneBoard) {
    const ProgramResult result =
        orbctl({"watch", "-n", "3", "-i", "0.01", "get", "-n", "FG_WIDTH", "--port", "1"});
    EXPECT_EQ(result.output, "1024\n\n1024\n\n1024\n") << result.messages;
    EXPECT_EQ(result.status, 0);
}

TEST(WatchCommand, TakesOptionsBehindTheWatchedCommandForThatCommand) {
    EXPECT_EQ(orbctl({"watch", "-n", "1", "status", "-p", "0", "--json"}).output,
              orbctl({"status", "-p", "0", "--json"}).output);
}

TEST(WatchCommand, EndsCleanlyAtCtrlC) {
    EXPECT_EQ(console().interruptAfter(800).run({"watch", "-i", "10", "get", "FG_WIDTH"}).status, 0);
}

TEST(WatchCommand, EndsWithTheStatusOfAFailure) {
    EXPECT_EQ(orbctl({"watch", "get", "FG_WITDH"}).status, 3);
    EXPECT_EQ(orbctl({"watch"}).status, 2);
    EXPECT_EQ(orbctl({"watch", "watch", "list"}).status, 2);
}

} // namespace orbctl::test
