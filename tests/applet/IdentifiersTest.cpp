// Look-ups of names, ids and indices, and the ids of the design parameters.

#include "platform/ErrorCodes.h"
#include "simulator/HostCalls.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"

#include <algorithm>
#include <climits>
#include <set>

namespace error = kavo::error;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

class Identifiers : public testing::Test {
  protected:
    AppletOnBoard applet;
    Fg_Struct* handle = applet.handle();
};

class DesignIds : public kavo::test::OnFreshBoard {};

std::set<std::string> documentedDesignParameters() {
    std::set<std::string> names;
    for (const char* camera : {"0", "1"}) {
        const std::string process = std::string("Device1_Process") + camera + "_";
        for (const char* ending :
             {"LAG_MTUSizeCam0_LineLength", "LAG_MTUSizeCam1_LineLength", "Camera0_PixelFormat",
              "Camera1_PixelFormat", "LookupTable_LookupTable_LUTcontent", "LAG_Swap_Swap_Value",
              "LAG_SelectTop_SelectSource", "LAG_SelectBottom_SelectSource", "LAG_CameraWidth_LineLength",
              "Overflow_OverflowOccurred", "OutputFormat_FG_FORMAT_SelectSource",
              "OutputFormat_FG_BITALIGNMENT_Value"}) {
            names.insert(process + ending);
        }
        for (const char* half : {"0", "1"}) {
            for (const char* ending : {"XLength", "YLength", "XOffset", "YOffset", "FillLevel"}) {
                names.insert(process + "Buffer_0_DRAM_A_" + half + "_" + ending);
            }
        }
        const std::string trigger = std::string("Device1_Process2_Trigger_TriggerCam") + camera + "_";
        for (const char* ending : {"TriggerMode_SelectExternal_Select",
                                   "PulseFormGenerators_Enable_Select",
                                   "Generators_ClearQueuePulse_Mode",
                                   "Generators_EnableQueue_Select",
                                   "Downscale_Clear_Mode",
                                   "Generators_ClearDownscale_Mode",
                                   "Generators_Generator_MinimumPeriod_Number",
                                   "InputSelect_Select_Select",
                                   "InputSelect_Polarity_Invert",
                                   "Downscale_Downscale_Downscale",
                                   "Downscale_Downscale_SelectedPulse",
                                   "InputSelect_BypassSelect_Select",
                                   "TriggerMode_SoftwareTrigger_Mode",
                                   "Generators_Generator_MaximumReached_Status",
                                   "Generators_QueueValue_Status",
                                   "InputStatistics_ReadPulses_Status",
                                   "InputStatistics_ClearPulses_Mode",
                                   "InputStatistics_ReadPeriod_Status",
                                   "InputStatistics_ReadMax_Status",
                                   "InputStatistics_ReadMin_Status",
                                   "InputStatistics_ClearMinMax_Value",
                                   "Generators_Sequence_Downscale",
                                   "Generators_Sequence_SelectedPulse",
                                   "Generators_Queue_QueueFullValue_Number",
                                   "Generators_Queue_QueueEnabled_Select",
                                   "Hysteresis_OnLevel_Number",
                                   "Hysteresis_OffLevel_Number",
                                   "TriggerCamera_SelectTriggerCamera_Select_Select",
                                   "TriggerCamera_SelectTriggerCamera_Polarity_Invert",
                                   "TriggerCamera_ActionCommand_PendingActionCmdCount",
                                   "OutputStatistics_Select_Select",
                                   "OutputStatistics_ReadPulses_Status",
                                   "OutputStatistics_ClearPulses_Mode",
                                   "OutputEvent_Select_Select"}) {
            names.insert(trigger + ending);
        }
        for (const char* number : {"0", "1", "2", "3"}) {
            const std::string generator = trigger + "PulseFormGenerators_PulseFormGenerator" + number + "_";
            for (const char* ending : {"ClearDownscale_Mode", "Downscale_Downscale",
                                       "Downscale_SelectedPulse", "Delay_Delay", "Width_Width"}) {
                names.insert(generator + ending);
            }
            names.insert(trigger + "TriggerOutput_Select" + number + "_Select_Select");
            names.insert(trigger + "TriggerOutput_Select" + number + "_Polarity_Invert");
        }
        const std::string monitoring = "Device1_Process2_Trigger_Monitoring_";
        names.insert(monitoring + "CheckForMissingFrame_Cam" + camera + "_ResetMissing_Mode");
        names.insert(monitoring + "ClearOverrideCam" + camera + "_Mode");
        names.insert(monitoring + "ClearMissingFrame_Cam" + camera + "_Mode");
    }
    names.insert("Device1_Process2_Trigger_TriggerCam1_Synchronize_SlaveMode_Select");
    names.insert("Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status");
    names.insert("Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period");
    names.insert("Device1_Process2_Trigger_TriggerInput_InputStatus_Status");
    return names;
}

} // namespace

TEST_F(Identifiers, AKnownNameClearsTheLastError) {
    applet.wrapper().setError(-99);
    EXPECT_EQ(Fg_getParameterIdByName(handle, "FG_WIDTH"), 100);
    EXPECT_EQ(applet.lastError(), 0);
    applet.wrapper().setError(-99);
    EXPECT_STREQ(Fg_getParameterName(handle, 92), "FG_TRIGGER_OUTPUT_EVENT_SELECT");
    EXPECT_EQ(applet.lastError(), 0);
    applet.wrapper().setError(-99);
    EXPECT_EQ(Fg_getParameterId(handle, 0), 600);
    EXPECT_EQ(applet.lastError(), 0);
}

TEST_F(Identifiers, NamesAreComparedExactly) {
    for (const char* name : {static_cast<const char*>(nullptr), "", "fg_width", "FG_WIDTH ", " FG_WIDTH",
                             "FG_WIDT", "DRA_", "DQXA_", "Width"}) {
        applet.wrapper().setError(0);
        EXPECT_EQ(Fg_getParameterIdByName(handle, name), error::invalidParameter);
        EXPECT_EQ(applet.lastError(), error::invalidParameter);
    }
}

TEST_F(Identifiers, IndicesEndAtTheCount) {
    for (const int index : {-1, 93, INT_MAX, INT_MIN}) {
        applet.wrapper().setError(0);
        EXPECT_EQ(Fg_getParameterName(handle, index), nullptr);
        EXPECT_EQ(applet.lastError(), error::invalidParameter);
        applet.wrapper().setError(0);
        EXPECT_EQ(Fg_getParameterId(handle, index), error::invalidParameter);
        EXPECT_EQ(applet.lastError(), error::invalidParameter);
    }
}

TEST_F(Identifiers, DmaIndicesZeroAndOneAreThePorts) {
    EXPECT_EQ(applet.wrapper().mapDmaToProcess(0), 0);
    EXPECT_EQ(applet.wrapper().mapDmaToProcess(1), 1);
    for (const int index : {2, -1, INT_MAX, INT_MIN}) {
        try {
            applet.wrapper().mapDmaToProcess(index);
            ADD_FAILURE() << index;
        } catch (int code) {
            EXPECT_EQ(code, error::invalidParameter);
        }
    }
}

TEST_F(Identifiers, TheAppletTellsWhoItIs) {
    EXPECT_STREQ(applet.wrapper().getManufacturer(), "Kavotronic GmbH");
    EXPECT_STREQ(applet.wrapper().getCameraType(), "Orbelline");
    EXPECT_STREQ(applet.wrapper().getCameraVersion(), "2.2");
    EXPECT_EQ(applet.wrapper().getAppletID(), 0);
}

TEST_F(DesignIds, EveryDesignParameterIsAskedForOnce) {
    hostCalls().record(true);
    const kavo::test::Creation creation;
    ASSERT_TRUE(creation.hasSucceeded());
    const auto lookups = hostCalls().calls(CallKind::idLookup);
    EXPECT_EQ(lookups.size(), 178U);
    std::set<std::string> names;
    for (const auto& lookup : lookups) {
        EXPECT_GT(lookup.result, 0) << lookup.name;
        names.insert(lookup.name);
    }
    EXPECT_EQ(names, documentedDesignParameters());
}

TEST_F(DesignIds, AnUnknownNameKeepsTheRuntimesAnswerAsItsId) {
    hostCalls().failOnce(CallKind::idLookup, 1, -4711, "Device1_Process1_LAG_CameraWidth_LineLength");
    kavo::test::Creation creation;
    ASSERT_TRUE(creation.hasSucceeded());
    const auto& wrapper =
        static_cast<FgQxWrapperImpl&>(*static_cast<FgQxWrapper*>(creation.handle()->Master));
    EXPECT_EQ(wrapper.qx_id_Device1_Process1_LAG_CameraWidth_LineLength, -4711);
    EXPECT_GT(wrapper.qx_id_Device1_Process0_LAG_CameraWidth_LineLength, 0);

    // The first access fails in the runtime, with the runtime's code.
    hostCalls().record(true);
    const unsigned width = 2048;
    const int code = Fg_setParameterWithType(creation.handle(), FG_CAMERA_WIDTH, &width, 1, 2);
    EXPECT_EQ(code, error::invalidParameter);
    ASSERT_EQ(hostCalls().calls(CallKind::write).size(), 1U);
    EXPECT_EQ(hostCalls().calls(CallKind::write).front().id, -4711);
}
