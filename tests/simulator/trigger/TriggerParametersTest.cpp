#include "tests/simulator/trigger/TriggerBench.h"

#include <set>

namespace simulator {

namespace {

using TriggerParametersTest = TriggerBench;

TEST_F(TriggerParametersTest,
       HaveSixtyThreeRegistersForEachCameraSlaveModeAndSevenMonitoringAndTwoInputOnes) {
    std::size_t cameras = 0;
    std::size_t monitoring = 0;
    std::size_t inputs = 0;
    std::set<std::string> names;
    for (const TriggerParameter& parameter : triggerParameters()) {
        names.insert(parameter.name);
        cameras += parameter.name.find("_Trigger_TriggerCam") != std::string::npos ? 1 : 0;
        monitoring += parameter.name.find("_Trigger_Monitoring_") != std::string::npos ? 1 : 0;
        inputs += parameter.name.find("_Trigger_TriggerInput_") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(names.size(), triggerParameters().size());
    EXPECT_EQ(cameras, 62U + 63U);
    EXPECT_EQ(monitoring, 7U);
    EXPECT_EQ(inputs, 2U);
    EXPECT_EQ(names.size(), cameras + monitoring + inputs);
}

TEST_F(TriggerParametersTest, AreFoundByTheirFullNameOnly) {
    for (std::size_t index = 0; index < triggerParameters().size(); ++index)
        EXPECT_EQ(findTriggerParameter(triggerParameters()[index].name), index);
    EXPECT_FALSE(findTriggerParameter("").has_value());
    EXPECT_FALSE(findTriggerParameter("TriggerCam0_Downscale_Clear_Mode").has_value());
    EXPECT_FALSE(findTriggerParameter(cameraRegisterName(2, "Downscale_Clear_Mode")).has_value());
}

TEST_F(TriggerParametersTest, GiveSlaveModeToPortOneAlone) {
    EXPECT_FALSE(findTriggerParameter(cameraRegisterName(0, "Synchronize_SlaveMode_Select")).has_value());
    EXPECT_TRUE(findTriggerParameter(cameraRegisterName(1, "Synchronize_SlaveMode_Select")).has_value());
}

TEST_F(TriggerParametersTest, ReadBackWhatWasWritten) {
    for (std::size_t index = 0; index < triggerParameters().size(); ++index) {
        if (triggerParameters()[index].readOnly)
            continue;
        const auto value = static_cast<std::uint32_t>(0xFFFFFF00U + index);
        EXPECT_TRUE(system.write(index, value, system.now()));
        EXPECT_EQ(system.read(index, system.now()), value) << triggerParameters()[index].name;
    }
}

TEST_F(TriggerParametersTest, RefuseWritesToStatusRegisters) {
    std::size_t refused = 0;
    for (std::size_t index = 0; index < triggerParameters().size(); ++index) {
        if (!triggerParameters()[index].readOnly)
            continue;
        const std::uint32_t before = system.read(index, system.now());
        EXPECT_FALSE(system.write(index, before + 1, 100));
        EXPECT_EQ(system.read(index, system.now()), before);
        ++refused;
    }
    EXPECT_EQ(refused, 8U * 2U + 2U);
    EXPECT_EQ(system.now(), 0U) << "a refused write moves no time";
}

TEST_F(TriggerParametersTest, UnknownNamesAndIndicesAreRefused) {
    EXPECT_FALSE(system.write("Device1_Process2_Trigger_Nothing", 1, 5));
    EXPECT_FALSE(system.read("Device1_Process2_Trigger_Nothing", 5).has_value());
    EXPECT_THROW(system.write(triggerParameters().size(), 1, 5), std::out_of_range);
    EXPECT_THROW(system.read(triggerParameters().size(), 5), std::out_of_range);
    EXPECT_THROW(system.setInput(8, true, 5), std::out_of_range);
    EXPECT_THROW(system.scheduleInput(8, true, 5), std::out_of_range);
    EXPECT_THROW(system.driveInput(8, {1, 1, 1, 1}), std::out_of_range);
    EXPECT_THROW(system.frameStarted(2, 5), std::out_of_range);
    EXPECT_THROW(system.frameArrived(2, 5), std::out_of_range);
}

TEST_F(TriggerParametersTest, PowerOnIsIdleAndHeldInClear) {
    advanceBy(1000000);
    EXPECT_TRUE(recorder.signals.empty());
    EXPECT_EQ(system.nextActivity(), neverTick);
    for (unsigned port = 0; port < triggerPortCount; ++port) {
        EXPECT_EQ(get(port, "Generators_ClearQueuePulse_Mode"), 1U);
        EXPECT_EQ(get(port, "Generators_Generator_MaximumReached_Status"), 1U);
        EXPECT_EQ(get(port, "Generators_Queue_QueueFullValue_Number"), 2040U);
        EXPECT_EQ(get(port, "Downscale_Downscale_Downscale"), 1U);
        EXPECT_EQ(get(port, "PulseFormGenerators_PulseFormGenerator3_Downscale_SelectedPulse"), 1U);
    }
    EXPECT_EQ(getShared("Monitoring_ReadQueueStatus_Status"), 0U);
}

TEST_F(TriggerParametersTest, ATickInThePastCountsAsThePresent) {
    system.advanceTo(1000);
    system.advanceTo(10);
    EXPECT_EQ(system.now(), 1000U);
    system.write(cameraRegisterName(0, "InputSelect_Polarity_Invert"), 1, 10);
    system.setInput(3, true, 20);
    EXPECT_EQ(system.now(), 1000U);
    EXPECT_EQ(recorder.ticksOf(TriggerSignalKind::Input, 0, 3, 1), Ticks{1000});
}

TEST_F(TriggerParametersTest, EventsCarryTheDesignsNames) {
    ASSERT_EQ(triggerEvents().size(), 30U);
    std::set<std::string> names;
    for (std::size_t index = 0; index < triggerEvents().size(); ++index) {
        EXPECT_EQ(triggerEventIndex(triggerEvents()[index]), index);
        names.insert(designEventName(triggerEvents()[index]));
    }
    EXPECT_EQ(names.size(), 30U);
    const std::string begin = "Device1_Process2_Trigger_";
    for (const char* name :
         {"TriggerInput_InputEvents_InputEvents_Pin7", "TriggerInput_InputEvents_InputEvents_NotPin0",
          "Monitoring_FVALEvents_Cam0_FrameStart", "Monitoring_FVALEvents_Cam1_FrameEnd",
          "Monitoring_MonitoringEvents_Cam1Override", "Monitoring_MonitoringEvents_Cam0MissingFrame",
          "Monitoring_MonitoringEvents_Cam1HysteresisOn", "Monitoring_MonitoringEvents_Cam0HysteresisOff",
          "Monitoring_MonitoringEvents_Cam1OutputEvent"})
        EXPECT_EQ(names.count(begin + name), 1U) << name;
}

} // namespace

} // namespace simulator
