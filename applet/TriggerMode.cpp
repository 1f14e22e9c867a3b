// Where trigger pulses come from and whether they flow, and the procedures that start, stop and flush their
// path.

#include "applet/AppletWrapper.h"
#include "applet/TriggerRegisters.h"
#include "applet/TriggerTransitions.h"
#include "applet/TriggerUnits.h"

namespace error = kavo::error;

namespace {

/// Source of an output multiplexer: a constant level.
constexpr unsigned constantLevelSource = 5;

constexpr int adjustableTriggerParameters[] = {
    FG_AREATRIGGERMODE,
    FG_TRIGGERSTATE,
    FG_TRIGGER_FRAMESPERSECOND,
    FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR,
    FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD,
    FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD,
    FG_TRIGGER_OUTPUT_EVENT_SELECT,
    FG_TRIGGERIN_DEBOUNCE,
    FG_TRIGGERIN_SRC,
    FG_TRIGGERIN_POLARITY,
    FG_SENDSOFTWARETRIGGER,
    FG_TRIGGERIN_DOWNSCALE,
    FG_TRIGGERIN_DOWNSCALE_PHASE,
    FG_TRIGGER_MULTIPLY_PULSES,
    FG_TRIGGERQUEUE_MODE,
    FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE,
    FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE_PHASE,
    FG_TRIGGER_PULSEFORMGEN0_DELAY,
    FG_TRIGGER_PULSEFORMGEN0_WIDTH,
    FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE,
    FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE_PHASE,
    FG_TRIGGER_PULSEFORMGEN1_DELAY,
    FG_TRIGGER_PULSEFORMGEN1_WIDTH,
    FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE,
    FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE_PHASE,
    FG_TRIGGER_PULSEFORMGEN2_DELAY,
    FG_TRIGGER_PULSEFORMGEN2_WIDTH,
    FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE,
    FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE_PHASE,
    FG_TRIGGER_PULSEFORMGEN3_DELAY,
    FG_TRIGGER_PULSEFORMGEN3_WIDTH,
    FG_CAMERA_ACTION_COMMAND_SOURCE,
    FG_TRIGGEROUT_SELECT0,
    FG_TRIGGEROUT_SELECT1,
    FG_TRIGGEROUT_SELECT2,
    FG_TRIGGEROUT_SELECT3,
    FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR,
};
static_assert(std::size(adjustableTriggerParameters) == 37);

const Enumeration& modesOf(int port) {
    return port == 0 ? enumerations::AreaTriggerModes : enumerations::AreaTriggerModesPlusSync;
}

} // namespace

int FgQxWrapperImpl::setAreaTriggerMode(int port, unsigned value) {
    if (!modesOf(port).contains(value)) {
        return error::outOfRange;
    }
    const unsigned state = cache_FG_TRIGGERSTATE(port);
    const unsigned oldMode = cache_FG_AREATRIGGERMODE(port);
    return commit(cache_FG_AREATRIGGERMODE(port), value,
                  [&] { return switchTriggerModeAndState(port, oldMode, state, value, state); });
}

int FgQxWrapperImpl::setTriggerState(int port, unsigned value) {
    if (!enumerations::TriggerStates.contains(value)) {
        return error::outOfRange;
    }
    const unsigned mode = cache_FG_AREATRIGGERMODE(port);
    const unsigned oldState = cache_FG_TRIGGERSTATE(port);
    return commit(cache_FG_TRIGGERSTATE(port), value,
                  [&] { return switchTriggerModeAndState(port, mode, oldState, mode, value); });
}

int FgQxWrapperImpl::switchTriggerModeAndState(int port, unsigned oldMode, unsigned oldState,
                                               unsigned newMode, unsigned newState) {
    if (!modesOf(port).contains(newMode)) {
        return error::ok;
    }
    for (const TriggerStep step : triggerSteps(oldMode, oldState, newMode, newState)) {
        if (const int code = runTriggerStep(port, step); code != error::ok) {
            return code;
        }
    }
    setAllTriggerAccessModesToRWC(port);
    if (newMode == modeExternal) {
        setAccess(port, FG_SENDSOFTWARETRIGGER, accessReadOnly);
    }
    return error::ok;
}

int FgQxWrapperImpl::runTriggerStep(int port, TriggerStep step) {
    switch (step) {
    case TriggerStep::OUT0:
        return triggerOutputsEnable(port, false);
    case TriggerStep::OUT1:
        return triggerOutputsEnable(port, true);
    case TriggerStep::GEN0:
        return triggerGeneratorEnable(port, false);
    case TriggerStep::GEN1:
        return triggerGeneratorEnable(port, true);
    case TriggerStep::RQ:
        return triggerResetQueue(port);
    case TriggerStep::CD:
        return triggerClearDownscale(port);
    case TriggerStep::GCD:
        return writeDesign(port, design::Generators_ClearDownscale_Mode, pulseRequest);
    case TriggerStep::CPF:
        return triggerClearPulseFormDownscales(port);
    case TriggerStep::EXT0:
        return writeLevel(port, design::TriggerMode_SelectExternal_Select, false);
    case TriggerStep::EXT1:
        return writeLevel(port, design::TriggerMode_SelectExternal_Select, true);
    case TriggerStep::SYNC0:
        return triggerSynchronEnable(port, false);
    case TriggerStep::SYNC1:
        return triggerSynchronEnable(port, true);
    case TriggerStep::EN0:
    case TriggerStep::EN1:
        break;
    }
    return writeLevel(port, design::PulseFormGenerators_Enable_Select, step == TriggerStep::EN1);
}

int FgQxWrapperImpl::triggerOutputsEnable(int port, bool enable) {
    if (!enable) {
        // The polarity stays: an output with an inverted source rests at the opposite level.
        return writeDesignInOrder(port, {{design::TriggerOutput_Select0_Select_Select, constantLevelSource},
                                         {design::TriggerOutput_Select1_Select_Select, constantLevelSource},
                                         {design::TriggerOutput_Select2_Select_Select, constantLevelSource},
                                         {design::TriggerOutput_Select3_Select_Select, constantLevelSource}});
    }
    int code = write_FG_CAMERA_ACTION_COMMAND_SOURCE(port, cache_FG_CAMERA_ACTION_COMMAND_SOURCE(port));
    code = code != error::ok ? code : write_FG_TRIGGEROUT_SELECT0(port, cache_FG_TRIGGEROUT_SELECT0(port));
    code = code != error::ok ? code : write_FG_TRIGGEROUT_SELECT1(port, cache_FG_TRIGGEROUT_SELECT1(port));
    code = code != error::ok ? code : write_FG_TRIGGEROUT_SELECT2(port, cache_FG_TRIGGEROUT_SELECT2(port));
    return code != error::ok ? code : write_FG_TRIGGEROUT_SELECT3(port, cache_FG_TRIGGEROUT_SELECT3(port));
}

int FgQxWrapperImpl::triggerGeneratorEnable(int port, bool enable) {
    return enable ? restartTriggerGenerator(port, false)
                  : writeLevel(port, design::Generators_ClearQueuePulse_Mode, true);
}

int FgQxWrapperImpl::triggerResetQueue(int port) { return restartTriggerGenerator(port, true); }

int FgQxWrapperImpl::restartTriggerGenerator(int port, bool queued) {
    int code = writeLevel(port, design::Generators_ClearQueuePulse_Mode, true);
    code = code != error::ok ? code : writeLevel(port, design::Generators_EnableQueue_Select, queued);
    code = code != error::ok ? code
                             : write_FG_TRIGGER_FRAMESPERSECOND(
                                   port, trigger::rateThroughPeriod(cache_FG_TRIGGER_FRAMESPERSECOND(port)));
    code = code != error::ok ? code : writeLevel(port, design::PulseFormGenerators_Enable_Select, true);
    return code != error::ok ? code : writeLevel(port, design::Generators_ClearQueuePulse_Mode, false);
}

int FgQxWrapperImpl::triggerClearDownscale(int port) {
    return writeDesign(port, design::Downscale_Clear_Mode, pulseRequest);
}

int FgQxWrapperImpl::triggerClearPulseFormDownscales(int port) {
    return writeDesignInOrder(
        port, {{design::CheckForMissingFrame_ResetMissing_Mode, pulseRequest},
               {design::PulseFormGenerators_PulseFormGenerator0_ClearDownscale_Mode, pulseRequest},
               {design::PulseFormGenerators_PulseFormGenerator1_ClearDownscale_Mode, pulseRequest},
               {design::PulseFormGenerators_PulseFormGenerator2_ClearDownscale_Mode, pulseRequest},
               {design::PulseFormGenerators_PulseFormGenerator3_ClearDownscale_Mode, pulseRequest}});
}

int FgQxWrapperImpl::triggerSynchronEnable(int port, bool enable) {
    return writeLevel(port, design::Synchronize_SlaveMode_Select, enable);
}

void FgQxWrapperImpl::setAllTriggerAccessModesToRWC(int port) {
    for (const int id : adjustableTriggerParameters) {
        setAccess(port, id, accessReadWriteChange);
    }
}
