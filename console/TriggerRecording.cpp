#include "console/TriggerRecording.h"

#include "console/Duration.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/Session.h"
#include "console/ValueText.h"

#include <algorithm>

namespace orbctl {

namespace {

/// Changes that are kept: more than any diagram can show.
constexpr unsigned traceCapacity = 1000000;
constexpr std::uint64_t numberOfInputs = 8;

std::vector<std::string> partsOf(const std::string& text, std::size_t most) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    while (parts.size() + 1 < most) {
        const std::size_t colon = text.find(':', begin);
        if (colon == std::string::npos)
            break;
        parts.push_back(text.substr(begin, colon - begin));
        begin = colon + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

[[noreturn]] void refuse(const std::string& text, const char* expected) {
    throw Failure(ExitStatus::usage, "\"" + text + "\" cannot be understood; write " + expected);
}

void startInputs(const BoardControl& control, const std::vector<InputPulses>& inputs, std::uint64_t begin) {
    for (const InputPulses& pulses : inputs) {
        const std::uint64_t high = pulses.period / 2;
        control.playInput(pulses.input, begin + high, high, pulses.period - high, pulses.count);
    }
}

/// Goes through the plan's settings in the order of their time, and to its end.
void passTime(Session& session, const BoardControl& control, const RecordingPlan& plan) {
    std::vector<TimedSetting> settings = plan.settings;
    std::stable_sort(
        settings.begin(), settings.end(),
        [](const TimedSetting& first, const TimedSetting& second) { return first.tick < second.tick; });
    std::uint64_t passed = 0;
    for (const TimedSetting& timed : settings) {
        if (timed.tick > plan.ticks)
            break;
        control.advance(timed.tick - passed);
        passed = timed.tick;
        applySettings(session.applet(), plan.ports, {timed.setting});
    }
    control.advance(plan.ticks - passed);
}

} // namespace

TimedSetting timedSettingFrom(const std::string& text) {
    constexpr const char* expected = "TIME:NAME=VALUE, such as 100ms:FG_TRIGGERSTATE=TS_SYNC_STOP";
    const std::vector<std::string> parts = partsOf(text, 2);
    const auto ticks = ticksFrom(parts[0]);
    if (parts.size() < 2 || !ticks)
        refuse(text, expected);
    return {*ticks, settingFrom(parts[1])};
}

InputPulses inputPulsesFrom(const std::string& text) {
    constexpr const char* expected = "INPUT:PERIOD or INPUT:PERIOD:COUNT, such as 0:10ms:5";
    const std::vector<std::string> parts = partsOf(text, 3);
    // Numbers that no input has stand for texts that are none.
    const std::uint64_t input = unsignedFrom(parts[0]).value_or(numberOfInputs);
    const std::uint64_t period = parts.size() < 2 ? 0 : ticksFrom(parts[1]).value_or(0);
    const std::optional<std::uint64_t> count = parts.size() < 3 ? std::uint64_t{0} : unsignedFrom(parts[2]);
    if (input >= numberOfInputs || period < 2 || !count)
        refuse(text, expected);
    return {static_cast<unsigned>(input), period, *count};
}

TriggerDiagram recorded(Session& session, const RecordingPlan& plan) {
    session.applet();
    const BoardControl control(session.runtime(), session.board());
    const SteppedTime stepped(control);
    const std::uint64_t begin = control.time();
    control.startTrace(traceCapacity);
    startInputs(control, plan.inputs, begin);
    passTime(session, control, plan);
    const std::vector<BoardSignalSample> samples = control.readTrace();
    control.stopTrace();
    return diagramOf(samples, {plan.title, begin, begin + plan.ticks, plan.ports});
}

std::string triggerTitle(Session& session, unsigned port) {
    const ParameterCatalogue catalogue(session.applet(), port);
    const auto text = [&](const char* name) {
        const Parameter& parameter = catalogue.find(name);
        const Reading reading = readParameter(session.applet(), parameter);
        return reading.isGood() ? plainText(parameter, reading.value) : readableText(parameter, reading);
    };
    return "port " + textOf(std::uint64_t{port}) + ": " + text("FG_AREATRIGGERMODE") + ", " +
           text("FG_TRIGGERSTATE") + ", " + text("FG_TRIGGER_FRAMESPERSECOND") + " Hz";
}

} // namespace orbctl
