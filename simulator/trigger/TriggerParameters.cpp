#include "simulator/trigger/TriggerParameters.h"

#include <unordered_map>

namespace simulator {

namespace {

enum class Access : std::uint8_t { ReadWrite, ReadOnly };

/// '#' in a name stands for the port's digit.
struct RegisterDescription {
    const char* name;
    Access access = Access::ReadWrite;
    std::uint32_t powerOn = 0;
};

constexpr const char* namePrefix = "Device1_Process2_Trigger_";

/// In the order of CameraRegister.
constexpr std::array<RegisterDescription, cameraRegisterCount> cameraRegisters{{
    {"TriggerCam#_TriggerOutput_Select0_Select_Select"},
    {"TriggerCam#_TriggerOutput_Select1_Select_Select"},
    {"TriggerCam#_TriggerOutput_Select2_Select_Select"},
    {"TriggerCam#_TriggerOutput_Select3_Select_Select"},
    {"TriggerCam#_TriggerOutput_Select0_Polarity_Invert"},
    {"TriggerCam#_TriggerOutput_Select1_Polarity_Invert"},
    {"TriggerCam#_TriggerOutput_Select2_Polarity_Invert"},
    {"TriggerCam#_TriggerOutput_Select3_Polarity_Invert"},
    {"TriggerCam#_TriggerCamera_SelectTriggerCamera_Select_Select"},
    {"TriggerCam#_TriggerCamera_SelectTriggerCamera_Polarity_Invert"},
    {"TriggerCam#_TriggerCamera_ActionCommand_PendingActionCmdCount", Access::ReadOnly},
    {"TriggerCam#_Synchronize_SlaveMode_Select"},
    {"TriggerCam#_TriggerMode_SelectExternal_Select"},
    {"TriggerCam#_TriggerMode_SoftwareTrigger_Mode"},
    {"TriggerCam#_InputSelect_Select_Select"},
    {"TriggerCam#_InputSelect_Polarity_Invert"},
    {"TriggerCam#_InputSelect_BypassSelect_Select"},
    {"TriggerCam#_Downscale_Downscale_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_Downscale_Downscale_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_Downscale_Clear_Mode"},
    {"TriggerCam#_Generators_ClearQueuePulse_Mode", Access::ReadWrite, 1},
    {"TriggerCam#_Generators_EnableQueue_Select"},
    {"TriggerCam#_Generators_Generator_MinimumPeriod_Number"},
    {"TriggerCam#_Generators_Generator_MaximumReached_Status", Access::ReadOnly},
    {"TriggerCam#_Generators_QueueValue_Status", Access::ReadOnly},
    {"TriggerCam#_Generators_Queue_QueueFullValue_Number", Access::ReadWrite, 2040},
    {"TriggerCam#_Generators_Queue_QueueEnabled_Select", Access::ReadWrite, 1},
    {"TriggerCam#_Generators_Sequence_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_Generators_Sequence_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_Generators_ClearDownscale_Mode"},
    {"TriggerCam#_Hysteresis_OnLevel_Number", Access::ReadWrite, 2040},
    {"TriggerCam#_Hysteresis_OffLevel_Number", Access::ReadWrite, 2},
    {"TriggerCam#_PulseFormGenerators_Enable_Select"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator0_ClearDownscale_Mode"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator1_ClearDownscale_Mode"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator2_ClearDownscale_Mode"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator3_ClearDownscale_Mode"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator0_Downscale_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator1_Downscale_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator2_Downscale_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator3_Downscale_Downscale", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator0_Downscale_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator1_Downscale_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator2_Downscale_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator3_Downscale_SelectedPulse", Access::ReadWrite, 1},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator0_Delay_Delay"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator1_Delay_Delay"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator2_Delay_Delay"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator3_Delay_Delay"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator0_Width_Width"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator1_Width_Width"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator2_Width_Width"},
    {"TriggerCam#_PulseFormGenerators_PulseFormGenerator3_Width_Width"},
    {"TriggerCam#_InputStatistics_ReadPulses_Status", Access::ReadOnly},
    {"TriggerCam#_InputStatistics_ClearPulses_Mode"},
    {"TriggerCam#_InputStatistics_ReadPeriod_Status", Access::ReadOnly},
    {"TriggerCam#_InputStatistics_ReadMax_Status", Access::ReadOnly},
    {"TriggerCam#_InputStatistics_ReadMin_Status", Access::ReadOnly},
    {"TriggerCam#_InputStatistics_ClearMinMax_Value"},
    {"TriggerCam#_OutputStatistics_Select_Select"},
    {"TriggerCam#_OutputStatistics_ReadPulses_Status", Access::ReadOnly},
    {"TriggerCam#_OutputStatistics_ClearPulses_Mode"},
    {"TriggerCam#_OutputEvent_Select_Select"},
    {"Monitoring_CheckForMissingFrame_Cam#_ResetMissing_Mode"},
    {"Monitoring_ClearOverrideCam#_Mode"},
    {"Monitoring_ClearMissingFrame_Cam#_Mode"},
}};

/// In the order of SharedRegister.
constexpr std::array<RegisterDescription, sharedRegisterCount> sharedRegisters{{
    {"TriggerInput_Debounce8_Prescale_Period"},
    {"TriggerInput_InputStatus_Status", Access::ReadOnly},
    {"Monitoring_ReadQueueStatus_Status", Access::ReadOnly},
}};

std::string fullName(const char* name, unsigned port) {
    std::string result = std::string(namePrefix) + name;
    const std::size_t digit = result.find('#');
    if (digit != std::string::npos)
        result[digit] = static_cast<char>('0' + port);
    return result;
}

bool existsOnPort(CameraRegister which, unsigned port) {
    return which != CameraRegister::SlaveMode || port == 1;
}

std::vector<TriggerParameter> buildParameters() {
    std::vector<TriggerParameter> parameters;
    for (unsigned port = 0; port < triggerPortCount; ++port) {
        for (std::size_t place = 0; place < cameraRegisterCount; ++place) {
            const auto which = static_cast<CameraRegister>(place);
            const RegisterDescription& description = cameraRegisters.at(place);
            if (existsOnPort(which, port))
                parameters.push_back({fullName(description.name, port),
                                      description.access == Access::ReadOnly, false, port, which,
                                      SharedRegister::DebouncePeriod});
        }
    }
    for (std::size_t place = 0; place < sharedRegisterCount; ++place) {
        const RegisterDescription& description = sharedRegisters.at(place);
        parameters.push_back({fullName(description.name, 0), description.access == Access::ReadOnly, true, 0,
                              CameraRegister::OutputSelect0, static_cast<SharedRegister>(place)});
    }
    return parameters;
}

std::unordered_map<std::string_view, TriggerParameterIndex> buildIndex() {
    std::unordered_map<std::string_view, TriggerParameterIndex> index;
    for (const TriggerParameter& parameter : triggerParameters())
        index.emplace(parameter.name, index.size());
    return index;
}

} // namespace

const std::vector<TriggerParameter>& triggerParameters() {
    static const std::vector<TriggerParameter> parameters = buildParameters();
    return parameters;
}

std::optional<TriggerParameterIndex> findTriggerParameter(std::string_view name) {
    static const std::unordered_map<std::string_view, TriggerParameterIndex> index = buildIndex();
    const auto found = index.find(name);
    if (found == index.end())
        return std::nullopt;
    return found->second;
}

std::array<std::uint32_t, cameraRegisterCount> powerOnRegisters() {
    std::array<std::uint32_t, cameraRegisterCount> registers{};
    for (std::size_t place = 0; place < cameraRegisterCount; ++place)
        registers.at(place) = cameraRegisters.at(place).powerOn;
    return registers;
}

} // namespace simulator
