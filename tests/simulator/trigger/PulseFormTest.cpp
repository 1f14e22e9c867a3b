#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

class PulseFormTest : public TriggerBench {
  protected:
    bool overridden(unsigned port = 0) {
        return (getShared("Monitoring_ReadQueueStatus_Status") & (port == 0 ? 1U : 8U)) != 0;
    }
};

TEST_F(PulseFormTest, RisesWithoutDelayInThePulsesTickAndFallsAfterItsWidth) {
    setForm(0, 0, 0, 63);
    runFree(0, 100);
    system.advanceTo(250);
    EXPECT_EQ(formRises(0, 0), (Ticks{0, 100, 200}));
    EXPECT_EQ(formFalls(0, 0), (Ticks{63, 163}));
}

TEST_F(PulseFormTest, TheDelayPostponesTheWholePulse) {
    setForm(0, 2, 40, 30);
    runFree(0, 100);
    system.advanceTo(250);
    EXPECT_EQ(formRises(0, 2), (Ticks{40, 140, 240}));
    EXPECT_EQ(formFalls(0, 2), (Ticks{70, 170}));
}

TEST_F(PulseFormTest, DelayAndWidthMayEachNearlyFillThePeriod) {
    setForm(0, 1, 99, 99);
    runFree(0, 100);
    system.advanceTo(100000);
    EXPECT_EQ(formRises(0, 1).size(), 1000U);
    EXPECT_EQ(formRises(0, 1)[1], 199U);
    EXPECT_EQ(formFalls(0, 1)[0], 198U);
    EXPECT_FALSE(overridden());
}

TEST_F(PulseFormTest, ADelayOrWidthOfExactlyThePeriodLosesNoPulse) {
    setForm(0, 0, 100, 100);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_EQ(formRises(0, 0).size(), 10U);
    EXPECT_EQ(formFalls(0, 0).size(), 9U);
    EXPECT_EQ(formFalls(0, 0)[0], formRises(0, 0)[1]);
    EXPECT_FALSE(overridden());
}

TEST_F(PulseFormTest, APulseDuringTheDelayOfAnotherIsLost) {
    setForm(0, 0, 101, 10);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_EQ(formRises(0, 0), (Ticks{101, 301, 501, 701, 901}));
    EXPECT_TRUE(overridden());
}

TEST_F(PulseFormTest, APulseDuringTheOutputOfAnotherIsLostAndNeverLengthensIt) {
    setForm(0, 0, 20, 101);
    runFree(0, 100);
    system.advanceTo(500);
    EXPECT_EQ(formRises(0, 0), (Ticks{20, 220, 420}));
    EXPECT_EQ(formFalls(0, 0), (Ticks{121, 321}));
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::Override, 0), Ticks{120});
}

TEST_F(PulseFormTest, AWidthOfZeroMakesNoPulse) {
    setForm(0, 0, 0, 0);
    setForm(0, 1, 5, 0);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_TRUE(formRises(0, 0).empty());
    EXPECT_TRUE(formRises(0, 1).empty());
    EXPECT_FALSE(overridden());
}

TEST_F(PulseFormTest, TheLargestDelayAndWidthDoNotWrap) {
    setForm(0, 0, UINT32_MAX, UINT32_MAX);
    runQueued(0, 100);
    sendSoftware(0);
    system.advanceTo(1ULL << 34);
    EXPECT_EQ(formRises(0, 0), Ticks{UINT32_MAX});
    EXPECT_EQ(formFalls(0, 0), Ticks{2ULL * UINT32_MAX});
}

TEST_F(PulseFormTest, DownscaleAndSelectedPulseShareTheFramesOut) {
    for (unsigned form = 0; form < pulseFormCount; ++form)
        setForm(0, form, 0, 10, 4, form + 1);
    runFree(0, 100);
    system.advanceTo(799);
    for (unsigned form = 0; form < pulseFormCount; ++form)
        EXPECT_EQ(formRises(0, form), (Ticks{100 * form, 400 + 100 * form}));
}

TEST_F(PulseFormTest, WithADownscaleDelayAndWidthMayReachBeyondThePeriod) {
    setForm(0, 0, 299, 299, 3, 2);
    runFree(0, 100);
    system.advanceTo(1300);
    EXPECT_EQ(formRises(0, 0), (Ticks{399, 699, 999, 1299}));
    EXPECT_FALSE(overridden());
}

TEST_F(PulseFormTest, TheDownscaleStartsAgainOnItsClear) {
    setForm(0, 3, 0, 10, 3, 1);
    runFree(0, 100);
    system.advanceTo(150);
    set(0, "PulseFormGenerators_PulseFormGenerator3_ClearDownscale_Mode", 2);
    system.advanceTo(550);
    EXPECT_EQ(formRises(0, 3), (Ticks{0, 200, 500}));
}

TEST_F(PulseFormTest, HeldInClearItLetsNoPulsePassAndEndsTheOneInFlight) {
    setForm(0, 0, 30, 30);
    runFree(0, 100);
    system.advanceTo(110);
    set(0, "PulseFormGenerators_PulseFormGenerator0_ClearDownscale_Mode", 1);
    system.advanceTo(1000);
    EXPECT_EQ(formRises(0, 0), (Ticks{30, 130}));
    EXPECT_EQ(formFalls(0, 0), (Ticks{60, 160}));
}

TEST_F(PulseFormTest, ClearingTheGeneratorLetsThePulseInFlightComplete) {
    setForm(0, 0, 30, 50);
    runFree(0, 100);
    system.advanceTo(110);
    set(0, "Generators_ClearQueuePulse_Mode", 1);
    system.advanceTo(1000);
    EXPECT_EQ(formRises(0, 0), (Ticks{30, 130}));
    EXPECT_EQ(formFalls(0, 0), (Ticks{80, 180}));
}

TEST_F(PulseFormTest, DisabledTheyTakeAndCountNoPulsesAndEndTheOneInFlight) {
    setForm(0, 0, 30, 50, 2, 1);
    runFree(0, 100);
    system.advanceTo(10);
    set(0, "PulseFormGenerators_Enable_Select", 0);
    system.advanceTo(350);
    EXPECT_EQ(formRises(0, 0), Ticks{30});
    EXPECT_EQ(formFalls(0, 0), Ticks{80});
    set(0, "PulseFormGenerators_Enable_Select", 1);
    system.advanceTo(950);
    EXPECT_EQ(formRises(0, 0), (Ticks{30, 530, 730, 930}));
}

TEST_F(PulseFormTest, NewDelaysAndWidthsHoldFromTheirNextBeginning) {
    setForm(0, 0, 30, 30);
    runFree(0, 200);
    system.advanceTo(10);
    setForm(0, 0, 60, 40);
    system.advanceTo(50);
    setForm(0, 0, 60, 20);
    system.advanceTo(399);
    EXPECT_EQ(formRises(0, 0), (Ticks{30, 260}));
    EXPECT_EQ(formFalls(0, 0), (Ticks{70, 280}));
}

TEST_F(PulseFormTest, SlaveModeFollowsPortZerosPulses) {
    setForm(0, 0, 0, 10);
    setForm(1, 0, 7, 20);
    set(1, "PulseFormGenerators_Enable_Select", 1);
    set(1, "Synchronize_SlaveMode_Select", 1);
    runFree(0, 100);
    system.advanceTo(250);
    EXPECT_EQ(formRises(1, 0), (Ticks{7, 107, 207}));
    EXPECT_EQ(formFalls(1, 0), (Ticks{27, 127, 227}));
    EXPECT_TRUE(generatorPulses(1).empty());
    EXPECT_EQ(formRises(0, 0), (Ticks{0, 100, 200}));
}

TEST_F(PulseFormTest, InSlaveModePortOnesOwnPulsesReachNothing) {
    setForm(1, 0, 0, 10);
    runFree(1, 100);
    set(1, "Synchronize_SlaveMode_Select", 1);
    system.advanceTo(450);
    EXPECT_EQ(formRises(1, 0), Ticks{0}) << "the pulse of before slave mode";
    EXPECT_EQ(generatorPulses(1).size(), 5U);
    set(1, "Synchronize_SlaveMode_Select", 0);
    system.advanceTo(550);
    EXPECT_EQ(formRises(1, 0), (Ticks{0, 500}));
}

TEST_F(PulseFormTest, ASlavePulseLostIsPortOnesOverride) {
    setForm(0, 0, 0, 10);
    setForm(1, 0, 0, 101);
    set(1, "PulseFormGenerators_Enable_Select", 1);
    set(1, "Synchronize_SlaveMode_Select", 1);
    runFree(0, 100);
    system.advanceTo(250);
    EXPECT_FALSE(overridden(0));
    EXPECT_TRUE(overridden(1));
}

} // namespace

} // namespace simulator
