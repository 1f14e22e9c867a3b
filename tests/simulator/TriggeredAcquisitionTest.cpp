#include "simulator/RuntimeCodes.h"
#include "tests/simulator/OpenDesign.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace simulator {
namespace {

using tests::OpenDesign;

constexpr std::uint64_t second = BoardClock::ticksPerSecond;
constexpr std::uint32_t stop = 5;
constexpr std::uint32_t pulse = 2;

/// A triggered camera on port 0, whose generator and first pulse form lead to its action command.
class TriggeredAcquisitionTest : public testing::Test {
  protected:
    void SetUp() override {
        CameraSetup camera;
        camera.sensorWidth = 64;
        camera.sensorHeight = 32;
        camera.packetBytes = 36 + 96;
        camera.cablesCrossed = false;
        camera.exposureTicks = 1000;
        camera.readoutTicks = 2000;
        camera.freeRunningTicks = 0;
        mOpen.board().setCamera(0, camera);
        for (const std::string half : {"0", "1"}) {
            mOpen.set("Device1_Process0_Buffer_0_DRAM_A_" + half + "_XLength", 16);
            mOpen.set("Device1_Process0_Buffer_0_DRAM_A_" + half + "_YLength", 16);
        }
        set("PulseFormGenerators_PulseFormGenerator0_Width_Width", 100);
        set("TriggerCamera_SelectTriggerCamera_Select_Select", 0);
        set("PulseFormGenerators_Enable_Select", 1);
    }

    static std::string name(const std::string& rest) {
        return "Device1_Process2_Trigger_TriggerCam0_" + rest;
    }
    static std::string event(const std::string& rest) {
        return "Device1_Process2_Trigger_Monitoring_" + rest;
    }
    void set(const std::string& rest, std::uint32_t value) const {
        ASSERT_EQ(mOpen.set(name(rest), value), 0);
    }

    void startGenerator(std::uint32_t period) const {
        set("Generators_ClearQueuePulse_Mode", 1);
        set("Generators_EnableQueue_Select", 0);
        set("Generators_Generator_MinimumPeriod_Number", period - 9);
        set("Generators_ClearQueuePulse_Mode", 0);
    }

    void startQueue(std::uint32_t period) const {
        set("Generators_ClearQueuePulse_Mode", 1);
        set("Generators_EnableQueue_Select", 1);
        set("Generators_Generator_MinimumPeriod_Number", period - 9);
        set("Generators_ClearQueuePulse_Mode", 0);
    }

    OpenDesign mOpen;
};

TEST_F(TriggeredAcquisitionTest, NoPictureComesWithoutATrigger) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(mOpen.handle(), 1, 0, 10, nullptr), code::timeout);
    EXPECT_EQ(mOpen.board().exposures(0), 0u);
}

TEST_F(TriggeredAcquisitionTest, GeneratorExposesAtItsRate) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    startGenerator(second / 100);
    mOpen.board().clock().advance(second);
    const int pictures = Fg_getLastPicNumberEx(mOpen.handle(), 0, nullptr);
    EXPECT_GE(pictures, 99);
    EXPECT_LE(pictures, 101);
    EXPECT_EQ(mOpen.board().eventCount(event("FVALEvents_Cam0_FrameEnd")),
              static_cast<std::uint64_t>(pictures));
    EXPECT_EQ(mOpen.board().eventCount(event("MonitoringEvents_Cam0MissingFrame")), 0u);
}

TEST_F(TriggeredAcquisitionTest, EverySoftwareTriggerGivesAPicture) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    startQueue(second / 1000);
    for (int i = 0; i < 2040; ++i) {
        set("TriggerMode_SoftwareTrigger_Mode", pulse);
    }
    EXPECT_GT(mOpen.get(name("Generators_QueueValue_Status")), 2000u);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(mOpen.handle(), 2040, 0, 10, nullptr), 2040);
    mOpen.board().clock().advance(second);
    EXPECT_EQ(Fg_getLastPicNumberEx(mOpen.handle(), 0, nullptr), 2040);
    EXPECT_EQ(mOpen.get(name("Generators_QueueValue_Status")), 0u);
}

TEST_F(TriggeredAcquisitionTest, CameraThatSendsNothingLeavesAMissingFrame) {
    CameraSetup off = mOpen.board().camera(0);
    off.connected = false;
    mOpen.board().setCamera(0, off);
    startGenerator(second / 100);
    mOpen.board().clock().advance(second);
    EXPECT_GT(mOpen.board().eventCount(event("MonitoringEvents_Cam0MissingFrame")), 0u);
    EXPECT_NE(mOpen.get("Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status") & 4u, 0u);
}

TEST_F(TriggeredAcquisitionTest, ExternalEdgesExpose) {
    startQueue(second / 1000);
    set("InputSelect_Select_Select", 3);
    set("TriggerMode_SelectExternal_Select", 1);
    Board& board = mOpen.board();
    board.driveInput(3, true);
    board.driveInputAt(second / 2, 3, false);
    board.playInput(4, {second / 4, 1000, 1000, 3});
    board.clock().advance(second);
    EXPECT_EQ(board.exposures(0), 1u) << "pulses on another input do nothing";
    const std::string input = "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_";
    EXPECT_EQ(board.eventCount(input + "Pin3"), 1u);
    EXPECT_EQ(board.eventCount(input + "NotPin3"), 1u);
    EXPECT_EQ(board.eventCount(input + "Pin4"), 3u);
    EXPECT_THROW(board.driveInput(8, true), std::out_of_range);
    EXPECT_THROW(board.playInput(0, {0, 0, 0, 1}), std::invalid_argument);
}

TEST_F(TriggeredAcquisitionTest, TraceShowsCommandsAndExposures) {
    mOpen.board().startTrace(1000);
    startQueue(second / 1000);
    set("TriggerMode_SoftwareTrigger_Mode", pulse);
    mOpen.board().clock().advance(second / 100);
    mOpen.board().stopTrace();
    set("TriggerMode_SoftwareTrigger_Mode", pulse);
    mOpen.board().clock().advance(second / 100);
    const TriggerTrace trace = mOpen.board().trace();
    const auto count = [&trace](TriggerSignalKind kind, std::uint32_t value) {
        return std::count_if(trace.samples().begin(), trace.samples().end(),
                             [&](const TriggerTrace::Sample& sample) {
                                 return sample.signal.kind == kind && sample.value == value;
                             });
    };
    EXPECT_EQ(count(TriggerSignalKind::ActionCommand, 1), 1);
    EXPECT_EQ(count(TriggerSignalKind::Exposure, 1), 1);
    EXPECT_EQ(count(TriggerSignalKind::Exposure, 0), 1);
    EXPECT_EQ(count(TriggerSignalKind::FrameEnd, 1), 1);
}

TEST_F(TriggeredAcquisitionTest, ResetPutsTheTriggerSystemToPowerOn) {
    startGenerator(second / 100);
    set("TriggerOutput_Select0_Select_Select", stop);
    mOpen.board().resetAndStepByHand();
    EXPECT_EQ(mOpen.get(name("TriggerOutput_Select0_Select_Select")), 0u);
    mOpen.board().clock().advance(second);
    EXPECT_EQ(mOpen.board().eventCount(event("FVALEvents_Cam0_FrameEnd")), 0u)
        << "without a trigger no picture comes";
}

} // namespace
} // namespace simulator
