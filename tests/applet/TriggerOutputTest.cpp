// The four trigger outputs, the camera action command, and what watches the outputs.

#include "tests/applet/TriggerChange.h"
#include "tests/applet/TriggerSettings.h"

namespace {

/// What a selected signal means to an output: its source and whether it is inverted.
struct Signal {
    unsigned value;
    unsigned source;
    unsigned inverted;
};

const std::vector<Signal> signals = {
    {0, 0, 0},  {1, 1, 0},  {2, 2, 0}, {3, 3, 0}, // pulse form generators
    {4, 5, 0},  {5, 5, 1},                        // GND, VCC
    {6, 0, 1},  {7, 1, 1},  {8, 2, 1}, {9, 3, 1}, // inverted pulse form generators
    {10, 4, 0}, {11, 4, 1},                       // input bypass, inverted input bypass
};

/// A parameter that selects a signal, with its two registers and its default.
struct Output {
    int id;
    const char* select;
    const char* polarity;
    unsigned initial;
};

const std::vector<Output> outputs = {
    {FG_CAMERA_ACTION_COMMAND_SOURCE, "TriggerCamera_SelectTriggerCamera_Select_Select",
     "TriggerCamera_SelectTriggerCamera_Polarity_Invert", 0},
    {FG_TRIGGEROUT_SELECT0, "TriggerOutput_Select0_Select_Select", "TriggerOutput_Select0_Polarity_Invert",
     6},
    {FG_TRIGGEROUT_SELECT1, "TriggerOutput_Select1_Select_Select", "TriggerOutput_Select1_Polarity_Invert",
     7},
    {FG_TRIGGEROUT_SELECT2, "TriggerOutput_Select2_Select_Select", "TriggerOutput_Select2_Polarity_Invert",
     5},
    {FG_TRIGGEROUT_SELECT3, "TriggerOutput_Select3_Select_Select", "TriggerOutput_Select3_Polarity_Invert",
     5},
};

/// Parameters that choose one of the four pulse form generators.
const std::vector<std::pair<int, const char*>> watchers = {
    {FG_TRIGGEROUT_STATS_SOURCE, "OutputStatistics_Select_Select"},
    {FG_TRIGGER_OUTPUT_EVENT_SELECT, "OutputEvent_Select_Select"}};

class TriggerOutputTest : public OnBothPorts {
  protected:
    static DesignAccesses accessesOf(const Output& output, const Signal& signal) {
        return {wrote(port(), output.select, signal.source), wrote(port(), output.polarity, signal.inverted)};
    }
};
FOR_BOTH_PORTS(TriggerOutputTest);

TEST_P(TriggerOutputTest, StartsWithItsDefaults) {
    for (const Output& output : outputs) {
        EXPECT_EQ(applet.get(output.id, port()), output.initial);
    }
    for (const auto& [id, name] : watchers) {
        EXPECT_EQ(applet.get(id, port()), 0U);
    }
}

TEST_P(TriggerOutputTest, EverySignalIsASourceAndAPolarity) {
    for (const unsigned state : {syncStop, active}) {
        bringTo(applet, port(), generatorMode, state);
        for (const Output& output : outputs) {
            for (const Signal& signal : signals) {
                expectAccepted(applet, port(), output.id, signal.value, accessesOf(output, signal));
                EXPECT_EQ(applet.get(output.id, port()), signal.value);
            }
        }
    }
}

TEST_P(TriggerOutputTest, RefusesAnUnknownSignal) {
    for (const Output& output : outputs) {
        for (const unsigned value : {12U, 13U, 0x80000000U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), output.id, value, -6000);
        }
    }
}

TEST_P(TriggerOutputTest, IsOnlyRememberedInAnAsynchronousStop) {
    bringTo(applet, port(), generatorMode, asyncStop);
    for (const Output& output : outputs) {
        expectAccepted(applet, port(), output.id, 11U, {});
        EXPECT_EQ(applet.get(output.id, port()), 11U);
        expectRefused(applet, port(), output.id, 12U, -6000);
    }
    ASSERT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), 0);
    for (const Output& output : outputs) {
        EXPECT_EQ(registerValue(applet, port(), output.select), 4U);
        EXPECT_EQ(registerValue(applet, port(), output.polarity), 1U);
    }
}

TEST_P(TriggerOutputTest, AnAsynchronousStopOfTheOtherPortDoesNotMatter) {
    bringTo(applet, otherPort(), generatorMode, asyncStop);
    for (const Output& output : outputs) {
        expectAccepted(applet, port(), output.id, 3U, accessesOf(output, signals[3]));
    }
}

TEST_P(TriggerOutputTest, AStopLeavesThePolarityOfAnOutput) {
    ASSERT_EQ(applet.set(FG_TRIGGEROUT_SELECT0, 6U, port()), 0);
    ASSERT_EQ(applet.set(FG_TRIGGEROUT_SELECT1, 1U, port()), 0);
    ASSERT_EQ(applet.set(FG_TRIGGERSTATE, asyncStop, port()), 0);
    for (const auto& [select, polarity, inverted] : {std::tuple{outputs[1].select, outputs[1].polarity, 1U},
                                                     {outputs[2].select, outputs[2].polarity, 0U}}) {
        EXPECT_EQ(registerValue(applet, port(), select), 5U);
        EXPECT_EQ(registerValue(applet, port(), polarity), inverted);
    }
}

TEST_P(TriggerOutputTest, UndoesAnyFailure) {
    for (const Output& output : outputs) {
        expectEachFailureUndone(applet, port(), output.id, 9U, accessesOf(output, signals[9]),
                                [&] { ASSERT_EQ(applet.set(output.id, 4U, port()), 0); });
    }
    for (const auto& [id, name] : watchers) {
        const int watcher = id;
        expectEachFailureUndone(applet, port(), watcher, 3U, {wrote(port(), name, 3)},
                                [&] { ASSERT_EQ(applet.set(watcher, 1U, port()), 0); });
    }
}

TEST_P(TriggerOutputTest, AWatcherTakesAnyOfTheFourGenerators) {
    for (const auto& [id, name] : watchers) {
        for (const unsigned value : {3U, 2U, 1U, 0U}) {
            expectAccepted(applet, port(), id, value, {wrote(port(), name, value)});
            EXPECT_EQ(applet.get(id, port()), value);
        }
        for (const unsigned value : {4U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), id, value, -6000);
        }
    }
}

TEST_P(TriggerOutputTest, AWatcherIsWrittenInAnAsynchronousStopToo) {
    bringTo(applet, port(), generatorMode, asyncStop);
    for (const auto& [id, name] : watchers) {
        expectAccepted(applet, port(), id, 2U, {wrote(port(), name, 2)});
    }
}

} // namespace
