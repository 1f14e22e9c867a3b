#pragma once

#include <array>

// The 178 parameters of the design that the applet drives, by their place in the design.

#define ORBELLINE_PROCESS_PARAMETER(X, name) X(name, Device1_Process0_##name, Device1_Process1_##name)
#define ORBELLINE_TRIGGER_PARAMETER(X, name)                                                                 \
    X(name, Device1_Process2_Trigger_TriggerCam0_##name, Device1_Process2_Trigger_TriggerCam1_##name)
#define ORBELLINE_MONITORING_PARAMETER(X, name, before, after)                                               \
    X(name, Device1_Process2_Trigger_Monitoring_##before##Cam0_##after,                                      \
      Device1_Process2_Trigger_Monitoring_##before##Cam1_##after)

/// One per camera port: X(name, full name of port 0, full name of port 1).
#define ORBELLINE_PORT_DESIGN_PARAMETERS(X)                                                                  \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_MTUSizeCam0_LineLength)                                               \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_MTUSizeCam1_LineLength)                                               \
    ORBELLINE_PROCESS_PARAMETER(X, Camera0_PixelFormat)                                                      \
    ORBELLINE_PROCESS_PARAMETER(X, Camera1_PixelFormat)                                                      \
    ORBELLINE_PROCESS_PARAMETER(X, LookupTable_LookupTable_LUTcontent)                                       \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_Swap_Swap_Value)                                                      \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_SelectTop_SelectSource)                                               \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_SelectBottom_SelectSource)                                            \
    ORBELLINE_PROCESS_PARAMETER(X, LAG_CameraWidth_LineLength)                                               \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_0_XLength)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_1_XLength)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_0_YLength)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_1_YLength)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_0_XOffset)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_1_XOffset)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_0_YOffset)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_1_YOffset)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Overflow_OverflowOccurred)                                                \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_0_FillLevel)                                              \
    ORBELLINE_PROCESS_PARAMETER(X, Buffer_0_DRAM_A_1_FillLevel)                                              \
    ORBELLINE_PROCESS_PARAMETER(X, OutputFormat_FG_FORMAT_SelectSource)                                      \
    ORBELLINE_PROCESS_PARAMETER(X, OutputFormat_FG_BITALIGNMENT_Value)                                       \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select0_Select_Select)                                      \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select1_Select_Select)                                      \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select2_Select_Select)                                      \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select3_Select_Select)                                      \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerMode_SelectExternal_Select)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_Enable_Select)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator0_ClearDownscale_Mode)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator1_ClearDownscale_Mode)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator2_ClearDownscale_Mode)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator3_ClearDownscale_Mode)              \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_ClearQueuePulse_Mode)                                          \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_EnableQueue_Select)                                            \
    ORBELLINE_TRIGGER_PARAMETER(X, Downscale_Clear_Mode)                                                     \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_ClearDownscale_Mode)                                           \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Generator_MinimumPeriod_Number)                                \
    ORBELLINE_TRIGGER_PARAMETER(X, InputSelect_Select_Select)                                                \
    ORBELLINE_TRIGGER_PARAMETER(X, InputSelect_Polarity_Invert)                                              \
    ORBELLINE_TRIGGER_PARAMETER(X, Downscale_Downscale_Downscale)                                            \
    ORBELLINE_TRIGGER_PARAMETER(X, Downscale_Downscale_SelectedPulse)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, InputSelect_BypassSelect_Select)                                          \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerMode_SoftwareTrigger_Mode)                                         \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Generator_MaximumReached_Status)                               \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_QueueValue_Status)                                             \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ReadPulses_Status)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ClearPulses_Mode)                                         \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ReadPeriod_Status)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ReadMax_Status)                                           \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ReadMin_Status)                                           \
    ORBELLINE_TRIGGER_PARAMETER(X, InputStatistics_ClearMinMax_Value)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Sequence_Downscale)                                            \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Sequence_SelectedPulse)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Queue_QueueFullValue_Number)                                   \
    ORBELLINE_TRIGGER_PARAMETER(X, Generators_Queue_QueueEnabled_Select)                                     \
    ORBELLINE_TRIGGER_PARAMETER(X, Hysteresis_OnLevel_Number)                                                \
    ORBELLINE_TRIGGER_PARAMETER(X, Hysteresis_OffLevel_Number)                                               \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator0_Downscale_Downscale)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator0_Downscale_SelectedPulse)          \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator0_Delay_Delay)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator0_Width_Width)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator1_Downscale_Downscale)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator1_Downscale_SelectedPulse)          \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator1_Delay_Delay)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator1_Width_Width)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator2_Downscale_Downscale)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator2_Downscale_SelectedPulse)          \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator2_Delay_Delay)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator2_Width_Width)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator3_Downscale_Downscale)              \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator3_Downscale_SelectedPulse)          \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator3_Delay_Delay)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, PulseFormGenerators_PulseFormGenerator3_Width_Width)                      \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerCamera_SelectTriggerCamera_Select_Select)                          \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerCamera_SelectTriggerCamera_Polarity_Invert)                        \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerCamera_ActionCommand_PendingActionCmdCount)                        \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select0_Polarity_Invert)                                    \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select1_Polarity_Invert)                                    \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select2_Polarity_Invert)                                    \
    ORBELLINE_TRIGGER_PARAMETER(X, TriggerOutput_Select3_Polarity_Invert)                                    \
    ORBELLINE_TRIGGER_PARAMETER(X, OutputStatistics_Select_Select)                                           \
    ORBELLINE_TRIGGER_PARAMETER(X, OutputStatistics_ReadPulses_Status)                                       \
    ORBELLINE_TRIGGER_PARAMETER(X, OutputStatistics_ClearPulses_Mode)                                        \
    ORBELLINE_TRIGGER_PARAMETER(X, OutputEvent_Select_Select)                                                \
    ORBELLINE_MONITORING_PARAMETER(X, CheckForMissingFrame_ResetMissing_Mode, CheckForMissingFrame_,         \
                                   ResetMissing_Mode)                                                        \
    ORBELLINE_MONITORING_PARAMETER(X, ClearOverride_Mode, ClearOverride, Mode)                               \
    ORBELLINE_MONITORING_PARAMETER(X, ClearMissingFrame_Mode, ClearMissingFrame_, Mode)

/// One for both ports, or of one port only: X(name, full name).
#define ORBELLINE_SINGLE_DESIGN_PARAMETERS(X)                                                                \
    X(Monitoring_ReadQueueStatus_Status, Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status)         \
    X(TriggerInput_Debounce8_Prescale_Period,                                                                \
      Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period)                                       \
    X(TriggerInput_InputStatus_Status, Device1_Process2_Trigger_TriggerInput_InputStatus_Status)             \
    X(Synchronize_SlaveMode_Select, Device1_Process2_Trigger_TriggerCam1_Synchronize_SlaveMode_Select)

/// The ids under which the runtime knows the parameters, one member each: qx_id_<full name>.
struct DesignParameterIds {
#define X(name, port0, port1)                                                                                \
    int qx_id_##port0 = 0;                                                                                   \
    int qx_id_##port1 = 0;
    ORBELLINE_PORT_DESIGN_PARAMETERS(X)
#undef X
#define X(name, full) int qx_id_##full = 0;
    ORBELLINE_SINGLE_DESIGN_PARAMETERS(X)
#undef X
};

/// A design parameter for either camera port: which member holds its id.
struct DesignParameter {
    std::array<int DesignParameterIds::*, 2> id;

    constexpr bool operator==(const DesignParameter& other) const {
        return id[0] == other.id[0] && id[1] == other.id[1];
    }
};

/// The parameters by the names that handlers use.
namespace design {
#define X(name, port0, port1)                                                                                \
    inline constexpr DesignParameter name{                                                                   \
        {&DesignParameterIds::qx_id_##port0, &DesignParameterIds::qx_id_##port1}};
ORBELLINE_PORT_DESIGN_PARAMETERS(X)
#undef X
#define X(name, full)                                                                                        \
    inline constexpr DesignParameter name{                                                                   \
        {&DesignParameterIds::qx_id_##full, &DesignParameterIds::qx_id_##full}};
ORBELLINE_SINGLE_DESIGN_PARAMETERS(X)
#undef X
} // namespace design

/// A design parameter's full name and the member that holds its id.
struct DesignParameterName {
    const char* name;
    int DesignParameterIds::*id;
};

/// All of them, each once.
inline constexpr DesignParameterName designParameterNames[] = {
#define X(name, port0, port1)                                                                                \
    {#port0, &DesignParameterIds::qx_id_##port0}, {#port1, &DesignParameterIds::qx_id_##port1},
    ORBELLINE_PORT_DESIGN_PARAMETERS(X)
#undef X
#define X(name, full) {#full, &DesignParameterIds::qx_id_##full},
        ORBELLINE_SINGLE_DESIGN_PARAMETERS(X)
#undef X
};
static_assert(std::size(designParameterNames) == 178);
