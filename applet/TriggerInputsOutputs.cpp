// Trigger inputs, outputs, camera action command, statistics and monitoring flags.

#include "applet/AppletWrapper.h"
#include "applet/StandardParameterTable.h"
#include "applet/TriggerRegisters.h"
#include "applet/TriggerUnits.h"

namespace error = kavo::error;

namespace {

/// What a selectable signal means to an output multiplexer, by the parameter's value.
struct OutputSignal {
    unsigned source;
    unsigned inverted;
};
constexpr OutputSignal outputSignals[] = {
    {0, 0}, {1, 0}, {2, 0}, {3, 0}, // pulse form generators
    {5, 0}, {5, 1},                 // GND, VCC
    {0, 1}, {1, 1}, {2, 1}, {3, 1}, // inverted pulse form generators
    {4, 0}, {4, 1},                 // input bypass, inverted input bypass
};

struct OutputRegisters {
    unsigned& (StandardParameterCaches::*cache)(int port);
    DesignParameter select, polarity;
};
#define OUTPUT(n)                                                                                            \
    {                                                                                                        \
        &StandardParameterCaches::cache_FG_TRIGGEROUT_SELECT##n,                                             \
            design::TriggerOutput_Select##n##_Select_Select,                                                 \
            design::TriggerOutput_Select##n##_Polarity_Invert                                                \
    }
constexpr std::array<OutputRegisters, 4> outputs{{OUTPUT(0), OUTPUT(1), OUTPUT(2), OUTPUT(3)}};

} // namespace

// ---- inputs

int FgQxWrapperImpl::setDebounce(int port, double value) {
    if (!catalogue::limitsOf<FG_TRIGGERIN_DEBOUNCE>().contain(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_TRIGGERIN_DEBOUNCE(port), value, [&] {
        return writeDesign(port, design::TriggerInput_Debounce8_Prescale_Period,
                           trigger::debounceSteps(value));
    });
}

int FgQxWrapperImpl::readDebounce(int port, double* out) {
    std::uint64_t steps = 0;
    const int code =
        readDesignTyped(port, design::TriggerInput_Debounce8_Prescale_Period, &steps, kavo::type::unsigned32);
    return code == error::ok ? readCache(trigger::debounceMicroseconds(steps), out) : code;
}

int FgQxWrapperImpl::setTriggerInSource(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_TRIGGERIN_SRC(port), value, enumerations::TriggerInSource,
                            design::InputSelect_Select_Select);
}

int FgQxWrapperImpl::setTriggerInPolarity(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_TRIGGERIN_POLARITY(port), value, enumerations::TriggerPolarity,
                            design::InputSelect_Polarity_Invert);
}

int FgQxWrapperImpl::setTriggerInBypassSource(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_TRIGGERIN_BYPASS_SRC(port), value, enumerations::TriggerInSource,
                            design::InputSelect_BypassSelect_Select);
}

int FgQxWrapperImpl::setTriggerInDownscale(int port, unsigned value) {
    if (value < std::uint64_t{cache_FG_TRIGGERIN_DOWNSCALE_PHASE(port)} + 1) {
        return error::outOfRange;
    }
    const int code =
        commitPlain(port, cache_FG_TRIGGERIN_DOWNSCALE(port), value, design::Downscale_Downscale_Downscale);
    if (code == error::ok) {
        setUpperLimit(port, FG_TRIGGERIN_DOWNSCALE_PHASE, value - 1);
    }
    return code;
}

int FgQxWrapperImpl::setTriggerInPhase(int port, unsigned value) {
    if (value > cache_FG_TRIGGERIN_DOWNSCALE(port) - 1) {
        return error::outOfRange;
    }
    const int code = commit(cache_FG_TRIGGERIN_DOWNSCALE_PHASE(port), value, [&] {
        return writeDesign(port, design::Downscale_Downscale_SelectedPulse, value + 1);
    });
    if (code == error::ok) {
        setLowerLimit(port, FG_TRIGGERIN_DOWNSCALE, value + 1);
    }
    return code;
}

// ---- outputs

int FgQxWrapperImpl::commitOutput(int port, unsigned& cache, unsigned value, const DesignParameter& select,
                                  const DesignParameter& polarity) {
    if (!enumerations::TriggerOutSelection_Gen4.contains(value)) {
        return error::outOfRange;
    }
    return commit(cache, value, [&] {
        if (cache_FG_TRIGGERSTATE(port) == stateAsyncStop) {
            // The outputs are off; the next start applies what is cached.
            return error::ok;
        }
        const OutputSignal& signal = outputSignals[value];
        return writeDesignInOrder(port, {{select, signal.source}, {polarity, signal.inverted}});
    });
}

int FgQxWrapperImpl::setTriggerOutput(int port, int output, unsigned value) {
    const OutputRegisters& registers = outputs[static_cast<std::size_t>(output)];
    return commitOutput(port, (this->*registers.cache)(port), value, registers.select, registers.polarity);
}

int FgQxWrapperImpl::setActionCommandSource(int port, unsigned value) {
    return commitOutput(port, cache_FG_CAMERA_ACTION_COMMAND_SOURCE(port), value,
                        design::TriggerCamera_SelectTriggerCamera_Select_Select,
                        design::TriggerCamera_SelectTriggerCamera_Polarity_Invert);
}

int FgQxWrapperImpl::setOutputStatisticsSource(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_TRIGGEROUT_STATS_SOURCE(port), value,
                            enumerations::TriggerOutStatsSources_Gen4,
                            design::OutputStatistics_Select_Select);
}

int FgQxWrapperImpl::setOutputEventSource(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_TRIGGER_OUTPUT_EVENT_SELECT(port), value,
                            enumerations::TriggerOutStatsSources_Gen4, design::OutputEvent_Select_Select);
}

// ---- clears

int FgQxWrapperImpl::commitClear(int port, unsigned& cache, unsigned value,
                                 const DesignParameter& parameter) {
    if (!enumerations::Apply.contains(value)) {
        return error::outOfRange;
    }
    return commit(cache, value, [&] { return writeDesign(port, parameter, pulseRequest); });
}

int FgQxWrapperImpl::clearInputPulseCount(int port, unsigned value) {
    return commitClear(port, cache_FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR(port), value,
                       design::InputStatistics_ClearPulses_Mode);
}

int FgQxWrapperImpl::clearOutputPulseCount(int port, unsigned value) {
    return commitClear(port, cache_FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR(port), value,
                       design::OutputStatistics_ClearPulses_Mode);
}

int FgQxWrapperImpl::clearExceededPeriodLimits(int port, unsigned value) {
    return commitClear(port, cache_FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR(port), value,
                       design::ClearOverride_Mode);
}

int FgQxWrapperImpl::clearMissingFrameResponse(int port, unsigned value) {
    return commitClear(port, cache_FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR(port), value,
                       design::ClearMissingFrame_Mode);
}

int FgQxWrapperImpl::clearMinMaxFrequency(int port, unsigned value) {
    if (!enumerations::Apply.contains(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR(port), value, [&] {
        // The design clears on every change of this level.
        unsigned level = 0;
        const int code = readDesign(port, design::InputStatistics_ClearMinMax_Value, &level);
        return code == error::ok
                   ? writeDesign(port, design::InputStatistics_ClearMinMax_Value, level == 0 ? 1 : 0)
                   : code;
    });
}

// ---- statistics and monitoring

int FgQxWrapperImpl::readFrequency(int port, const DesignParameter& parameter, double* out) {
    std::uint64_t period = 0;
    const int code = readDesignTyped(port, parameter, &period, kavo::type::unsigned32);
    return code == error::ok ? readCache(trigger::frequency(period), out) : code;
}

int FgQxWrapperImpl::readMonitoringFlag(int port, const std::array<unsigned, 2>& masks, unsigned* out) {
    unsigned flags = 0;
    const int code = readDesign(port, design::Monitoring_ReadQueueStatus_Status, &flags);
    const bool isSet = (flags & masks[static_cast<std::size_t>(port)]) != 0;
    return code == error::ok ? readConstant(isSet ? answerYes : 0, out) : code;
}

int FgQxWrapperImpl::readExceededPeriodLimits(int port, unsigned* out) {
    unsigned flag = 0;
    const int code = readMonitoringFlag(port, monitoring::exceededPeriod, &flag);
    // Only a trigger that follows the generator has limits to exceed; only port 1 can be synchronized.
    const unsigned mode = cache_FG_AREATRIGGERMODE(port);
    const bool isReported = mode == modeGenerator || mode == modeSynchronized;
    return code == error::ok ? readConstant(isReported ? flag : 0, out) : code;
}

int FgQxWrapperImpl::readMissingFrameResponse(int port, unsigned* out) {
    return readMonitoringFlag(port, monitoring::missingFrame, out);
}
