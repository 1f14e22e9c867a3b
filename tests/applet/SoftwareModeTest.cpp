// The software trigger as the applet drives it: from requests to pulses and pictures.

#include "tests/applet/TriggerOnBoard.h"

namespace {

constexpr unsigned queueOff = 0;
constexpr unsigned queueOn = 1;

class SoftwareModeTest : public TriggerOnBoard {
  protected:
    SoftwareModeTest() {
        bringTo(applet, port(), softwareMode, active);
        set(FG_TRIGGERQUEUE_MODE, queueOn);
    }
    void send(unsigned count) { set(FG_SENDSOFTWARETRIGGER, count); }
    unsigned fillLevel() { return applet.get(FG_TRIGGERQUEUE_FILLLEVEL, port()); }
    bool isBusy() { return applet.get(FG_SOFTWARETRIGGER_IS_BUSY, port()) == 1; }
};
FOR_BOTH_PORTS(SoftwareModeTest);

TEST_P(SoftwareModeTest, AFullQueueOfTriggersGivesAsManyPicturesAtTheSetRate) {
    constexpr unsigned count = 2040;
    set(FG_WIDTH, 16U);
    set(FG_HEIGHT, 2U);
    ASSERT_EQ(Fg_AcquireEx(applet.handle(), port(), -1, 0, nullptr), 0);
    const Tick start = now();
    send(count);
    EXPECT_EQ(fillLevel(), count - 1);
    EXPECT_EQ(applet.get(FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL, port()), count - 1);
    EXPECT_TRUE(isBusy());
    advance((count + 10) * triggerPeriod);
    EXPECT_EQ(generatorPulses(), every(triggerPeriod, start, count));
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + formDelayTicks, count));
    EXPECT_EQ(exposures(), count);
    EXPECT_EQ(Fg_getLastPicNumberEx(applet.handle(), port(), nullptr), static_cast<int>(count));
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 0U);
    EXPECT_EQ(Fg_stopAcquireEx(applet.handle(), port(), nullptr, 0), 0);
}

TEST_P(SoftwareModeTest, AQueueThatIsFullLosesWhatComesThen) {
    const Tick start = now();
    send(2040);
    send(1);
    EXPECT_EQ(fillLevel(), 2040U);
    send(5);
    EXPECT_EQ(fillLevel(), 2040U);
    advance(2100 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), every(triggerPeriod, start, 2041));
    // Only a generator's own pace is reported as exceeded.
    EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 0U);
}

TEST_P(SoftwareModeTest, TheFillLevelFallsWithEveryPeriod) {
    send(3);
    EXPECT_EQ(fillLevel(), 2U);
    advance(triggerPeriod);
    EXPECT_EQ(fillLevel(), 1U);
    advance(triggerPeriod);
    // The last pulse is on its way.
    EXPECT_EQ(fillLevel(), 1U);
    EXPECT_TRUE(isBusy());
    advance(triggerPeriod - 1);
    EXPECT_TRUE(isBusy());
    advance(1);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_FALSE(isBusy());
}

TEST_P(SoftwareModeTest, WithoutAQueueATriggerWaitsForTheGenerator) {
    set(FG_TRIGGERQUEUE_MODE, queueOff);
    const Tick start = now();
    send(1);
    // The queue's end leaves the shortest pace: 19 ticks.
    EXPECT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 1U, port()), -60);
    advance(18);
    EXPECT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 1U, port()), -60);
    advance(1);
    send(1);
    advance(triggerPeriod);
    EXPECT_EQ(generatorPulses(), (Ticks{start, start + 19}));
}

TEST_P(SoftwareModeTest, ANewRateHoldsForThePulsesThatWait) {
    const Tick start = now();
    send(4);
    advance(triggerPeriod + triggerPeriod / 4);
    set(FG_TRIGGER_FRAMESPERSECOND, 2 * triggerRate);
    advance(10 * triggerPeriod);
    const Tick half = triggerPeriod / 2;
    EXPECT_EQ(generatorPulses(),
              (Ticks{start, start + triggerPeriod, start + triggerPeriod + half, start + 2 * triggerPeriod}));
}

TEST_P(SoftwareModeTest, ASynchronousStopSendsWhatWaits) {
    const Tick start = now();
    send(3);
    advance(10);
    set(FG_TRIGGERSTATE, syncStop);
    EXPECT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 1U, port()), -2141);
    advance(10 * triggerPeriod);
    EXPECT_EQ(outputRises(0), every(triggerPeriod, start + formDelayTicks, 3));
}

TEST_P(SoftwareModeTest, AnAsynchronousStopCutsTheOutputsAndTheNextStartForgetsTheRest) {
    const Tick start = now();
    send(5);
    advance(formDelayTicks + 5);
    const Tick stop = now();
    set(FG_TRIGGERSTATE, asyncStop);
    EXPECT_EQ(outputRises(0), Ticks{start + formDelayTicks});
    EXPECT_EQ(outputFalls(0), Ticks{stop});
    EXPECT_EQ(fillLevel(), 0U);
    advance(triggerPeriod / 2);
    applet.board().startTrace(1000);
    set(FG_TRIGGERSTATE, active);
    advance(10 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks());
    const Tick next = now();
    send(1);
    advance(triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks{next});
}

TEST_P(SoftwareModeTest, InputsDoNotTrigger) {
    planPulses(0, {now() + 1000});
    advance(triggerPeriod);
    EXPECT_EQ(generatorPulses(), Ticks());
}

TEST_P(SoftwareModeTest, AChangeToTheGeneratorDropsWhatWaits) {
    send(5);
    advance(triggerPeriod / 2);
    applet.board().startTrace(1000);
    const Tick change = now();
    set(FG_AREATRIGGERMODE, generatorMode);
    advance(2 * triggerPeriod);
    EXPECT_EQ(generatorPulses(), every(triggerPeriod, change, 3));
}

} // namespace
