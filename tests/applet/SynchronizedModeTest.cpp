// Port 1 in the trigger of port 0.

#include "tests/applet/TriggerOnBoard.h"

namespace {

class SynchronizedModeTest : public TriggerOnBoard {
  protected:
    SynchronizedModeTest() {
        set(FG_TRIGGER_FRAMESPERSECOND, 10.0);
        set(delayOf(0), 30.0);
        set(FG_AREATRIGGERMODE, synchronizedMode);
    }
    void setMaster(int id, unsigned value) { ASSERT_EQ(applet.set(id, value, otherPort()), 0); }

    static constexpr Tick delayTicks = 1875;
};
INSTANTIATE_TEST_SUITE_P(Port, SynchronizedModeTest, testing::Values(1));

TEST_P(SynchronizedModeTest, FollowsTheGeneratorOfPort0WithItsOwnPulseForm) {
    set(FG_TRIGGERSTATE, active);
    advance(triggerPeriod);
    EXPECT_EQ(outputRises(0), Ticks());
    const Tick start = now();
    setMaster(FG_TRIGGERSTATE, active);
    advance(5 * triggerPeriod - 1);
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + delayTicks, 5));
    EXPECT_EQ(outputFalls(0), later(outputRises(0), formWidthTicks));
    EXPECT_EQ(outputRises(0, 0), every(triggerPeriod, start + formDelayTicks, 5));
    EXPECT_EQ(exposures(), 5U);
    EXPECT_EQ(applet.board().exposures(0), 5U);
}

TEST_P(SynchronizedModeTest, FollowsSoftwareTriggersOfPort0) {
    set(FG_TRIGGERSTATE, active);
    bringTo(applet, otherPort(), softwareMode, active);
    setMaster(FG_TRIGGERQUEUE_MODE, 1);
    const Tick start = now();
    setMaster(FG_SENDSOFTWARETRIGGER, 4);
    advance(10 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + delayTicks, 4));
    EXPECT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 1U, port()), -2140);
}

TEST_P(SynchronizedModeTest, ASynchronousStopCompletesItsPulseAndLeavesPort0Running) {
    set(FG_TRIGGERSTATE, active);
    const Tick start = now();
    setMaster(FG_TRIGGERSTATE, active);
    advance(triggerPeriod + delayTicks + 5);
    set(FG_TRIGGERSTATE, syncStop);
    advance(3 * triggerPeriod);
    const Ticks rises = every(triggerPeriod, start + delayTicks, 2);
    EXPECT_EQ(outputRises(0), rises);
    EXPECT_EQ(outputFalls(0), later(rises, formWidthTicks));
    EXPECT_EQ(outputRises(0, 0).size(), 5U);
}

TEST_P(SynchronizedModeTest, AnAsynchronousStopCutsItsPulse) {
    set(FG_TRIGGERSTATE, active);
    setMaster(FG_TRIGGERSTATE, active);
    advance(delayTicks + 5);
    const Tick stop = now();
    set(FG_TRIGGERSTATE, asyncStop);
    advance(3 * triggerPeriod);
    EXPECT_EQ(outputRises(0).size(), 1U);
    EXPECT_EQ(outputFalls(0), Ticks{stop});
}

TEST_P(SynchronizedModeTest, AStartPicksUpPort0WhereItIs) {
    set(downscaleOf(0), 2U);
    const Tick start = now();
    setMaster(FG_TRIGGERSTATE, active);
    advance(triggerPeriod + 10);
    for (const unsigned stop : {syncStop, asyncStop}) {
        set(FG_TRIGGERSTATE, stop);
        set(FG_TRIGGERSTATE, active);
    }
    advance(4 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(2 * triggerPeriod, start + 2 * triggerPeriod + delayTicks, 2));
}

TEST_P(SynchronizedModeTest, ReportsAPaceThatPort0Exceeds) {
    set(FG_TRIGGERSTATE, active);
    setMaster(FG_TRIGGERSTATE, active);
    // Longer than port 0's period, but not than the port's own.
    set(widthOf(0), 50000.0);
    advance(5 * triggerPeriod);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 1U);
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, otherPort()), 0U);
}

TEST_P(SynchronizedModeTest, LeftWhileActiveItKeepsItsOwnPace) {
    set(FG_TRIGGERSTATE, active);
    setMaster(FG_TRIGGERSTATE, active);
    advance(triggerPeriod / 2);
    applet.board().startTrace(1000);
    const Tick change = now();
    set(FG_AREATRIGGERMODE, generatorMode);
    advance(25 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(10 * triggerPeriod, change + delayTicks, 3));
}

TEST_P(SynchronizedModeTest, LeftWhileStoppedItStaysASlave) {
    set(FG_TRIGGERSTATE, asyncStop);
    set(FG_AREATRIGGERMODE, generatorMode);
    set(FG_TRIGGERSTATE, active);
    advance(25 * triggerPeriod);
    EXPECT_EQ(outputRises(0), Ticks());
    const Tick start = now();
    setMaster(FG_TRIGGERSTATE, active);
    advance(2 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + delayTicks, 2));
}

} // namespace
