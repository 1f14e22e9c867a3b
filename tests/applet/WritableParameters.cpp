#include "tests/applet/WritableParameters.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int outOfRange = -6000;
constexpr int offStep = -7080;
constexpr double largestWord = 4294967295.0;
/// Half a step of the registers, and what rounding adds.
constexpr double halfTick = 0.00801;
constexpr double halfDebounceStep = 0.02401;
constexpr double infinity = std::numeric_limits<double>::infinity();

using Preparation = std::vector<std::pair<std::string, double>>;

WritableParameter range(const std::string& name, double initial, double from, double to,
                        const Preparation& preparation = {}, double step = 1) {
    WritableParameter parameter{name, false, initial, {from, from + step, to - step, to}, {}};
    parameter.accepted.erase(std::remove_if(parameter.accepted.begin(), parameter.accepted.end(),
                                            [&](double value) { return value < from || value > to; }),
                             parameter.accepted.end());
    for (const double below : {from - 1, from - step, 0.0}) {
        if (below >= 0 && below < from) {
            parameter.refused.emplace_back(below, outOfRange);
        }
    }
    for (const double above : {to + 1, to + step, largestWord}) {
        if (above <= largestWord && above > to) {
            parameter.refused.emplace_back(above, outOfRange);
        }
    }
    if (step > 1) {
        for (const double off : {from + 1, from + step / 2, to - 1}) {
            parameter.refused.emplace_back(off, offStep);
        }
    }
    parameter.preparation = preparation;
    return parameter;
}

WritableParameter enumeration(const std::string& name, double initial, const std::vector<double>& values,
                              const Preparation& preparation = {}) {
    WritableParameter parameter{name, false, initial, values, {{largestWord, outOfRange}}};
    const double largest = *std::max_element(values.begin(), values.end());
    for (double value = 0; value <= largest + 1; ++value) {
        if (std::find(values.begin(), values.end(), value) == values.end()) {
            parameter.refused.emplace_back(value, outOfRange);
        }
    }
    parameter.preparation = preparation;
    return parameter;
}

WritableParameter real(const std::string& name, double initial, double from, double to, double tolerance,
                       const Preparation& preparation = {}) {
    WritableParameter parameter{name, true, initial, {from, (from + to) / 2, to}, {}};
    for (const double outside :
         {std::nextafter(from, -infinity), std::nextafter(to, infinity), -infinity, infinity, std::nan("")}) {
        parameter.refused.emplace_back(outside, outOfRange);
    }
    parameter.tolerance = tolerance;
    parameter.preparation = preparation;
    return parameter;
}

/// Delays are judged in single precision, which is 4 microseconds wide at the end of the range.
WritableParameter delay(const std::string& name, const Preparation& preparation) {
    WritableParameter parameter = real(name, 0, 0, 3.4e7, halfTick, preparation);
    parameter.accepted.insert(parameter.accepted.end(), {0.016, 34000001.0});
    parameter.refused = {{-0.016, outOfRange},       {34000004.0, outOfRange}, {6.8e7, outOfRange},
                         {std::nan(""), outOfRange}, {infinity, outOfRange},   {-infinity, outOfRange}};
    return parameter;
}

std::vector<double> upTo(int last) {
    std::vector<double> values;
    for (int value = 0; value <= last; ++value) {
        values.push_back(value);
    }
    return values;
}

using Parameters = std::vector<WritableParameter>;

void addImage(Parameters& all) {
    all.push_back(range("FG_TIMEOUT", 1000000, 2, 2147483646));
    all.push_back(enumeration("FG_GBE_CAMTYPE", 0, {0, 1, 2, 4, 6}));
    all.push_back(range("FG_MTU_SIZE", 7204, 44, 9036, {}, 8));
    all.push_back(enumeration("FG_SWAP_CHANNELS", 1, {0, 1}));
    all.push_back(range("FG_CAMERA_WIDTH", 1024, 16, 4096, {}, 16));
    all.push_back(range("FG_WIDTH", 1024, 16, 4096, {}, 16));
    all.push_back(range("FG_HEIGHT", 1024, 2, 4096));
    all.push_back(range("FG_XOFFSET", 0, 0, 4080, {{"FG_WIDTH", 16}}, 16));
    // No height is small enough for the last row that the description shows.
    all.push_back(range("FG_YOFFSET", 0, 0, 4094, {{"FG_HEIGHT", 2}}));
    all.push_back(enumeration("FG_FORMAT", 3, {3, 1}));
    all.push_back(enumeration("FG_BITALIGNMENT", 1, {1, 0}));
    all.push_back(enumeration("FG_LUT_TYPE", 3, {3, 0}));
    all.push_back(real("FG_PROCESSING_OFFSET", 0, -1, 1, 0));
    all.push_back(real("FG_PROCESSING_GAIN", 1, 0, 4096, 0));
    all.push_back(real("FG_PROCESSING_GAMMA", 1, -1000, 1000, 0));
    all.push_back(enumeration("FG_PROCESSING_INVERT", 0, {1, 0}));
}

/// The highest rate needs every pulse shorter than its 160 ns.
Preparation shortestPulses() {
    Preparation preparation;
    for (const char* generator : {"0", "1", "2", "3"}) {
        const std::string name = std::string("FG_TRIGGER_PULSEFORMGEN") + generator;
        preparation.emplace_back(name + "_WIDTH", 1);
        preparation.emplace_back(name + "_DOWNSCALE", 7);
    }
    return preparation;
}

void addMode(Parameters& all, int port) {
    all.push_back(port == 0 ? enumeration("FG_AREATRIGGERMODE", 1, {1, 2, 4})
                            : enumeration("FG_AREATRIGGERMODE", 1, {1, 2, 3, 4}));
    all.push_back(enumeration("FG_TRIGGERSTATE", 2, {0, 1, 2}));
    all.push_back(real("FG_TRIGGER_FRAMESPERSECOND", 8, 0.01455191522836685, 6.25e6, 1e-6, shortestPulses()));
    all.push_back(enumeration("FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR", 1, {1}));
}

void addInput(Parameters& all) {
    all.push_back(real("FG_TRIGGERIN_DEBOUNCE", 1.008, 0.096, 3.024, halfDebounceStep));
    all.back().isShared = true;
    all.push_back(enumeration("FG_TRIGGERIN_SRC", 0, upTo(7)));
    all.push_back(enumeration("FG_TRIGGERIN_POLARITY", 0, {1, 0}));
    all.push_back(range("FG_TRIGGERIN_DOWNSCALE", 1, 1, largestWord));
    all.push_back(range("FG_TRIGGERIN_DOWNSCALE_PHASE", 0, 0, largestWord - 1,
                        {{"FG_TRIGGERIN_DOWNSCALE", largestWord}}));
    all.push_back(enumeration("FG_TRIGGERIN_BYPASS_SRC", 0, upTo(7)));
    all.push_back(range("FG_SENDSOFTWARETRIGGER", 1, 1, 2040,
                        {{"FG_AREATRIGGERMODE", 4}, {"FG_TRIGGERSTATE", 0}, {"FG_TRIGGERQUEUE_MODE", 1}}));
    all.push_back(enumeration("FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR", 1, {1}));
    all.push_back(enumeration("FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR", 1, {1}));
}

void addGenerators(Parameters& all) {
    all.push_back(range("FG_TRIGGER_MULTIPLY_PULSES", 1, 1, 65535));
    all.push_back(enumeration("FG_TRIGGERQUEUE_MODE", 0, {1, 0}));
    all.push_back(range("FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD", 2047, 2, 2047));
    all.push_back(range("FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD", 2, 2, 2047));
    // The period is longer than any pulse.
    const Preparation slowest{{"FG_TRIGGER_FRAMESPERSECOND", 0.0146}};
    for (const char* generator : {"0", "1", "2", "3"}) {
        const std::string name = std::string("FG_TRIGGER_PULSEFORMGEN") + generator;
        all.push_back(range(name + "_DOWNSCALE", 1, 1, 7));
        all.push_back(range(name + "_DOWNSCALE_PHASE", 0, 0, 6, {{name + "_DOWNSCALE", 7}}));
        all.push_back(delay(name + "_DELAY", slowest));
        all.push_back(real(name + "_WIDTH", *generator == '0' ? 4000 : 4, 1, 6.8e7, halfTick, slowest));
    }
}

void addOutputs(Parameters& all) {
    all.push_back(enumeration("FG_CAMERA_ACTION_COMMAND_SOURCE", 0, upTo(11)));
    all.push_back(enumeration("FG_TRIGGEROUT_SELECT0", 6, upTo(11)));
    all.push_back(enumeration("FG_TRIGGEROUT_SELECT1", 7, upTo(11)));
    all.push_back(enumeration("FG_TRIGGEROUT_SELECT2", 5, upTo(11)));
    all.push_back(enumeration("FG_TRIGGEROUT_SELECT3", 5, upTo(11)));
    all.push_back(enumeration("FG_TRIGGEROUT_STATS_SOURCE", 0, upTo(3)));
    all.push_back(enumeration("FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR", 1, {1}));
    all.push_back(enumeration("FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR", 1, {1}));
    all.push_back(enumeration("FG_TRIGGER_OUTPUT_EVENT_SELECT", 0, upTo(3)));
}

} // namespace

std::vector<WritableParameter> writableParameters(int port) {
    Parameters all;
    addImage(all);
    addMode(all, port);
    addInput(all);
    addGenerators(all);
    addOutputs(all);
    return all;
}
