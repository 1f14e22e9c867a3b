#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

class PulseGeneratorTest : public TriggerBench {
  protected:
    std::uint32_t fillLevel(unsigned port = 0) { return get(port, "Generators_QueueValue_Status"); }
    bool periodPassed(unsigned port = 0) {
        return get(port, "Generators_Generator_MaximumReached_Status") == 1;
    }
    std::uint32_t status() { return getShared("Monitoring_ReadQueueStatus_Status"); }
    void expectSpacing(const Ticks& pulses, Tick spacing) {
        for (std::size_t pulse = 1; pulse < pulses.size(); ++pulse)
            ASSERT_EQ(pulses[pulse] - pulses[pulse - 1], spacing) << pulse;
    }
};

TEST_F(PulseGeneratorTest, RunsFreeFromTheReleaseWithThePeriodOfTheRegisterPlusNine) {
    system.advanceTo(50);
    runFree(0, 10);
    EXPECT_EQ(get(0, "Generators_Generator_MinimumPeriod_Number"), 1U);
    system.advanceTo(100);
    EXPECT_EQ(generatorPulses(0), (Ticks{50, 60, 70, 80, 90, 100}));
}

TEST_F(PulseGeneratorTest, RunsFreeAtTheLongestPeriodWithoutWrap) {
    runFree(0, 9ULL + UINT32_MAX);
    system.advanceTo(2 * (9ULL + UINT32_MAX));
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 9ULL + UINT32_MAX, 2 * (9ULL + UINT32_MAX)}));
}

TEST_F(PulseGeneratorTest, StopsInClearAndStartsAtOnceWhenReleased) {
    runFree(0, 100);
    system.advanceTo(250);
    set(0, "Generators_ClearQueuePulse_Mode", 1);
    system.advanceTo(330);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 200}));
    set(0, "Generators_ClearQueuePulse_Mode", 0);
    system.advanceTo(430);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 200, 330, 430}));
}

TEST_F(PulseGeneratorTest, AClearPulseStartsAgainWithinItsTick) {
    runFree(0, 100);
    system.advanceTo(250);
    set(0, "Generators_ClearQueuePulse_Mode", 2);
    system.advanceTo(400);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 200, 250, 350}));
}

TEST_F(PulseGeneratorTest, ANewPeriodCountsFromTheLastPulse) {
    runFree(0, 100);
    system.advanceTo(150);
    setPeriod(0, 70);
    system.advanceTo(180);
    setPeriod(0, 200);
    system.advanceTo(400);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 170, 370}));
}

TEST_F(PulseGeneratorTest, APeriodThatHasAlreadyPassedPulsesAtOnce) {
    runFree(0, 100);
    system.advanceTo(190);
    setPeriod(0, 50);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 190}));
}

TEST_F(PulseGeneratorTest, RunningFreeItTakesNoTriggers) {
    runFree(0, 100);
    system.advanceTo(50);
    sendSoftware(0, 5);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_EQ(status(), 0U);
    system.advanceTo(100);
    EXPECT_EQ(generatorPulses(0).size(), 2U);
}

TEST_F(PulseGeneratorTest, ASoftwareTriggerPassesAtOnceWhenIdle) {
    runQueued(0, 100);
    system.advanceTo(70);
    EXPECT_TRUE(periodPassed());
    sendSoftware(0);
    EXPECT_EQ(generatorPulses(0), Ticks{70});
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_FALSE(periodPassed());
    system.advanceTo(169);
    EXPECT_FALSE(periodPassed());
    system.advanceTo(170);
    EXPECT_TRUE(periodPassed());
}

TEST_F(PulseGeneratorTest, OnlyTheValueTwoSendsASoftwareTrigger) {
    runQueued(0, 100);
    for (const std::uint32_t value : {0U, 1U, 3U, 4U})
        set(0, "TriggerMode_SoftwareTrigger_Mode", value);
    EXPECT_TRUE(generatorPulses(0).empty());
}

TEST_F(PulseGeneratorTest, QueuedPulsesComeAtTheMinimumPeriod) {
    runQueued(0, 100);
    sendSoftware(0, 4);
    EXPECT_EQ(fillLevel(), 3U);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 200, 300}));
    EXPECT_EQ(recorder.ticksOf(TriggerSignalKind::QueueFillLevel, 0, 0, 0), Ticks{300});
    EXPECT_EQ(status(), 0U);
}

TEST_F(PulseGeneratorTest, TwoThousandAndFortySoftwareTriggersGiveAsManyPulsesAtTheSetRate) {
    runQueued(0, 625);
    sendSoftware(0, 2040);
    system.advanceTo(10000000);
    ASSERT_EQ(generatorPulses(0).size(), 2040U);
    expectSpacing(generatorPulses(0), 625);
    EXPECT_EQ(status(), 0U);
}

TEST_F(PulseGeneratorTest, TheQueueHolds2040AndLosesThe2041stThatWouldWait) {
    runQueued(0, 1000);
    sendSoftware(0, 1);
    sendSoftware(0, 2039);
    EXPECT_EQ(fillLevel(), 2039U);
    EXPECT_EQ(status(), 0U);
    sendSoftware(0, 1);
    EXPECT_EQ(fillLevel(), 2040U);
    EXPECT_EQ(status(), 2U) << "full, and nothing lost yet";
    sendSoftware(0, 1);
    EXPECT_EQ(fillLevel(), 2040U);
    EXPECT_EQ(status(), 3U);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::Override, 0), Ticks{0});
    system.advanceTo(1000);
    EXPECT_EQ(status(), 1U) << "full no longer";
    system.advanceTo(10000000);
    EXPECT_EQ(generatorPulses(0).size(), 2041U);
    expectSpacing(generatorPulses(0), 1000);
}

TEST_F(PulseGeneratorTest, AnEntryLeavesTheFullQueueBeforeThePulseOfTheSameTickComes) {
    runQueued(0, 100);
    setQueue(0, true, 2);
    set(0, "TriggerMode_SelectExternal_Select", 1);
    system.driveInput(0, {100, 20, 30, 3});
    system.advanceTo(199);
    EXPECT_EQ(fillLevel(), 1U);
    pulseInput(0);
    EXPECT_EQ(status(), 0U);
    system.advanceTo(1000);
    EXPECT_EQ(status(), 0U);
}

TEST_F(PulseGeneratorTest, TheQueueFullValueLimitsTheQueueUpToItsCapacity) {
    runQueued(1, 1000);
    setQueue(1, true, 3);
    sendSoftware(1, 6);
    EXPECT_EQ(fillLevel(1), 3U);
    EXPECT_EQ(status(), 8U | 16U);
    setQueue(1, true, 100000);
    EXPECT_EQ(status(), 8U);
    sendSoftware(1, 2100);
    EXPECT_EQ(fillLevel(1), 2040U);
}

TEST_F(PulseGeneratorTest, AQueueFullValueOfZeroTakesNothing) {
    runQueued(0, 1000);
    setQueue(0, true, 0);
    EXPECT_EQ(status(), 2U);
    sendSoftware(0, 1);
    EXPECT_TRUE(generatorPulses(0).empty());
    EXPECT_EQ(status(), 3U);
}

TEST_F(PulseGeneratorTest, WithoutQueueAPulseBeforeTheMinimumPeriodIsLost) {
    runQueued(0, 19);
    setQueue(0, false, 1);
    sendSoftware(0);
    system.advanceTo(18);
    sendSoftware(0);
    EXPECT_EQ(status(), 1U);
    EXPECT_EQ(fillLevel(), 0U);
    system.advanceTo(19);
    sendSoftware(0);
    system.advanceTo(100);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 19}));
}

TEST_F(PulseGeneratorTest, WithoutQueueAPulseAtExactlyTheMinimumPeriodPasses) {
    runQueued(0, 50);
    setQueue(0, false, 1);
    set(0, "TriggerMode_SelectExternal_Select", 1);
    system.driveInput(0, {10, 25, 25, 1000});
    system.advanceTo(100000);
    EXPECT_EQ(generatorPulses(0).size(), 1000U);
    EXPECT_EQ(status(), 0U);
}

TEST_F(PulseGeneratorTest, SwitchingTheQueueOffLetsWaitingPulsesOut) {
    runQueued(0, 100);
    sendSoftware(0, 3);
    setQueue(0, false, 1);
    EXPECT_EQ(status(), 0U) << "no queue is never full";
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 100, 200}));
}

TEST_F(PulseGeneratorTest, ClearEmptiesTheQueueAndIgnoresTriggers) {
    runQueued(0, 100);
    sendSoftware(0, 10);
    set(0, "Generators_ClearQueuePulse_Mode", 1);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_TRUE(periodPassed());
    sendSoftware(0, 10);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_EQ(status(), 0U);
    set(0, "Generators_ClearQueuePulse_Mode", 0);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0).size(), 1U);
}

TEST_F(PulseGeneratorTest, MultiplicationMakesNPulsesOfEachAtTheMinimumPeriod) {
    runQueued(0, 50);
    setMultiply(0, 3);
    system.advanceTo(1000);
    sendSoftware(0, 2);
    EXPECT_EQ(fillLevel(), 2U) << "an entry waits until its last pulse is out";
    system.advanceTo(1100);
    EXPECT_EQ(fillLevel(), 1U);
    system.advanceTo(5000);
    EXPECT_EQ(generatorPulses(0), (Ticks{1000, 1050, 1100, 1150, 1200, 1250}));
    EXPECT_EQ(fillLevel(), 0U);
}

TEST_F(PulseGeneratorTest, MultiplicationFillsTheQueueAt2040) {
    runQueued(0, 10);
    setMultiply(0, 2);
    sendSoftware(0, 2041);
    EXPECT_EQ(status(), 3U);
    system.advanceTo(100000);
    EXPECT_EQ(generatorPulses(0).size(), 4080U);
}

TEST_F(PulseGeneratorTest, MultiplicationWithoutQueueRefusesATriggerUntilTheLastPulseIsOut) {
    runQueued(0, 50);
    setQueue(0, false, 1);
    setMultiply(0, 3);
    sendSoftware(0);
    system.advanceTo(99);
    sendSoftware(0);
    EXPECT_EQ(status(), 1U);
    system.advanceTo(150);
    sendSoftware(0);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0), (Ticks{0, 50, 100, 150, 200, 250}));
}

TEST_F(PulseGeneratorTest, TheSequenceStartsAgainOnItsClear) {
    runQueued(0, 50);
    setMultiply(0, 4);
    sendSoftware(0);
    system.advanceTo(60);
    set(0, "Generators_ClearDownscale_Mode", 2);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0).size(), 2U + 4U);
}

TEST_F(PulseGeneratorTest, TheSequenceCountsOnlyBehindTheQueue) {
    setMultiply(0, 4);
    runFree(0, 50);
    system.advanceTo(125);
    runQueued(0, 50);
    sendSoftware(0);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0).size(), 3U + 4U);
}

TEST_F(PulseGeneratorTest, ASelectedPulseAboveTheSequenceNeverTakesTheEntryOut) {
    runQueued(0, 50);
    set(0, "Generators_Sequence_SelectedPulse", 2);
    sendSoftware(0);
    system.advanceTo(499);
    EXPECT_EQ(generatorPulses(0).size(), 10U);
    EXPECT_EQ(fillLevel(), 1U);
}

TEST_F(PulseGeneratorTest, FillLevelEventsFollowTheTwoLevels) {
    set(0, "Hysteresis_OnLevel_Number", 5);
    set(0, "Hysteresis_OffLevel_Number", 3);
    runQueued(0, 100);
    sendSoftware(0, 5);
    EXPECT_TRUE(recorder.ticksOf(TriggerEventKind::HysteresisOn, 0).empty());
    sendSoftware(0, 1);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOn, 0), Ticks{0});
    system.advanceTo(299);
    sendSoftware(0, 3);
    system.advanceTo(2000);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOn, 0), Ticks{0}) << "no second on before an off";
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOff, 0), Ticks{600});
    sendSoftware(0, 6);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOn, 0), (Ticks{0, 2000}));
}

TEST_F(PulseGeneratorTest, EqualFillLevelEventLevelsMakeAPlainThreshold) {
    set(0, "Hysteresis_OnLevel_Number", 2);
    set(0, "Hysteresis_OffLevel_Number", 2);
    runQueued(0, 100);
    sendSoftware(0, 4);
    system.advanceTo(1000);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOn, 0), Ticks{0});
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOff, 0), Ticks{200});
}

TEST_F(PulseGeneratorTest, ClearingAFullQueueRaisesTheOffEvent) {
    set(1, "Hysteresis_OnLevel_Number", 2);
    runQueued(1, 100);
    sendSoftware(1, 5);
    system.advanceTo(10);
    set(1, "Generators_ClearQueuePulse_Mode", 1);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::HysteresisOff, 1), Ticks{10});
}

TEST_F(PulseGeneratorTest, AMarkedOverrideRaisesOneEventUntilCleared) {
    runQueued(0, 100);
    setQueue(0, false, 1);
    sendSoftware(0, 4);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::Override, 0).size(), 1U);
    setShared("Monitoring_ClearOverrideCam0_Mode", 2);
    EXPECT_EQ(status(), 0U);
    sendSoftware(0, 1);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::Override, 0).size(), 2U);
    setShared("Monitoring_ClearOverrideCam0_Mode", 1);
    sendSoftware(0, 1);
    EXPECT_EQ(status(), 0U) << "the level 1 keeps the flag down";
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::Override, 0).size(), 2U);
}

} // namespace

} // namespace simulator
