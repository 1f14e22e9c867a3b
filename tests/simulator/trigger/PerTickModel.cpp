#include "tests/simulator/trigger/PerTickModel.h"

#include <algorithm>

namespace simulator {

namespace {

const std::string prefix = "Device1_Process2_Trigger_";

bool endsWith(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

} // namespace

bool PerTickModel::Divider::pulse(std::uint32_t downscale, std::uint32_t selected) {
    if (held)
        return false;
    const std::uint32_t last = std::max(downscale, 1U);
    const std::uint32_t number = counted + 1;
    counted = number < last ? number : 0;
    return number <= last && number == selected;
}

void PerTickModel::Divider::clear(std::uint32_t mode) {
    held = mode == 1;
    counted = mode == 1 || mode == 2 ? 0 : counted;
}

void PerTickModel::Count::pulse() { pulses = held ? 0 : (pulses + 1) % 65536; }

void PerTickModel::Count::clear(std::uint32_t mode) {
    held = mode == 1;
    pulses = mode == 1 || mode == 2 ? 0 : pulses;
}

void PerTickModel::Flag::clear(std::uint32_t mode) {
    held = mode == 1;
    up = up && mode != 1 && mode != 2;
}

PerTickModel::PerTickModel() {
    for (const TriggerParameter& parameter : triggerParameters()) {
        std::uint32_t first = 0;
        if (endsWith(parameter.name, "_Downscale_Downscale") || endsWith(parameter.name, "_SelectedPulse") ||
            endsWith(parameter.name, "Sequence_Downscale") ||
            endsWith(parameter.name, "_QueueEnabled_Select") ||
            endsWith(parameter.name, "_ClearQueuePulse_Mode"))
            first = 1;
        if (endsWith(parameter.name, "_QueueFullValue_Number") || endsWith(parameter.name, "_OnLevel_Number"))
            first = 2040;
        if (endsWith(parameter.name, "_OffLevel_Number"))
            first = 2;
        mRegisters.push_back(first);
    }
}

std::uint32_t PerTickModel::value(unsigned port, const char* ending) const {
    auto& places = mPlaces.at(port);
    auto place = places.find(ending);
    if (place == places.end()) {
        const std::string name = prefix + "TriggerCam" + std::to_string(port) + "_" + ending;
        place = places.emplace(ending, findTriggerParameter(name).value()).first;
    }
    return mRegisters[place->second];
}

void PerTickModel::report(const char* what, unsigned port, unsigned index, std::uint32_t value) {
    reports.push_back({mNow, what, port, index, value});
}

void PerTickModel::advanceTo(Tick tick) {
    while (mNow < tick) {
        ++mNow;
        countTick();
        for (unsigned port = 0; port < 2; ++port)
            runForms(port);
        for (unsigned port = 0; port < 2; ++port)
            runGenerator(port);
        runPins();
    }
}

void PerTickModel::countTick() {
    for (Pin& pin : mPins)
        ++pin.heldFor;
    for (Camera& camera : mCameras) {
        ++camera.sincePulse;
        ++camera.sinceRise;
        for (Form& form : camera.forms) {
            form.delayLeft -= form.delaying ? 1 : 0;
            form.widthLeft -= form.high ? 1 : 0;
        }
    }
}

void PerTickModel::runForms(unsigned port) {
    for (unsigned number = 0; number < 4; ++number) {
        Form& form = mCameras[port].forms[number];
        if (form.high && form.widthLeft == 0) {
            form.high = false;
            report("form", port, number, 0);
            drawOutputs(port);
        }
        if (form.delaying && form.delayLeft == 0) {
            form.delaying = false;
            startForm(port, number);
        }
    }
}

bool PerTickModel::periodPassed(unsigned port) const {
    const Camera& camera = mCameras[port];
    const Tick period = Tick{value(port, "Generators_Generator_MinimumPeriod_Number")} + 9;
    return !camera.pulsedSinceClear || camera.sincePulse >= period;
}

void PerTickModel::runGenerator(unsigned port) {
    const Camera& camera = mCameras[port];
    const bool queued = value(port, "Generators_EnableQueue_Select") % 2 == 1;
    if (!camera.held && periodPassed(port) && (!queued || camera.waiting > 0))
        givePulse(port);
}

void PerTickModel::runPins() {
    for (unsigned pin = 0; pin < 8; ++pin)
        acceptPin(pin);
    for (unsigned pin = 0; pin < 8; ++pin) {
        const Wave& wave = mWaves[pin];
        if (!wave.playing || mNow < wave.first)
            continue;
        const Tick period = wave.high + wave.low;
        const Tick phase = (mNow - wave.first) % period;
        if (wave.count != 0 && (mNow - wave.first) / period >= wave.count)
            continue;
        if (phase == 0 || phase == wave.high)
            changePin(pin, phase == 0);
    }
    const auto planned = mPlan.equal_range(mNow);
    for (auto change = planned.first; change != planned.second; ++change)
        changePin(change->second.first, change->second.second);
}

void PerTickModel::changePin(unsigned pin, bool level) {
    if (mPins[pin].raw == level)
        return;
    mPins[pin].raw = level;
    mPins[pin].heldFor = 0;
    report("input", 0, pin, level);
    acceptPin(pin);
}

void PerTickModel::acceptPin(unsigned pin) {
    static const TriggerParameterIndex period =
        findTriggerParameter(prefix + "TriggerInput_Debounce8_Prescale_Period").value();
    Pin& looked = mPins[pin];
    if (looked.raw == looked.accepted || looked.heldFor < Tick{3} * mRegisters[period])
        return;
    looked.accepted = looked.raw;
    report("accepted", 0, pin, looked.raw);
    report(looked.raw ? "event rising" : "event falling", pin, 0, 0);
    for (unsigned port = 0; port < 2; ++port) {
        drawOutputs(port);
        look(port);
    }
}

void PerTickModel::look(unsigned port) {
    const bool pin = mPins[value(port, "InputSelect_Select_Select") % 8].accepted;
    const bool level = (value(port, "InputSelect_Polarity_Invert") % 2 == 1) ? !pin : pin;
    const bool before = mCameras[port].input;
    mCameras[port].input = level;
    if (level && !before)
        inputRise(port);
}

void PerTickModel::inputRise(unsigned port) {
    Camera& camera = mCameras[port];
    camera.inputPulses.pulse();
    if (camera.hasRisen) {
        camera.lastPeriod = camera.sinceRise;
        camera.periods.push_back(camera.sinceRise);
    }
    camera.hasRisen = true;
    camera.sinceRise = 0;
    const bool passes = camera.inputDivider.pulse(value(port, "Downscale_Downscale_Downscale"),
                                                  value(port, "Downscale_Downscale_SelectedPulse"));
    if (passes && value(port, "TriggerMode_SelectExternal_Select") % 2 == 1)
        trigger(port);
}

void PerTickModel::trigger(unsigned port) {
    Camera& camera = mCameras[port];
    if (camera.held || value(port, "Generators_EnableQueue_Select") % 2 == 0)
        return;
    bool taken = false;
    if (value(port, "Generators_Queue_QueueEnabled_Select") % 2 == 1)
        taken = camera.waiting < std::min(value(port, "Generators_Queue_QueueFullValue_Number"), 2040U);
    else
        taken = camera.waiting == 0 && periodPassed(port);
    if (taken)
        ++camera.waiting;
    else
        raise(camera.overridden, "event override", port);
    runGenerator(port);
    tellWaiting(port);
}

void PerTickModel::tellWaiting(unsigned port) {
    Camera& camera = mCameras[port];
    if (camera.waiting == camera.reportedWaiting)
        return;
    camera.reportedWaiting = camera.waiting;
    report("waiting", port, 0, camera.waiting);
    const bool on = !camera.above && camera.waiting >= value(port, "Hysteresis_OnLevel_Number");
    const bool off = camera.above && camera.waiting < value(port, "Hysteresis_OffLevel_Number");
    if (on)
        report("event on", port, 0, 0);
    if (off)
        report("event off", port, 0, 0);
    camera.above = (camera.above || on) && !off;
}

void PerTickModel::givePulse(unsigned port) {
    Camera& camera = mCameras[port];
    camera.pulsedSinceClear = true;
    camera.sincePulse = 0;
    if (value(port, "Generators_EnableQueue_Select") % 2 == 1 &&
        camera.sequence.pulse(value(port, "Generators_Sequence_Downscale"),
                              value(port, "Generators_Sequence_SelectedPulse")))
        --camera.waiting;
    report("pulse", port, 0, 1);
    const bool slave = value(1, "Synchronize_SlaveMode_Select") % 2 == 1;
    if (port == 0 || !slave)
        toForms(port);
    if (port == 0 && slave)
        toForms(1);
    tellWaiting(port);
}

void PerTickModel::toForms(unsigned port) {
    if (value(port, "PulseFormGenerators_Enable_Select") % 2 == 0)
        return;
    for (unsigned number = 0; number < 4; ++number) {
        Form& form = mCameras[port].forms[number];
        if (!form.divider.pulse(formValue(port, number, "Downscale_Downscale"),
                                formValue(port, number, "Downscale_SelectedPulse")))
            continue;
        const std::uint32_t delay = formValue(port, number, "Delay_Delay");
        if (form.delaying) {
            raise(mCameras[port].overridden, "event override", port);
        } else if (delay > 0) {
            form.delaying = true;
            form.delayLeft = delay;
        } else {
            startForm(port, number);
        }
    }
}

void PerTickModel::startForm(unsigned port, unsigned number) {
    Form& form = mCameras[port].forms[number];
    if (form.high)
        return raise(mCameras[port].overridden, "event override", port);
    form.widthLeft = formValue(port, number, "Width_Width");
    if (form.widthLeft == 0)
        return;
    form.high = true;
    report("form", port, number, 1);
    if (value(port, "OutputStatistics_Select_Select") % 4 == number)
        mCameras[port].outputPulses.pulse();
    if (value(port, "OutputEvent_Select_Select") % 4 == number)
        report("event output", port, 0, 0);
    drawOutputs(port);
}

void PerTickModel::raise(Flag& flag, const char* what, unsigned port) {
    if (flag.held || flag.up)
        return;
    flag.up = true;
    report(what, port, 0, 0);
}

bool PerTickModel::source(unsigned port, std::uint32_t select) const {
    if (select == 4)
        return mPins[value(port, "InputSelect_BypassSelect_Select") % 8].accepted;
    return select < 4 && mCameras[port].forms[select].high;
}

void PerTickModel::drawOutputs(unsigned port) {
    static const std::array<std::array<const char*, 2>, 4> registers{
        {{"TriggerOutput_Select0_Select_Select", "TriggerOutput_Select0_Polarity_Invert"},
         {"TriggerOutput_Select1_Select_Select", "TriggerOutput_Select1_Polarity_Invert"},
         {"TriggerOutput_Select2_Select_Select", "TriggerOutput_Select2_Polarity_Invert"},
         {"TriggerOutput_Select3_Select_Select", "TriggerOutput_Select3_Polarity_Invert"}}};
    Camera& camera = mCameras[port];
    for (unsigned output = 0; output < 4; ++output) {
        const bool inverted = value(port, registers[output][1]) % 2 == 1;
        const bool level = source(port, value(port, registers[output][0])) ? !inverted : inverted;
        if (level != camera.outputs[output])
            report("output", port, output, level);
        camera.outputs[output] = level;
    }
    const bool inverted = value(port, "TriggerCamera_SelectTriggerCamera_Polarity_Invert") % 2 == 1;
    const bool level =
        source(port, value(port, "TriggerCamera_SelectTriggerCamera_Select_Select")) ? !inverted : inverted;
    const bool rises = level && !camera.cameraTrigger;
    camera.cameraTrigger = level;
    if (!rises)
        return;
    if (!camera.checkHeld) {
        if (camera.unanswered)
            raise(camera.missing, "event missing", port);
        camera.unanswered = true;
        ++camera.pending;
    }
    report("command", port, 0, 1);
}

} // namespace simulator
