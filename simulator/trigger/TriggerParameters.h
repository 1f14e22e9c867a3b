#pragma once

#include "simulator/trigger/TriggerListener.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The registers that each camera's trigger system has. Registers of the same kind stand together, so that
/// "the one of output n" is the first plus n.
enum class CameraRegister : std::uint8_t {
    OutputSelect0,
    OutputSelect1,
    OutputSelect2,
    OutputSelect3,
    OutputPolarity0,
    OutputPolarity1,
    OutputPolarity2,
    OutputPolarity3,
    CameraSelect,
    CameraPolarity,
    PendingActionCommands,
    SlaveMode,
    SelectExternal,
    SoftwareTrigger,
    InputSelect,
    InputPolarity,
    BypassSelect,
    InputDownscale,
    InputSelectedPulse,
    InputClearDownscale,
    ClearQueuePulse,
    EnableQueue,
    MinimumPeriod,
    MaximumReached,
    QueueValue,
    QueueFullValue,
    QueueEnabled,
    SequenceDownscale,
    SequenceSelectedPulse,
    SequenceClearDownscale,
    HysteresisOnLevel,
    HysteresisOffLevel,
    PulseFormsEnable,
    FormClearDownscale0,
    FormClearDownscale1,
    FormClearDownscale2,
    FormClearDownscale3,
    FormDownscale0,
    FormDownscale1,
    FormDownscale2,
    FormDownscale3,
    FormSelectedPulse0,
    FormSelectedPulse1,
    FormSelectedPulse2,
    FormSelectedPulse3,
    FormDelay0,
    FormDelay1,
    FormDelay2,
    FormDelay3,
    FormWidth0,
    FormWidth1,
    FormWidth2,
    FormWidth3,
    InputPulses,
    InputClearPulses,
    InputPeriod,
    InputLongestPeriod,
    InputShortestPeriod,
    InputClearMinMax,
    OutputStatisticsSelect,
    OutputPulses,
    OutputClearPulses,
    OutputEventSelect,
    ResetMissing,
    ClearOverride,
    ClearMissingFrame
};

constexpr std::size_t cameraRegisterCount = static_cast<std::size_t>(CameraRegister::ClearMissingFrame) + 1;

/// The register `offset` places behind `first` (output, pulse form generator).
constexpr CameraRegister offsetRegister(CameraRegister first, unsigned offset) {
    return static_cast<CameraRegister>(static_cast<unsigned>(first) + offset);
}

/// The registers that the two cameras share.
enum class SharedRegister : std::uint8_t { DebouncePeriod, InputStatus, QueueStatus };

constexpr std::size_t sharedRegisterCount = static_cast<std::size_t>(SharedRegister::QueueStatus) + 1;

/// Dense number of a design parameter of the trigger block: a place in triggerParameters().
using TriggerParameterIndex = std::size_t;

/// One design parameter of the trigger block, 32 bits wide. `shared` tells whether `cameraRegister` of `port`
/// or `sharedRegister` is meant.
struct TriggerParameter {
    std::string name;
    bool readOnly;
    bool shared;
    unsigned port;
    CameraRegister cameraRegister;
    SharedRegister sharedRegister;
};

/// Every design parameter whose name begins with "Device1_Process2_Trigger_".
const std::vector<TriggerParameter>& triggerParameters();

/// Number of a design parameter by its full name; nothing for a name that the trigger block does not have.
std::optional<TriggerParameterIndex> findTriggerParameter(std::string_view name);

/// Register contents after power-on.
std::array<std::uint32_t, cameraRegisterCount> powerOnRegisters();

} // namespace simulator
