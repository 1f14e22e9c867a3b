#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

class DigitalInputsTest : public TriggerBench {
  protected:
    Ticks accepted(unsigned pin, bool level) const {
        return recorder.ticksOf(TriggerSignalKind::DebouncedInput, 0, pin, level ? 1 : 0);
    }
    void setDebounce(std::uint32_t steps) { setShared("TriggerInput_Debounce8_Prescale_Period", steps); }
};

TEST_F(DigitalInputsTest, ALevelCountsOnceItHeldForTheDebounceTime) {
    setDebounce(2);
    system.setInput(5, true, 100);
    system.advanceTo(105);
    EXPECT_TRUE(accepted(5, true).empty());
    EXPECT_EQ(system.nextActivity(), 106U);
    system.advanceTo(106);
    EXPECT_EQ(accepted(5, true), Ticks{106});
    system.setInput(5, false, 200);
    system.advanceTo(300);
    EXPECT_EQ(accepted(5, false), Ticks{206});
}

TEST_F(DigitalInputsTest, AShorterLevelLeavesNoTrace) {
    setDebounce(2);
    system.setInput(0, true, 100);
    system.setInput(0, false, 105);
    system.advanceTo(1000);
    EXPECT_TRUE(accepted(0, true).empty());
    EXPECT_TRUE(recorder.events.empty());
    EXPECT_EQ(recorder.ticksOf(TriggerSignalKind::Input, 0, 0, 1), Ticks{100});
    EXPECT_EQ(recorder.ticksOf(TriggerSignalKind::Input, 0, 0, 0), Ticks{105});
}

TEST_F(DigitalInputsTest, ALevelOfExactlyTheDebounceTimeCounts) {
    setDebounce(2);
    system.setInput(0, true, 100);
    system.setInput(0, false, 106);
    system.advanceTo(1000);
    EXPECT_EQ(accepted(0, true), Ticks{106});
    EXPECT_EQ(accepted(0, false), Ticks{112});
}

TEST_F(DigitalInputsTest, ABounceStartsTheWaitAgain) {
    setDebounce(10);
    for (const Tick tick : {100U, 110U, 120U, 125U, 140U})
        system.setInput(1, !system.signalValue({TriggerSignalKind::Input, 0, 1}), tick);
    system.advanceTo(1000);
    EXPECT_EQ(accepted(1, true), Ticks{170});
}

TEST_F(DigitalInputsTest, WithoutDebounceALevelCountsAtOnce) {
    system.setInput(7, true, 100);
    system.setInput(7, false, 100);
    EXPECT_EQ(accepted(7, true), Ticks{100});
    EXPECT_EQ(accepted(7, false), Ticks{100});
}

TEST_F(DigitalInputsTest, ADebounceTimeShortenedDuringTheWaitCountsFromTheChange) {
    setDebounce(63);
    system.setInput(0, true, 100);
    system.advanceTo(150);
    setDebounce(20);
    EXPECT_TRUE(accepted(0, true).empty());
    system.advanceTo(155);
    setDebounce(18);
    EXPECT_EQ(accepted(0, true), Ticks{155});
}

TEST_F(DigitalInputsTest, TheLargestDebounceValueDoesNotWrap) {
    setDebounce(UINT32_MAX);
    system.setInput(0, true, 0);
    system.advanceTo(3ULL * UINT32_MAX - 1);
    EXPECT_TRUE(accepted(0, true).empty());
    system.advanceTo(3ULL * UINT32_MAX);
    EXPECT_EQ(accepted(0, true), Ticks{3ULL * UINT32_MAX});
}

TEST_F(DigitalInputsTest, TheStatusRegisterShowsAcceptedLevelsWithoutPolarity) {
    setDebounce(2);
    set(0, "InputSelect_Polarity_Invert", 1);
    system.setInput(0, true, 10);
    system.setInput(7, true, 12);
    EXPECT_EQ(getShared("TriggerInput_InputStatus_Status"), 0U);
    system.advanceTo(16);
    EXPECT_EQ(getShared("TriggerInput_InputStatus_Status"), 0x01U);
    system.advanceTo(18);
    EXPECT_EQ(getShared("TriggerInput_InputStatus_Status"), 0x81U);
}

TEST_F(DigitalInputsTest, EachPinRaisesItsOwnEdgeEvents) {
    for (unsigned pin = 0; pin < triggerPinCount; ++pin) {
        system.scheduleInput(pin, true, 100 + pin);
        system.scheduleInput(pin, false, 200 + pin);
    }
    system.advanceTo(300);
    for (unsigned pin = 0; pin < triggerPinCount; ++pin) {
        EXPECT_EQ(recorder.ticksOf(TriggerEventKind::InputRising, pin), Ticks{100 + pin});
        EXPECT_EQ(recorder.ticksOf(TriggerEventKind::InputFalling, pin), Ticks{200 + pin});
    }
}

TEST_F(DigitalInputsTest, PlannedChangesHappenAtTheirTickInOrderOfPlanning) {
    system.scheduleInput(2, false, 60);
    system.scheduleInput(2, true, 50);
    system.scheduleInput(3, true, 60);
    system.scheduleInput(3, false, 60);
    EXPECT_EQ(system.nextActivity(), 50U);
    system.advanceTo(60);
    EXPECT_EQ(accepted(2, true), Ticks{50});
    EXPECT_EQ(accepted(2, false), Ticks{60});
    EXPECT_EQ(accepted(3, true), Ticks{60});
    EXPECT_EQ(accepted(3, false), Ticks{60});
    EXPECT_EQ(system.nextActivity(), neverTick);
}

TEST_F(DigitalInputsTest, AChangePlannedForThePastHappensNow) {
    system.advanceTo(100);
    system.scheduleInput(2, true, 50);
    EXPECT_EQ(accepted(2, true), Ticks{100});
}

TEST_F(DigitalInputsTest, AWavePlaysItsPulses) {
    system.driveInput(4, {100, 3, 7, 3});
    system.advanceTo(1000);
    EXPECT_EQ(accepted(4, true), (Ticks{100, 110, 120}));
    EXPECT_EQ(accepted(4, false), (Ticks{103, 113, 123}));
    EXPECT_EQ(system.nextActivity(), neverTick);
}

TEST_F(DigitalInputsTest, AWaveWithoutEndPlaysUntilReleasedAndKeepsTheLevel) {
    system.driveInput(4, {100, 5, 5, 0});
    system.advanceTo(1000);
    EXPECT_EQ(accepted(4, true).size(), 91U);
    system.releaseInput(4);
    system.advanceTo(2000);
    EXPECT_EQ(accepted(4, true).size(), 91U);
    EXPECT_EQ(system.signalValue({TriggerSignalKind::Input, 0, 4}), 1U);
}

TEST_F(DigitalInputsTest, AWaveBeginsWithTheNextTickAtTheEarliest) {
    system.advanceTo(500);
    system.driveInput(4, {100, 5, 5, 1});
    system.advanceTo(600);
    EXPECT_EQ(accepted(4, true), Ticks{501});
}

TEST_F(DigitalInputsTest, AWaveWithoutHighOrLowTimeIsRefused) {
    EXPECT_THROW(system.driveInput(0, {1, 0, 5, 1}), std::invalid_argument);
    EXPECT_THROW(system.driveInput(0, {1, 5, 0, 1}), std::invalid_argument);
    EXPECT_EQ(system.nextActivity(), neverTick);
}

TEST_F(DigitalInputsTest, ClearingTheScheduleDropsPlansAndWaves) {
    system.scheduleInput(0, true, 10);
    system.driveInput(1, {10, 5, 5, 0});
    system.clearInputSchedule();
    system.advanceTo(100);
    EXPECT_TRUE(recorder.signals.empty());
}

} // namespace

} // namespace simulator
