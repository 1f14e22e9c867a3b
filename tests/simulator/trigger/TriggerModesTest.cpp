#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

/// The register procedures that a driver of the board uses to start and stop a port.
class TriggerModesTest : public TriggerBench {
  protected:
    void outputsOff(unsigned port) { selectOutputs(port, 5); }
    void outputsOn(unsigned port) { selectOutputs(port, 0); }
    void holdGenerator(unsigned port) { set(port, "Generators_ClearQueuePulse_Mode", 1); }
    void clearForms(unsigned port) {
        setShared("Monitoring_CheckForMissingFrame_Cam" + std::to_string(port) + "_ResetMissing_Mode", 2);
        for (const char* form : {"0", "1", "2", "3"})
            set(port, std::string("PulseFormGenerators_PulseFormGenerator") + form + "_ClearDownscale_Mode",
                2);
    }
    void arm(unsigned port, Tick period) {
        outputsOff(port);
        set(port, "Downscale_Clear_Mode", 2);
        runQueued(port, period);
        set(port, "Generators_ClearDownscale_Mode", 2);
        clearForms(port);
        outputsOn(port);
    }
    Ticks outputRises(unsigned port) const { return recorder.ticksOf(TriggerSignalKind::Output, port, 0, 1); }
    Ticks outputFalls(unsigned port) const { return recorder.ticksOf(TriggerSignalKind::Output, port, 0, 0); }

  private:
    void selectOutputs(unsigned port, std::uint32_t source) {
        for (const char* output : {"0", "1", "2", "3"})
            set(port, std::string("TriggerOutput_Select") + output + "_Select_Select", source);
    }
};

TEST_F(TriggerModesTest, ASynchronousStopLetsThePulseInFlightComplete) {
    setForm(0, 0, 0, 60);
    runFree(0, 100);
    system.advanceTo(230);
    holdGenerator(0);
    system.advanceTo(1000);
    EXPECT_EQ(outputRises(0), (Ticks{0, 100, 200}));
    EXPECT_EQ(outputFalls(0), (Ticks{60, 160, 260}));
}

TEST_F(TriggerModesTest, AnAsynchronousStopCutsTheOutputsAtOnce) {
    setForm(0, 0, 0, 60);
    runFree(0, 100);
    system.advanceTo(230);
    outputsOff(0);
    holdGenerator(0);
    system.advanceTo(1000);
    EXPECT_EQ(outputRises(0), (Ticks{0, 100, 200}));
    EXPECT_EQ(outputFalls(0), (Ticks{60, 160, 230}));
}

TEST_F(TriggerModesTest, AChangeFromGeneratorToExternalLosesAndInventsNoPulse) {
    setForm(0, 0, 0, 20);
    system.driveInput(0, {50, 30, 70, 20});
    runFree(0, 40);
    system.advanceTo(525);
    arm(0, 40);
    const Tick change = system.now();
    set(0, "TriggerMode_SelectExternal_Select", 1);
    recorder.clear();
    system.advanceTo(5000);
    EXPECT_EQ(change, 525U);
    const Ticks expected{550, 650, 750, 850, 950, 1050, 1150, 1250, 1350, 1450, 1550, 1650, 1750, 1850, 1950};
    EXPECT_EQ(outputRises(0), expected);
    EXPECT_EQ(generatorPulses(0), expected);
}

TEST_F(TriggerModesTest, ASynchronousStopOfTheExternalModeDetachesTheInputAndEmptiesTheQueueInTime) {
    setForm(0, 0, 0, 20);
    arm(0, 100);
    set(0, "TriggerMode_SelectExternal_Select", 1);
    system.driveInput(0, {10, 5, 45, 0});
    system.advanceTo(205);
    set(0, "TriggerMode_SelectExternal_Select", 0);
    system.advanceTo(2000);
    EXPECT_EQ(generatorPulses(0), (Ticks{10, 110, 210, 310}));
}

TEST_F(TriggerModesTest, SoftwareTriggersOfOneTickComeAtTheSetRate) {
    setForm(0, 0, 0, 20);
    arm(0, 1000);
    sendSoftware(0, 2040);
    system.advanceTo(2040U * 1000U);
    EXPECT_EQ(outputRises(0).size(), 2040U);
    EXPECT_EQ(recorder.actionCommands.size(), 2040U);
    EXPECT_EQ(outputRises(0).back(), 2039U * 1000U);
}

TEST_F(TriggerModesTest, ASynchronizedPortStartsAndStopsByItsEnableRegister) {
    setForm(0, 0, 0, 20);
    setForm(1, 0, 10, 20);
    runFree(0, 100);
    outputsOff(1);
    set(1, "Synchronize_SlaveMode_Select", 1);
    clearForms(1);
    outputsOn(1);
    system.advanceTo(150);
    EXPECT_TRUE(outputRises(1).empty());
    set(1, "PulseFormGenerators_Enable_Select", 1);
    system.advanceTo(350);
    set(1, "PulseFormGenerators_Enable_Select", 0);
    system.advanceTo(1000);
    EXPECT_EQ(outputRises(1), (Ticks{210, 310}));
}

} // namespace

} // namespace simulator
