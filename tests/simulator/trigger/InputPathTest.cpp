#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

class InputPathTest : public TriggerBench {
  protected:
    void listenTo(unsigned port, unsigned pin) {
        set(port, "InputSelect_Select_Select", pin);
        set(port, "TriggerMode_SelectExternal_Select", 1);
        runQueued(port, 10);
    }
};

TEST_F(InputPathTest, TheSelectedPinsRisingEdgeBecomesAPulseInTheSameTick) {
    listenTo(0, 3);
    system.scheduleInput(3, true, 100);
    system.scheduleInput(3, false, 150);
    system.scheduleInput(2, true, 120);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0), Ticks{100});
    EXPECT_TRUE(generatorPulses(1).empty());
}

TEST_F(InputPathTest, LowActivePolarityTakesFallingEdges) {
    system.setInput(3, true, 10);
    set(0, "InputSelect_Polarity_Invert", 1);
    listenTo(0, 3);
    recorder.clear();
    system.scheduleInput(3, false, 100);
    system.scheduleInput(3, true, 150);
    system.scheduleInput(3, false, 200);
    system.advanceTo(1000);
    EXPECT_EQ(generatorPulses(0), (Ticks{100, 200}));
}

TEST_F(InputPathTest, ASwitchOfPolarityOrPinIsAnEdgeWhenTheLevelRises) {
    listenTo(0, 3);
    system.advanceTo(100);
    set(0, "InputSelect_Polarity_Invert", 1);
    EXPECT_EQ(generatorPulses(0), Ticks{100});
    system.advanceTo(200);
    set(0, "InputSelect_Polarity_Invert", 0);
    system.setInput(6, true, 300);
    set(0, "InputSelect_Select_Select", 6);
    EXPECT_EQ(generatorPulses(0), (Ticks{100, 300}));
}

TEST_F(InputPathTest, WithoutSelectExternalNothingPasses) {
    listenTo(0, 0);
    set(0, "TriggerMode_SelectExternal_Select", 0);
    pulseInput(0);
    EXPECT_TRUE(generatorPulses(0).empty());
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 1U) << "the statistics stand before the selection";
}

TEST_F(InputPathTest, WithSelectExternalTheSoftwareTriggerIsOff) {
    listenTo(0, 0);
    sendSoftware(0);
    EXPECT_TRUE(generatorPulses(0).empty());
}

TEST_F(InputPathTest, TheDownscaleLetsTheSelectedPulsePass) {
    listenTo(0, 0);
    set(0, "Downscale_Downscale_Downscale", 4);
    set(0, "Downscale_Downscale_SelectedPulse", 2);
    system.driveInput(0, {100, 10, 90, 12});
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0), (Ticks{200, 600, 1000}));
}

TEST_F(InputPathTest, TheDownscaleStartsAgainOnItsClear) {
    listenTo(0, 0);
    set(0, "Downscale_Downscale_Downscale", 3);
    set(0, "Downscale_Downscale_SelectedPulse", 1);
    system.driveInput(0, {100, 10, 90, 5});
    system.advanceTo(250);
    set(0, "Downscale_Clear_Mode", 2);
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0), (Ticks{100, 300}));
}

TEST_F(InputPathTest, TheDownscaleHeldInClearLetsNothingPass) {
    listenTo(0, 0);
    set(0, "Downscale_Clear_Mode", 1);
    pulseInput(0);
    EXPECT_TRUE(generatorPulses(0).empty());
    set(0, "Downscale_Clear_Mode", 0);
    pulseInput(0);
    EXPECT_EQ(generatorPulses(0).size(), 1U);
}

TEST_F(InputPathTest, ASelectedPulseOutsideTheDownscaleLetsNothingPass) {
    listenTo(0, 0);
    for (const std::uint32_t selected : {0U, 3U, 4U}) {
        set(0, "Downscale_Downscale_Downscale", 2);
        set(0, "Downscale_Downscale_SelectedPulse", selected);
        for (unsigned pulse = 0; pulse < 8; ++pulse)
            pulseInput(0);
    }
    EXPECT_TRUE(generatorPulses(0).empty());
}

TEST_F(InputPathTest, ADownscaleOfZeroActsAsOne) {
    listenTo(0, 0);
    set(0, "Downscale_Downscale_Downscale", 0);
    system.driveInput(0, {100, 10, 90, 3});
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0).size(), 3U);
}

TEST_F(InputPathTest, ADownscaleLoweredBelowTheCountStartsAgainWithTheNextPulse) {
    listenTo(0, 0);
    set(0, "Downscale_Downscale_Downscale", 10);
    set(0, "Downscale_Downscale_SelectedPulse", 10);
    system.driveInput(0, {100, 10, 90, 10});
    system.advanceTo(650);
    set(0, "Downscale_Downscale_SelectedPulse", 2);
    set(0, "Downscale_Downscale_Downscale", 2);
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0), (Ticks{900}));
}

TEST_F(InputPathTest, BothPortsCanListenToOnePin) {
    listenTo(0, 1);
    listenTo(1, 1);
    system.driveInput(1, {100, 10, 90, 3});
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0), (Ticks{100, 200, 300}));
    EXPECT_EQ(generatorPulses(1), generatorPulses(0));
}

TEST_F(InputPathTest, StatisticsCountPulsesAndMeasurePeriodsBeforeTheDownscale) {
    set(0, "Downscale_Downscale_Downscale", 4);
    for (const Tick rise : {1000U, 1500U, 1600U, 2400U, 2700U}) {
        system.setInput(0, true, rise);
        system.setInput(0, false, rise + 10);
    }
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 5U);
    EXPECT_EQ(get(0, "InputStatistics_ReadPeriod_Status"), 300U);
    EXPECT_EQ(get(0, "InputStatistics_ReadMax_Status"), 800U);
    EXPECT_EQ(get(0, "InputStatistics_ReadMin_Status"), 100U);
}

TEST_F(InputPathTest, PeriodsAreZeroUntilOneWasMeasured) {
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPeriod_Status"), 0U);
    EXPECT_EQ(get(0, "InputStatistics_ReadMax_Status"), 0U);
    EXPECT_EQ(get(0, "InputStatistics_ReadMin_Status"), 0U);
}

TEST_F(InputPathTest, APeriodStopsAtTheLargestValue) {
    pulseInput(0);
    system.advanceTo(1ULL << 33);
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPeriod_Status"), UINT32_MAX);
    EXPECT_EQ(get(0, "InputStatistics_ReadMax_Status"), UINT32_MAX);
}

TEST_F(InputPathTest, TheInputCountWrapsAt65536) {
    system.driveInput(0, {1, 1, 1, 65535});
    system.advanceTo(200000);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 65535U);
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 0U);
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 1U);
}

TEST_F(InputPathTest, TheInputCountIsClearedByAPulseAndHeldByALevel) {
    pulseInput(0);
    set(0, "InputStatistics_ClearPulses_Mode", 2);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 0U);
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 1U);
    set(0, "InputStatistics_ClearPulses_Mode", 1);
    pulseInput(0);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 0U);
}

TEST_F(InputPathTest, MinAndMaxAreClearedByEachToggleOfTheLevelAndBySameValuesNot) {
    const auto measure = [this](Tick period) {
        for (unsigned pulse = 0; pulse < 2; ++pulse) {
            system.setInput(0, true, system.now() + period - 1);
            system.setInput(0, false, system.now() + 1);
        }
    };
    std::uint32_t level = 0;
    for (const Tick period : {100U, 50U, 200U}) {
        measure(period);
        level ^= 1U;
        set(0, "InputStatistics_ClearMinMax_Value", level);
        EXPECT_EQ(get(0, "InputStatistics_ReadMin_Status"), 0U);
        EXPECT_EQ(get(0, "InputStatistics_ReadMax_Status"), 0U);
        EXPECT_EQ(get(0, "InputStatistics_ReadPeriod_Status"), period) << "the last period stays";
        measure(period);
        set(0, "InputStatistics_ClearMinMax_Value", level);
        EXPECT_EQ(get(0, "InputStatistics_ReadMin_Status"), period);
        EXPECT_EQ(get(0, "InputStatistics_ReadMax_Status"), period);
    }
}

} // namespace

} // namespace simulator
