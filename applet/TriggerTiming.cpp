// Frame rate, pulse form generators, multiplication, queue and software trigger.

#include "applet/AppletWrapper.h"
#include "applet/StandardParameterTable.h"
#include "applet/TriggerRegisters.h"
#include "applet/TriggerUnits.h"

#include <algorithm>
#include <ctime>

namespace error = kavo::error;
using namespace catalogue;

namespace {

constexpr int generatorCount = 4;
/// The period register counts from here.
constexpr std::uint64_t periodOffset = 9;
constexpr unsigned shortestPeriod = 10;
constexpr timespec softwarePulseGap{0, 160};

// The limits of generator 0 hold for all four.
constexpr Limits delayLimits = limitsOf<FG_TRIGGER_PULSEFORMGEN0_DELAY>();
constexpr Limits widthLimits = limitsOf<FG_TRIGGER_PULSEFORMGEN0_WIDTH>();
constexpr unsigned largestDownscale = integerLimitsOf<FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE>().to;
constexpr unsigned queueCapacity = integerLimitsOf<FG_TRIGGERQUEUE_FILLLEVEL>().to;
constexpr IntegerLimits thresholdLimits = integerLimitsOf<FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD>();

/// What tells one pulse form generator from another.
struct PulseFormGenerator {
    unsigned& (StandardParameterCaches::*downscale)(int port);
    unsigned& (StandardParameterCaches::*phase)(int port);
    double& (StandardParameterCaches::*delay)(int port);
    double& (StandardParameterCaches::*width)(int port);
    DesignParameter downscaleRegister, phaseRegister, delayRegister, widthRegister;
    int downscaleId, phaseId;
};

#define PULSE_FORM_GENERATOR(g)                                                                              \
    {                                                                                                        \
        &StandardParameterCaches::cache_FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE,                              \
            &StandardParameterCaches::cache_FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE,                    \
            &StandardParameterCaches::cache_FG_TRIGGER_PULSEFORMGEN##g##_DELAY,                              \
            &StandardParameterCaches::cache_FG_TRIGGER_PULSEFORMGEN##g##_WIDTH,                              \
            design::PulseFormGenerators_PulseFormGenerator##g##_Downscale_Downscale,                         \
            design::PulseFormGenerators_PulseFormGenerator##g##_Downscale_SelectedPulse,                     \
            design::PulseFormGenerators_PulseFormGenerator##g##_Delay_Delay,                                 \
            design::PulseFormGenerators_PulseFormGenerator##g##_Width_Width,                                 \
            FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE, FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE             \
    }

constexpr std::array<PulseFormGenerator, generatorCount> generators{
    {PULSE_FORM_GENERATOR(0), PULSE_FORM_GENERATOR(1), PULSE_FORM_GENERATOR(2), PULSE_FORM_GENERATOR(3)}};

const PulseFormGenerator& form(int generator) { return generators[static_cast<std::size_t>(generator)]; }

/// Whether a period is longer than the longest pulse time, delay or width, after the downscale. All in
/// microseconds.
bool fitsPeriod(double period, double delay, double width, unsigned downscale) {
    const double longest = std::max({0.0, delay / downscale, width / downscale});
    return period > longest;
}

} // namespace

double FgQxWrapperImpl::cachedPeriod(int port) {
    return trigger::periodMicroseconds(trigger::rateThroughPeriod(cache_FG_TRIGGER_FRAMESPERSECOND(port)));
}

// ---- frame rate

int FgQxWrapperImpl::setFramesPerSecond(int port, double value) {
    if (!limitsOf<FG_TRIGGER_FRAMESPERSECOND>().contain(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_TRIGGER_FRAMESPERSECOND(port), value, [&] {
        bool fits = true;
        for (const PulseFormGenerator& generator : generators) {
            double delay = 0;
            double width = 0;
            int code = readGeneratorTime(port, generator.delayRegister, &delay);
            code = code != error::ok ? code : readGeneratorTime(port, generator.widthRegister, &width);
            if (code != error::ok) {
                return code;
            }
            fits = fits && fitsPeriod(trigger::periodMicroseconds(value), delay, width,
                                      (this->*generator.downscale)(port));
        }
        return fits ? writeDesign(port, design::Generators_Generator_MinimumPeriod_Number,
                                  trigger::periodTicks(value) - periodOffset)
                    : error::pulseReachesPeriod;
    });
}

int FgQxWrapperImpl::readFramesPerSecond(int port, double* out) {
    return readCache(trigger::rateThroughPeriod(cache_FG_TRIGGER_FRAMESPERSECOND(port)), out);
}

// ---- pulse form generators

int FgQxWrapperImpl::readGeneratorTime(int port, const DesignParameter& parameter, double* microseconds) {
    std::uint64_t ticks = 0;
    const int code = readDesignTyped(port, parameter, &ticks, kavo::type::unsigned32);
    return code == error::ok ? readCache(trigger::microseconds(ticks), microseconds) : code;
}

int FgQxWrapperImpl::readGeneratorDelay(int port, int generator, double* out) {
    return readGeneratorTime(port, form(generator).delayRegister, out);
}

int FgQxWrapperImpl::readGeneratorWidth(int port, int generator, double* out) {
    return readGeneratorTime(port, form(generator).widthRegister, out);
}

int FgQxWrapperImpl::setGeneratorDelay(int port, int generator, double value) {
    // Judged in single precision, as its limits are: a little above the longest delay still rounds to it.
    if (!delayLimits.contain(static_cast<double>(static_cast<float>(value)))) {
        return error::outOfRange;
    }
    const PulseFormGenerator& changed = form(generator);
    return commit((this->*changed.delay)(port), value, [&] {
        double width = 0;
        if (const int code = readGeneratorTime(port, changed.widthRegister, &width); code != error::ok) {
            return code;
        }
        return fitsPeriod(cachedPeriod(port), value, width, (this->*changed.downscale)(port))
                   ? writeDesign(port, changed.delayRegister,
                                 static_cast<std::uint64_t>(trigger::delayTicks(value)))
                   : error::pulseReachesPeriod;
    });
}

int FgQxWrapperImpl::setGeneratorWidth(int port, int generator, double value) {
    if (!widthLimits.contain(value)) {
        return error::outOfRange;
    }
    const PulseFormGenerator& changed = form(generator);
    return commit((this->*changed.width)(port), value, [&] {
        double delay = 0;
        if (const int code = readGeneratorTime(port, changed.delayRegister, &delay); code != error::ok) {
            return code;
        }
        return fitsPeriod(cachedPeriod(port), delay, value, (this->*changed.downscale)(port))
                   ? writeDesign(port, changed.widthRegister, trigger::widthTicks(value))
                   : error::pulseReachesPeriod;
    });
}

int FgQxWrapperImpl::setGeneratorDownscale(int port, int generator, unsigned value) {
    const PulseFormGenerator& changed = form(generator);
    if (value < std::uint64_t{(this->*changed.phase)(port)} + 1 || value > largestDownscale) {
        return error::outOfRange;
    }
    const int result = commit((this->*changed.downscale)(port), value, [&] {
        double delay = 0;
        double width = 0;
        int code = readGeneratorTime(port, changed.delayRegister, &delay);
        code = code != error::ok ? code : readGeneratorTime(port, changed.widthRegister, &width);
        if (code != error::ok) {
            return code;
        }
        return fitsPeriod(cachedPeriod(port), delay, width, value)
                   ? writeDesign(port, changed.downscaleRegister, value)
                   : error::downscaleReachesPeriod;
    });
    if (result == error::ok) {
        setUpperLimit(port, changed.phaseId, value - 1);
    }
    return result;
}

int FgQxWrapperImpl::setGeneratorPhase(int port, int generator, unsigned value) {
    const PulseFormGenerator& changed = form(generator);
    if (value > (this->*changed.downscale)(port)-1) {
        return error::outOfRange;
    }
    const int result = commit((this->*changed.phase)(port), value,
                              [&] { return writeDesign(port, changed.phaseRegister, value + 1); });
    if (result == error::ok) {
        setLowerLimit(port, changed.downscaleId, value + 1);
    }
    return result;
}

// ---- multiplication, software trigger

int FgQxWrapperImpl::setMultiplyPulses(int port, unsigned value) {
    if (!integerLimitsOf<FG_TRIGGER_MULTIPLY_PULSES>().contain(value)) {
        return error::outOfRange;
    }
    const unsigned previous = cache_FG_TRIGGER_MULTIPLY_PULSES(port);
    return commit(cache_FG_TRIGGER_MULTIPLY_PULSES(port), value, [&] {
        // The selected pulse must never exceed the downscale on the way.
        const DesignWrite downscale{design::Generators_Sequence_Downscale, value};
        const DesignWrite selected{design::Generators_Sequence_SelectedPulse, value};
        const DesignWrite restart{design::Generators_ClearDownscale_Mode, pulseRequest};
        return value > previous ? writeDesignInOrder(port, {downscale, selected, restart})
                                : writeDesignInOrder(port, {selected, downscale, restart});
    });
}

int FgQxWrapperImpl::readGeneratorBusy(int port, bool& isBusy) {
    unsigned maximumReached = 0;
    unsigned queued = 0;
    int code = readDesign(port, design::Generators_Generator_MaximumReached_Status, &maximumReached);
    code = code != error::ok ? code : readDesign(port, design::Generators_QueueValue_Status, &queued);
    isBusy = maximumReached == 0 || queued != 0;
    return code;
}

int FgQxWrapperImpl::sendSoftwareTrigger(int port, unsigned pulses) {
    const bool queueIsOn = cache_FG_TRIGGERQUEUE_MODE(port) == switchedOn;
    if (pulses == 0 || pulses > (queueIsOn ? queueCapacity : 1)) {
        return error::outOfRange;
    }
    return commit(cache_FG_SENDSOFTWARETRIGGER(port), pulses, [&] {
        if (cache_FG_AREATRIGGERMODE(port) != modeSoftware) {
            return error::notSoftwareMode;
        }
        if (cache_FG_TRIGGERSTATE(port) != stateActive) {
            return error::triggerNotActive;
        }
        if (!queueIsOn) {
            bool isBusy = false;
            if (const int code = readGeneratorBusy(port, isBusy); code != error::ok) {
                return code;
            }
            if (isBusy) {
                return error::triggerBusy;
            }
        }
        for (unsigned pulse = 0; pulse < pulses; ++pulse) {
            if (const int code = writeDesign(port, design::TriggerMode_SoftwareTrigger_Mode, pulseRequest);
                code != error::ok) {
                return code;
            }
            nanosleep(&softwarePulseGap, nullptr);
        }
        return error::ok;
    });
}

int FgQxWrapperImpl::readSoftwareTriggerBusy(int port, unsigned* out) {
    bool isBusy = false;
    if (cache_FG_AREATRIGGERMODE(port) == modeSoftware) {
        if (const int code = readGeneratorBusy(port, isBusy); code != error::ok) {
            return code;
        }
    }
    return readConstant(isBusy ? busy : notBusy, out);
}

// ---- queue

int FgQxWrapperImpl::setQueueMode(int port, unsigned value) {
    if (!enumerations::OnOff.contains(value)) {
        return error::outOfRange;
    }
    const bool turnOn = value == switchedOn;
    const int result = commit(cache_FG_TRIGGERQUEUE_MODE(port), value, [&] {
        if (cache_FG_AREATRIGGERMODE(port) == modeGenerator) {
            return error::ok;
        }
        if (!turnOn) {
            return writeDesignInOrder(port,
                                      {{design::Generators_Generator_MinimumPeriod_Number, shortestPeriod},
                                       {design::Generators_Queue_QueueFullValue_Number, 1},
                                       {design::Generators_Queue_QueueEnabled_Select, 0}});
        }
        const int code = write_FG_TRIGGER_FRAMESPERSECOND(
            port, trigger::rateThroughPeriod(cache_FG_TRIGGER_FRAMESPERSECOND(port)));
        return code != error::ok ? code
                                 : writeDesignInOrder(
                                       port, {{design::Generators_Queue_QueueFullValue_Number, queueCapacity},
                                              {design::Generators_Queue_QueueEnabled_Select, 1}});
    });
    if (result == error::ok) {
        setUpperLimit(port, FG_SENDSOFTWARETRIGGER, turnOn ? queueCapacity : 1);
    }
    return result;
}

int FgQxWrapperImpl::readQueueFillLevel(int port, unsigned* out) {
    const unsigned mode = cache_FG_AREATRIGGERMODE(port);
    if (mode == modeGenerator || mode == modeSynchronized || cache_FG_TRIGGERSTATE(port) == stateAsyncStop) {
        return readConstant(0, out);
    }
    unsigned flags = 0;
    if (const int code = readDesign(port, design::Monitoring_ReadQueueStatus_Status, &flags);
        code != error::ok) {
        return code;
    }
    if ((flags & monitoring::queueFull[static_cast<std::size_t>(port)]) != 0) {
        return readConstant(queueCapacity, out);
    }
    unsigned queued = 0;
    int code = readDesign(port, design::Generators_QueueValue_Status, &queued);
    if (code == error::ok && queued == 0) {
        unsigned maximumReached = 0;
        code = readDesign(port, design::Generators_Generator_MaximumReached_Status, &maximumReached);
        queued = maximumReached == 0 ? 1 : 0;
    }
    return code == error::ok ? readConstant(queued, out) : code;
}

int FgQxWrapperImpl::readSoftwareTriggerQueue(int port, unsigned* out) {
    return cache_FG_AREATRIGGERMODE(port) == modeSoftware ? readQueueFillLevel(port, out)
                                                          : readConstant(0, out);
}

int FgQxWrapperImpl::setQueueThreshold(int port, unsigned& cache, unsigned value,
                                       const DesignParameter& parameter) {
    if (!thresholdLimits.contain(value)) {
        return error::outOfRange;
    }
    return commitPlain(port, cache, value, parameter);
}

int FgQxWrapperImpl::setQueueOnThreshold(int port, unsigned value) {
    return setQueueThreshold(port, cache_FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD(port), value,
                             design::Hysteresis_OnLevel_Number);
}

int FgQxWrapperImpl::setQueueOffThreshold(int port, unsigned value) {
    return setQueueThreshold(port, cache_FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD(port), value,
                             design::Hysteresis_OffLevel_Number);
}
