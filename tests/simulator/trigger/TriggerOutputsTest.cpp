#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

class TriggerOutputsTest : public TriggerBench {
  protected:
    void select(unsigned port, unsigned output, std::uint32_t source, std::uint32_t polarity) {
        const std::string beginning = "TriggerOutput_Select" + std::to_string(output) + "_";
        set(port, beginning + "Select_Select", source);
        set(port, beginning + "Polarity_Invert", polarity);
    }
    void selectCamera(unsigned port, std::uint32_t source, std::uint32_t polarity) {
        set(port, "TriggerCamera_SelectTriggerCamera_Select_Select", source);
        set(port, "TriggerCamera_SelectTriggerCamera_Polarity_Invert", polarity);
    }
    Ticks rises(unsigned port, unsigned output) const {
        return recorder.ticksOf(TriggerSignalKind::Output, port, output, 1);
    }
    Ticks falls(unsigned port, unsigned output) const {
        return recorder.ticksOf(TriggerSignalKind::Output, port, output, 0);
    }
    Ticks commands(unsigned port) const {
        return recorder.ticksOf(TriggerSignalKind::ActionCommand, port, 0, 1);
    }
    std::uint32_t level(unsigned port, unsigned output) const {
        return system.signalValue({TriggerSignalKind::Output, port, output});
    }
    std::uint32_t pending(unsigned port) {
        return get(port, "TriggerCamera_ActionCommand_PendingActionCmdCount");
    }
    bool missingFrame(unsigned port) {
        return (getShared("Monitoring_ReadQueueStatus_Status") & (port == 0 ? 4U : 32U)) != 0;
    }
};

TEST_F(TriggerOutputsTest, EachOutputCarriesTheGeneratorThatItSelects) {
    for (unsigned form = 0; form < pulseFormCount; ++form)
        setForm(1, form, 10 * form, 5);
    for (unsigned output = 0; output < triggerOutputCount; ++output)
        select(1, output, 3 - output, 0);
    runFree(1, 100);
    system.advanceTo(99);
    for (unsigned output = 0; output < triggerOutputCount; ++output) {
        const Tick delay = 10 * (3 - output);
        EXPECT_EQ(rises(1, output), Ticks{delay});
        EXPECT_EQ(falls(1, output), Ticks{delay + 5});
        EXPECT_TRUE(rises(0, output).empty());
    }
}

TEST_F(TriggerOutputsTest, ListenersHearOutputsAndActionCommandsByName) {
    setForm(1, 0, 0, 5);
    select(1, 1, 4, 0);
    runFree(1, 100);
    system.advanceTo(50);
    ASSERT_EQ(recorder.outputs.size(), 6U);
    EXPECT_EQ(recorder.outputs[0].port, 1U);
    EXPECT_EQ(recorder.outputs[1].output, 2U);
    EXPECT_TRUE(recorder.outputs[2].level);
    EXPECT_FALSE(recorder.outputs[5].level);
    EXPECT_EQ(recorder.outputs[5].tick, 5U);
    ASSERT_EQ(recorder.actionCommands.size(), 1U);
    EXPECT_EQ(recorder.actionCommands[0].port, 1U);
    EXPECT_EQ(recorder.actionCommands[0].tick, 0U);
}

TEST_F(TriggerOutputsTest, PolarityInvertsTheGenerator) {
    setForm(0, 0, 20, 5);
    select(0, 0, 0, 1);
    EXPECT_EQ(rises(0, 0), Ticks{0}) << "inverted, the output stands high at rest";
    runFree(0, 100);
    system.advanceTo(99);
    EXPECT_EQ(falls(0, 0), Ticks{20});
    EXPECT_EQ(rises(0, 0), (Ticks{0, 25}));
}

TEST_F(TriggerOutputsTest, SourceFiveAndAboveAreTheConstantLevel) {
    setForm(0, 0, 0, 50);
    runFree(0, 100);
    system.advanceTo(10);
    EXPECT_EQ(level(0, 0), 1U);
    for (const std::uint32_t source : {5U, 6U, 7U, 8U, UINT32_MAX}) {
        select(0, 0, source, 0);
        EXPECT_EQ(level(0, 0), 0U) << source;
        select(0, 0, source, 1);
        EXPECT_EQ(level(0, 0), 1U) << source;
    }
}

TEST_F(TriggerOutputsTest, SwitchingToTheConstantCutsAnOutputAtOnce) {
    setForm(0, 0, 0, 50);
    runFree(0, 100);
    system.advanceTo(10);
    set(0, "TriggerOutput_Select0_Select_Select", 5);
    EXPECT_EQ(falls(0, 0), Ticks{10});
    EXPECT_EQ(level(0, 1), 1U);
    system.advanceTo(1000);
    EXPECT_EQ(rises(0, 0), Ticks{0});
}

TEST_F(TriggerOutputsTest, TheBypassCarriesItsAcceptedPinWhateverTheInputPolarity) {
    set(0, "InputSelect_BypassSelect_Select", 6);
    set(0, "InputSelect_Polarity_Invert", 1);
    select(0, 2, 4, 0);
    select(0, 3, 4, 1);
    setShared("TriggerInput_Debounce8_Prescale_Period", 2);
    recorder.clear();
    system.scheduleInput(6, true, 100);
    system.scheduleInput(6, false, 200);
    system.advanceTo(300);
    EXPECT_EQ(rises(0, 2), Ticks{106});
    EXPECT_EQ(falls(0, 2), Ticks{206});
    EXPECT_EQ(falls(0, 3), Ticks{106});
    EXPECT_EQ(rises(0, 3), Ticks{206});
}

TEST_F(TriggerOutputsTest, EachRisingEdgeOfTheCameraTriggerIsOneActionCommand) {
    setForm(0, 1, 15, 20);
    selectCamera(0, 1, 0);
    runFree(0, 100);
    system.advanceTo(300);
    EXPECT_EQ(commands(0), (Ticks{15, 115, 215}));
    EXPECT_EQ(pending(0), 3U);
    EXPECT_TRUE(commands(1).empty());
}

TEST_F(TriggerOutputsTest, AnInvertedCameraTriggerFiresAtThePulsesEnd) {
    setForm(0, 1, 15, 20);
    selectCamera(0, 1, 1);
    recorder.clear();
    runFree(0, 100);
    system.advanceTo(300);
    EXPECT_EQ(commands(0), (Ticks{35, 135, 235}));
}

TEST_F(TriggerOutputsTest, TheOutputsConstantLeavesTheCameraTriggerAlone) {
    setForm(0, 0, 0, 20);
    for (unsigned output = 0; output < triggerOutputCount; ++output)
        select(0, output, 5, 0);
    runFree(0, 100);
    system.advanceTo(300);
    EXPECT_TRUE(recorder.outputs.empty());
    EXPECT_EQ(commands(0).size(), 4U);
}

TEST_F(TriggerOutputsTest, FrameStartsAnswerActionCommands) {
    setForm(0, 0, 0, 20);
    runFree(0, 100);
    system.frameStarted(0, 50);
    EXPECT_EQ(pending(0), 0U);
    system.frameArrived(0, 90);
    system.advanceTo(100);
    EXPECT_EQ(pending(0), 1U);
    EXPECT_FALSE(missingFrame(0));
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::FrameStart, 0), Ticks{50});
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::FrameEnd, 0), Ticks{90});
}

TEST_F(TriggerOutputsTest, AFrameThatNobodyAskedForIsNoDebt) {
    system.frameStarted(1, 50);
    EXPECT_EQ(pending(1), 0U);
    setForm(1, 0, 0, 20);
    runFree(1, 100);
    EXPECT_EQ(pending(1), 1U);
}

TEST_F(TriggerOutputsTest, ACommandBeforeTheAnswerToTheLastRaisesMissingFrame) {
    setForm(1, 0, 0, 20);
    runFree(1, 100);
    system.frameStarted(1, 99);
    system.advanceTo(199);
    EXPECT_FALSE(missingFrame(1));
    system.advanceTo(200);
    EXPECT_TRUE(missingFrame(1));
    EXPECT_FALSE(missingFrame(0));
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::MissingFrame, 1), Ticks{200});
    EXPECT_EQ(pending(1), 2U);
}

TEST_F(TriggerOutputsTest, AfterAMissingFrameAnsweredCommandsRaiseNothingMore) {
    setForm(0, 0, 0, 20);
    runFree(0, 100);
    system.advanceTo(100);
    EXPECT_TRUE(missingFrame(0));
    setShared("Monitoring_ClearMissingFrame_Cam0_Mode", 2);
    for (Tick tick = 150; tick < 1000; tick += 100)
        system.frameStarted(0, tick);
    system.advanceTo(999);
    EXPECT_FALSE(missingFrame(0));
    EXPECT_EQ(pending(0), 1U) << "the unanswered one stays counted";
}

TEST_F(TriggerOutputsTest, TheResetForgetsWhatIsOpen) {
    setForm(0, 0, 0, 20);
    runFree(0, 100);
    setShared("Monitoring_CheckForMissingFrame_Cam0_ResetMissing_Mode", 2);
    EXPECT_EQ(pending(0), 0U);
    system.advanceTo(100);
    EXPECT_FALSE(missingFrame(0));
    system.advanceTo(200);
    EXPECT_TRUE(missingFrame(0));
    setShared("Monitoring_CheckForMissingFrame_Cam0_ResetMissing_Mode", 2);
    EXPECT_TRUE(missingFrame(0)) << "the flag has a clear of its own";
}

TEST_F(TriggerOutputsTest, HeldInResetTheCheckCountsNothing) {
    setForm(0, 0, 0, 20);
    setShared("Monitoring_CheckForMissingFrame_Cam0_ResetMissing_Mode", 1);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_EQ(pending(0), 0U);
    EXPECT_FALSE(missingFrame(0));
    EXPECT_EQ(commands(0).size(), 11U);
}

TEST_F(TriggerOutputsTest, TheMissingFrameFlagIsHeldDownByTheLevelOfItsClear) {
    setForm(0, 0, 0, 20);
    setShared("Monitoring_ClearMissingFrame_Cam0_Mode", 1);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_FALSE(missingFrame(0));
    EXPECT_TRUE(recorder.ticksOf(TriggerEventKind::MissingFrame, 0).empty());
}

TEST_F(TriggerOutputsTest, OutputStatisticsCountTheSelectedGeneratorAndWrapAt65536) {
    setForm(0, 0, 0, 5);
    setForm(0, 2, 0, 5, 2, 1);
    set(0, "OutputStatistics_Select_Select", 2);
    runFree(0, 10);
    system.advanceTo(99);
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), 5U);
    set(0, "OutputStatistics_Select_Select", 0);
    system.advanceTo(10 * (65535U - 5U + 10U) - 1);
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), 65535U);
    advanceBy(1);
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), 0U);
}

TEST_F(TriggerOutputsTest, OutputStatisticsAreClearedByAPulseAndHeldByALevel) {
    setForm(0, 0, 0, 5);
    runFree(0, 100);
    set(0, "OutputStatistics_ClearPulses_Mode", 2);
    system.advanceTo(250);
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), 2U);
    set(0, "OutputStatistics_ClearPulses_Mode", 1);
    system.advanceTo(550);
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), 0U);
}

TEST_F(TriggerOutputsTest, TheOutputEventFollowsTheSelectedGenerator) {
    setForm(0, 0, 0, 5);
    setForm(0, 3, 33, 5, 2, 2);
    set(0, "OutputEvent_Select_Select", 3);
    runFree(0, 100);
    system.advanceTo(500);
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::OutputEvent, 0), (Ticks{133, 333}));
}

TEST_F(TriggerOutputsTest, ARemovedListenerHearsNothingMore) {
    setForm(0, 0, 0, 5);
    runFree(0, 100);
    const std::size_t heard = recorder.signals.size();
    system.removeListener(recorder);
    system.advanceTo(1000);
    EXPECT_GT(heard, 0U);
    EXPECT_EQ(recorder.signals.size(), heard);
}

/// A camera so fast that its picture begins within the tick of the command.
class InstantCamera : public TriggerListener {
  public:
    explicit InstantCamera(TriggerSystem& system) : mSystem(system) {}
    void cameraActionCommand(unsigned port, Tick tick) override {
        mSystem.frameStarted(port, tick);
        mSystem.frameArrived(port, tick);
    }

  private:
    TriggerSystem& mSystem;
};

TEST_F(TriggerOutputsTest, AListenerMayAnswerACommandFromWithinTheCall) {
    InstantCamera camera(system);
    system.addListener(camera);
    setForm(0, 0, 0, 5);
    runFree(0, 100);
    system.advanceTo(1000);
    EXPECT_EQ(pending(0), 0U);
    EXPECT_FALSE(missingFrame(0));
    EXPECT_EQ(recorder.ticksOf(TriggerEventKind::FrameEnd, 0).size(), 11U);
}

} // namespace

} // namespace simulator
