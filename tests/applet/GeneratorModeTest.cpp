// The generator as the applet drives it, tick by tick at the outputs of the board.

#include "tests/applet/TriggerOnBoard.h"

namespace {

using GeneratorModeTest = TriggerOnBoard;
FOR_BOTH_PORTS(GeneratorModeTest);

constexpr unsigned notPulseGenerator0 = 6;

TEST_P(GeneratorModeTest, NothingMovesBeforeTheStart) {
    advance(3 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks());
    EXPECT_EQ(outputRises(0), Ticks());
    EXPECT_EQ(exposures(), 0U);
}

TEST_P(GeneratorModeTest, GivesAPulseInEveryPeriod) {
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(10 * triggerPeriod - 1);
    EXPECT_EQ(generatorPulses(), every(triggerPeriod, start, 10));
    const Ticks rises = every(triggerPeriod, start + formDelayTicks, 10);
    EXPECT_EQ(outputRises(0), rises);
    EXPECT_EQ(outputFalls(0), later(rises, formWidthTicks));
    EXPECT_EQ(actionCommands(), rises);
    EXPECT_EQ(exposures(), 10U);
    EXPECT_EQ(generatorPulses(otherPort()), Ticks());
}

TEST_P(GeneratorModeTest, APeriodIsCutOffToWholeTicks) {
    set(FG_TRIGGER_FRAMESPERSECOND, 1000.0);
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(5 * 62500);
    // 62500 ticks less what the arithmetic loses.
    EXPECT_EQ(generatorPulses(), every(62499, start, 6));
}

TEST_P(GeneratorModeTest, FollowsItsRateWhileItRuns) {
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(2 * triggerPeriod + triggerPeriod / 4);
    set(FG_TRIGGER_FRAMESPERSECOND, 2 * triggerRate);
    advance(triggerPeriod);
    EXPECT_EQ(generatorPulses(),
              (Ticks{start, start + triggerPeriod, start + 2 * triggerPeriod,
                     start + 2 * triggerPeriod + triggerPeriod / 2, start + 3 * triggerPeriod}));
}

TEST_P(GeneratorModeTest, EachPulseFormPicksItsPulses) {
    set(downscaleOf(1), 3U);
    set(phaseOf(1), 1U);
    set(downscaleOf(2), 2U);
    set(widthOf(2), 15000.0);
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(9 * triggerPeriod - 1);
    EXPECT_EQ(outputRises(1), every(3 * triggerPeriod, start + triggerPeriod, 3));
    EXPECT_EQ(outputFalls(1), later(outputRises(1), 250));
    EXPECT_EQ(outputRises(2), every(2 * triggerPeriod, start, 5));
    // Longer than the period, as only every second pulse is picked.
    EXPECT_EQ(later(every(2 * triggerPeriod, start, 4), 937500), outputFalls(2));
    EXPECT_EQ(outputRises(3), every(triggerPeriod, start, 9));
}

TEST_P(GeneratorModeTest, ALongDelayShiftsEveryPulse) {
    set(widthOf(3), 1.0);
    set(delayOf(3), 9999.984);
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(5 * triggerPeriod - 2);
    EXPECT_EQ(outputRises(3), every(triggerPeriod, start + triggerPeriod - 1, 4));
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 0U);
}

TEST_P(GeneratorModeTest, ASynchronousStopLetsThePulseInFlightComplete) {
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(2 * triggerPeriod + formDelayTicks + 5);
    set(FG_TRIGGERSTATE, syncStop);
    advance(5 * triggerPeriod);
    const Ticks rises = every(triggerPeriod, start + formDelayTicks, 3);
    EXPECT_EQ(outputRises(0), rises);
    EXPECT_EQ(outputFalls(0), later(rises, formWidthTicks));
}

TEST_P(GeneratorModeTest, ASynchronousStopLetsADelayedPulseComplete) {
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(formDelayTicks - 1);
    set(FG_TRIGGERSTATE, syncStop);
    advance(5 * triggerPeriod);
    EXPECT_EQ(outputRises(0), Ticks{start + formDelayTicks});
    EXPECT_EQ(outputFalls(0), Ticks{start + formDelayTicks + formWidthTicks});
    EXPECT_EQ(exposures(), 1U);
}

TEST_P(GeneratorModeTest, AnAsynchronousStopCutsTheOutputsAtOnce) {
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(triggerPeriod + formDelayTicks + 5);
    const Tick stop = now();
    set(FG_TRIGGERSTATE, asyncStop);
    advance(5 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + formDelayTicks, 2));
    EXPECT_EQ(outputFalls(0), (Ticks{start + formDelayTicks + formWidthTicks, stop}));
    EXPECT_FALSE(outputLevel(0));
}

TEST_P(GeneratorModeTest, AnInvertedOutputRestsAtTheOppositeLevel) {
    set(FG_TRIGGEROUT_SELECT0, notPulseGenerator0);
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    advance(formDelayTicks + 5);
    EXPECT_FALSE(outputLevel(0));
    const Tick stop = now();
    set(FG_TRIGGERSTATE, asyncStop);
    advance(5 * triggerPeriod);
    EXPECT_EQ(outputFalls(0), Ticks{start + formDelayTicks});
    EXPECT_EQ(outputRises(0).back(), stop);
    EXPECT_TRUE(outputLevel(0));
}

TEST_P(GeneratorModeTest, AnOutputChangedInAnAsynchronousStopTakesPartInTheNextStart) {
    set(FG_TRIGGERSTATE, asyncStop);
    set(FG_TRIGGEROUT_SELECT1, 5U);
    set(FG_TRIGGEROUT_SELECT2, 0U);
    EXPECT_FALSE(outputLevel(1));
    const Tick start = now();
    set(FG_TRIGGERSTATE, active);
    EXPECT_TRUE(outputLevel(1));
    advance(triggerPeriod);
    EXPECT_EQ(outputRises(2), Ticks{start + formDelayTicks});
}

TEST_P(GeneratorModeTest, AStartCountsTheDownscalesAnew) {
    set(downscaleOf(1), 3U);
    for (const unsigned stop : {syncStop, asyncStop}) {
        applet.board().startTrace(1000);
        const Tick start = now();
        set(FG_TRIGGERSTATE, active);
        advance(4 * triggerPeriod + 1);
        set(FG_TRIGGERSTATE, stop);
        // Two pulses after the last that was picked; the next start picks its first.
        EXPECT_EQ(outputRises(1), every(3 * triggerPeriod, start, 2));
        advance(triggerPeriod);
    }
}

TEST_P(GeneratorModeTest, MeetsAPulseThatDoesNotFit) {
    set(FG_TRIGGERSTATE, active);
    // Behind the applet's back, as it accepts no such width.
    putRegister(applet, port(), formRegister(1, "Width_Width"), 2 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 0U);
    advance(4 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 1U);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, otherPort()), 0U);
    set(FG_TRIGGERSTATE, syncStop);
    set(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR, 1U);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 0U);
}

TEST_P(GeneratorModeTest, NoticesAFrameThatDoesNotCome) {
    simulator::CameraSetup off = applet.board().camera(static_cast<unsigned>(port()));
    off.connected = false;
    set(FG_TRIGGERSTATE, active);
    advance(2 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 0U);
    EXPECT_EQ(applet.get(FG_CAMERA_ACTION_COMMAND_PENDING_COUNT, port()), 0U);
    applet.board().setCamera(static_cast<unsigned>(port()), off);
    advance(2 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 1U);
    EXPECT_EQ(applet.get(FG_CAMERA_ACTION_COMMAND_PENDING_COUNT, port()), 2U);
    set(FG_TRIGGERSTATE, syncStop);
    set(FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR, 1U);
    EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 0U);
    // The next start forgets the commands that wait.
    set(FG_TRIGGERSTATE, active);
    EXPECT_EQ(applet.get(FG_CAMERA_ACTION_COMMAND_PENDING_COUNT, port()), 0U);
}

TEST_P(GeneratorModeTest, CountsThePulsesOfTheWatchedGenerator) {
    set(downscaleOf(1), 2U);
    set(FG_TRIGGEROUT_STATS_SOURCE, 1U);
    set(FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR, 1U);
    set(FG_TRIGGERSTATE, active);
    advance(10 * triggerPeriod - 1);
    EXPECT_EQ(applet.get(FG_TRIGGEROUT_STATS_PULSECOUNT, port()), 5U);
    set(FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR, 1U);
    set(FG_TRIGGEROUT_STATS_SOURCE, 3U);
    advance(10 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_TRIGGEROUT_STATS_PULSECOUNT, port()), 10U);
}

} // namespace
