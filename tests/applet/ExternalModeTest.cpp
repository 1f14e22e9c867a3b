// The external trigger as the applet drives it, tick by tick from the inputs to the outputs of the board.

#include "tests/applet/TriggerOnBoard.h"

#include <cmath>

namespace {

constexpr unsigned input = 3;
constexpr unsigned queueOff = 0;
constexpr unsigned queueOn = 1;
constexpr unsigned inputBypass = 10;
constexpr unsigned notInputBypass = 11;

class ExternalModeTest : public TriggerOnBoard {
  protected:
    ExternalModeTest() {
        set(FG_TRIGGERIN_SRC, input);
        set(FG_AREATRIGGERMODE, externalMode);
        set(FG_TRIGGERQUEUE_MODE, queueOn);
    }
    /// Ticks from now on, an easy distance apart.
    Ticks fromNow(std::size_t count) { return every(2 * triggerPeriod, now() + 1000, count); }
};
FOR_BOTH_PORTS(ExternalModeTest);

TEST_P(ExternalModeTest, EveryRiseOfTheInputGivesOnePulse) {
    set(FG_TRIGGERSTATE, active);
    const Ticks rises = fromNow(5);
    planPulses(input, rises);
    planPulses(input + 1, later(rises, triggerPeriod));
    advance(12 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), later(rises, debounce));
    EXPECT_EQ(outputRises(0), later(rises, debounce + formDelayTicks));
    EXPECT_EQ(outputFalls(0), later(rises, debounce + formDelayTicks + formWidthTicks));
    EXPECT_EQ(exposures(), 5U);
    EXPECT_EQ(generatorPulses(otherPort()), Ticks());
}

TEST_P(ExternalModeTest, ALowActiveInputTriggersWithItsFall) {
    set(FG_TRIGGERIN_POLARITY, 1U);
    set(FG_TRIGGERSTATE, active);
    const Ticks rises = fromNow(3);
    planPulses(input, rises);
    advance(8 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), later(rises, 100 + debounce));
}

TEST_P(ExternalModeTest, AShortSpikeIsNoPulse) {
    set(FG_TRIGGERIN_DEBOUNCE, 3.024);
    set(FG_TRIGGERSTATE, active);
    const Ticks rises = fromNow(1);
    planPulses(input, rises);
    advance(4 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks());
}

TEST_P(ExternalModeTest, TheInputDownscaleLetsOnePulsePass) {
    set(FG_TRIGGERIN_DOWNSCALE, 4U);
    set(FG_TRIGGERIN_DOWNSCALE_PHASE, 2U);
    set(FG_TRIGGERSTATE, active);
    const Ticks rises = fromNow(8);
    planPulses(input, rises);
    advance(20 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), later({rises[2], rises[6]}, debounce));
}

TEST_P(ExternalModeTest, TheInputDownscaleStartsAnewWithTheTrigger) {
    set(FG_TRIGGERIN_DOWNSCALE, 4U);
    planPulses(input, every(1000, now() + 1000, 2));
    advance(10000);
    set(FG_TRIGGERSTATE, active);
    const Ticks rises = fromNow(5);
    planPulses(input, rises);
    advance(12 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), later({rises[0], rises[4]}, debounce));
}

TEST_P(ExternalModeTest, AMultipliedPulseBecomesAsManyAPeriodApart) {
    set(FG_TRIGGER_MULTIPLY_PULSES, 3U);
    set(FG_TRIGGERSTATE, active);
    const Tick rise = now() + 1000;
    planPulses(input, {rise, rise + 10 * triggerPeriod});
    advance(20 * triggerPeriod);
    Ticks expected = every(triggerPeriod, rise + debounce, 3);
    for (const Tick tick : every(triggerPeriod, rise + 10 * triggerPeriod + debounce, 3)) {
        expected.push_back(tick);
    }
    EXPECT_EQ(generatorPulses(), expected);
}

TEST_P(ExternalModeTest, TheQueueKeepsABurstAtTheSetRate) {
    set(FG_TRIGGERSTATE, active);
    const Tick rise = now() + 1000;
    planPulses(input, every(1000, rise, 6));
    advance(6000);
    // Five have come; the first is on its way.
    EXPECT_EQ(applet.get(FG_TRIGGERQUEUE_FILLLEVEL, port()), 4U);
    advance(20 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), every(triggerPeriod, rise + debounce, 6));
    EXPECT_EQ(applet.get(FG_TRIGGERQUEUE_FILLLEVEL, port()), 0U);
}

TEST_P(ExternalModeTest, WithoutAQueueEveryPulsePassesAtOnce) {
    set(FG_TRIGGERSTATE, active);
    set(FG_TRIGGERQUEUE_MODE, queueOff);
    const Ticks rises = every(2500, now() + 1000, 6);
    planPulses(input, rises);
    advance(triggerPeriod);
    EXPECT_EQ(generatorPulses(), later(rises, debounce));
    EXPECT_EQ(outputRises(0), later(rises, debounce + formDelayTicks));
}

TEST_P(ExternalModeTest, ThresholdsRaiseTheirEventsOnce) {
    const auto countOf = [this](simulator::TriggerEventKind kind) {
        return applet.board().eventCount(simulator::designEventName({kind, static_cast<unsigned>(port())}));
    };
    using simulator::TriggerEventKind;
    set(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, 4U);
    set(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, 2U);
    set(FG_TRIGGERSTATE, active);
    planPulses(input, every(1000, now() + 1000, 4));
    advance(4500);
    EXPECT_EQ(countOf(TriggerEventKind::HysteresisOn), 0U);
    planPulses(input, every(1000, now() + 1000, 3));
    advance(4000);
    EXPECT_EQ(countOf(TriggerEventKind::HysteresisOn), 1U);
    EXPECT_EQ(countOf(TriggerEventKind::HysteresisOff), 0U);
    advance(20 * triggerPeriod);
    EXPECT_EQ(countOf(TriggerEventKind::HysteresisOn), 1U);
    EXPECT_EQ(countOf(TriggerEventKind::HysteresisOff), 1U);
}

TEST_P(ExternalModeTest, ASynchronousStopDetachesTheInputAndCompletesThePulse) {
    set(FG_TRIGGERSTATE, active);
    const Tick rise = now() + 1000;
    planPulses(input, every(triggerPeriod, rise, 3));
    advance(1000 + debounce + formDelayTicks + 5);
    set(FG_TRIGGERSTATE, syncStop);
    advance(10 * triggerPeriod);
    EXPECT_EQ(outputRises(0), Ticks{rise + debounce + formDelayTicks});
    EXPECT_EQ(outputFalls(0), Ticks{rise + debounce + formDelayTicks + formWidthTicks});

    // What came meanwhile is not made up for.
    set(FG_TRIGGERSTATE, active);
    const Tick next = now() + 1000;
    planPulses(input, {next});
    advance(10 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), (Ticks{rise + debounce, next + debounce}));
}

TEST_P(ExternalModeTest, AnAsynchronousStopCutsTheOutputsAndForgetsTheQueue) {
    set(FG_TRIGGERSTATE, active);
    const Tick rise = now() + 1000;
    planPulses(input, every(1000, rise, 5));
    advance(1000 + debounce + formDelayTicks + 5);
    const Tick stop = now();
    set(FG_TRIGGERSTATE, asyncStop);
    EXPECT_EQ(outputFalls(0), Ticks{stop});
    EXPECT_EQ(applet.get(FG_TRIGGERQUEUE_FILLLEVEL, port()), 0U);
    advance(10);
    applet.board().startTrace(1000);
    set(FG_TRIGGERSTATE, active);
    const Tick next = now() + 7 * triggerPeriod;
    planPulses(input, {next});
    advance(10 * triggerPeriod);
    EXPECT_EQ(generatorPulses().back(), next + debounce);
    EXPECT_EQ(outputRises(0).back(), next + debounce + formDelayTicks);
}

TEST_P(ExternalModeTest, AChangeFromTheGeneratorNeitherLosesNorInventsAPulse) {
    bringTo(applet, port(), generatorMode, active);
    const Tick start = now();
    applet.board().startTrace(1000);
    const Tick change = start + 2 * triggerPeriod + triggerPeriod / 2;
    const Ticks rises = {change + 50000, change + 2 * triggerPeriod, change + 3 * triggerPeriod};
    planPulses(input, {change - 10000});
    planPulses(input, rises);
    advanceTo(change);
    set(FG_AREATRIGGERMODE, externalMode);
    const Tick back = change + 6 * triggerPeriod;
    advanceTo(back);
    set(FG_AREATRIGGERMODE, generatorMode);
    advance(2 * triggerPeriod);
    Ticks expected = every(triggerPeriod, start + triggerPeriod, 2);
    for (const Tick rise : rises) {
        expected.push_back(rise + debounce);
    }
    for (const Tick pulse : every(triggerPeriod, back, 3)) {
        expected.push_back(pulse);
    }
    EXPECT_EQ(generatorPulses(), expected);
    EXPECT_EQ(actionCommands().size(), expected.size());
}

TEST_P(ExternalModeTest, AChangeLetsThePulseInFlightReachTheCamera) {
    bringTo(applet, port(), generatorMode, syncStop);
    set(FG_TRIGGERSTATE, active);
    const Tick start = now();
    advance(formDelayTicks - 5);
    set(FG_AREATRIGGERMODE, externalMode);
    advance(5 * triggerPeriod);
    EXPECT_EQ(actionCommands(), Ticks{start + formDelayTicks});
    EXPECT_EQ(exposures(), 1U);
}

TEST_P(ExternalModeTest, AnInputThatIsHighAlreadyGivesNoPulse) {
    bringTo(applet, port(), generatorMode, active);
    applet.board().driveInput(input, true);
    advance(triggerPeriod / 2);
    applet.board().startTrace(1000);
    set(FG_AREATRIGGERMODE, externalMode);
    advance(5 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks());
}

TEST_P(ExternalModeTest, ABypassShowsItsInputWithoutTheTrigger) {
    bringTo(applet, port(), generatorMode, syncStop);
    set(FG_TRIGGERIN_BYPASS_SRC, 6U);
    set(FG_TRIGGEROUT_SELECT2, inputBypass);
    set(FG_TRIGGEROUT_SELECT3, notInputBypass);
    applet.board().startTrace(1000);
    const Tick rise = now() + 1000;
    planPulses(6, {rise});
    advance(5000);
    EXPECT_EQ(outputRises(2), Ticks{rise + debounce});
    EXPECT_EQ(outputFalls(2), Ticks{rise + 100 + debounce});
    EXPECT_EQ(outputFalls(3), outputRises(2));
    EXPECT_EQ(outputRises(3), outputFalls(2));
}

TEST_P(ExternalModeTest, StatisticsTellPulsesAndFrequencies) {
    set(FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR, 1U);
    const Tick rise = now() + 1000;
    planPulses(input, {rise, rise + 62500, rise + 62500 + 31250, rise + 62500 + 31250 + 125000});
    advance(250000);
    EXPECT_EQ(applet.get(FG_TRIGGERIN_STATS_PULSECOUNT, port()), 4U);
    EXPECT_EQ(applet.get(FG_TRIGGERIN_STATS_PULSECOUNT, otherPort()), 0U);
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_FREQUENCY, port()), 500.0);
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_MINFREQUENCY, port()), 500.0);
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_MAXFREQUENCY, port()), 2000.0);

    Tick last = rise + 62500 + 31250 + 125000;
    for (const auto& [period, frequency] : {std::pair{Tick{625000}, 100.0}, {Tick{62500}, 1000.0}}) {
        set(FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U);
        EXPECT_EQ(applet.getReal(FG_TRIGGERIN_STATS_MINFREQUENCY, port()), HUGE_VAL);
        last += period;
        planPulses(input, {last});
        advanceTo(last + 1000);
        EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_MINFREQUENCY, port()), frequency);
        EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_MAXFREQUENCY, port()), frequency);
    }
    set(FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR, 1U);
    EXPECT_EQ(applet.get(FG_TRIGGERIN_STATS_PULSECOUNT, port()), 0U);
}

TEST_P(ExternalModeTest, DigitalInputsShowTheDebouncedLevels) {
    applet.board().driveInput(0, true);
    applet.board().driveInput(7, true);
    EXPECT_EQ(applet.get(FG_DIGIO_INPUT, port()), 0U);
    advance(debounce);
    EXPECT_EQ(applet.get(FG_DIGIO_INPUT, port()), 0x81U);
}

} // namespace
