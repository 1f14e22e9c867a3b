#include "tests/simulator/trigger/PerTickModel.h"

#include <algorithm>

namespace simulator {

namespace {

const std::string prefix = "Device1_Process2_Trigger_";

bool isOneOf(const std::string& text, std::initializer_list<const char*> texts) {
    return std::any_of(texts.begin(), texts.end(), [&](const char* other) { return text == other; });
}

} // namespace

std::uint32_t PerTickModel::formValue(unsigned port, unsigned form, const char* ending) const {
    static std::map<std::string, std::string> names;
    const std::string key = ending + std::to_string(form);
    auto name = names.find(key);
    if (name == names.end())
        name = names
                   .emplace(key, "PulseFormGenerators_PulseFormGenerator" + std::to_string(form) + "_" +
                                     std::string(ending))
                   .first;
    return value(port, name->second.c_str());
}

void PerTickModel::write(TriggerParameterIndex index, std::uint32_t value) {
    const std::string name = triggerParameters()[index].name.substr(prefix.size());
    const std::uint32_t old = mRegisters[index];
    mRegisters[index] = value;
    if (name == "TriggerInput_Debounce8_Prescale_Period") {
        for (unsigned pin = 0; pin < 8; ++pin)
            acceptPin(pin);
    } else if (name.compare(0, 11, "TriggerCam0") == 0 || name.compare(0, 11, "TriggerCam1") == 0) {
        writeCamera(name[10] == '1' ? 1 : 0, name.substr(12), old, value);
    } else {
        writeMonitoring(name, value);
    }
}

void PerTickModel::writeCamera(unsigned port, const std::string& ending, std::uint32_t old,
                               std::uint32_t value) {
    Camera& camera = mCameras[port];
    if (ending == "TriggerMode_SoftwareTrigger_Mode" && value == 2 &&
        this->value(port, "TriggerMode_SelectExternal_Select") % 2 == 0)
        trigger(port);
    if (isOneOf(ending, {"InputSelect_Select_Select", "InputSelect_Polarity_Invert"}))
        look(port);
    if (ending == "Downscale_Clear_Mode")
        camera.inputDivider.clear(value);
    if (ending == "Generators_ClearDownscale_Mode")
        camera.sequence.clear(value);
    if (ending == "InputStatistics_ClearPulses_Mode")
        camera.inputPulses.clear(value);
    if (ending == "OutputStatistics_ClearPulses_Mode")
        camera.outputPulses.clear(value);
    if (ending == "InputStatistics_ClearMinMax_Value" && old % 2 != value % 2)
        camera.periods.clear();
    if (ending == "Generators_ClearQueuePulse_Mode") {
        camera.held = value == 1;
        if (value == 1 || value == 2) {
            camera.waiting = 0;
            camera.pulsedSinceClear = false;
            tellWaiting(port);
        }
    }
    writeForm(port, ending, value);
    drawOutputs(port);
    runGenerator(port);
}

void PerTickModel::writeForm(unsigned port, const std::string& ending, std::uint32_t value) {
    for (unsigned form = 0; form < 4; ++form)
        if (ending ==
            "PulseFormGenerators_PulseFormGenerator" + std::to_string(form) + "_ClearDownscale_Mode")
            mCameras[port].forms[form].divider.clear(value);
}

void PerTickModel::writeMonitoring(const std::string& name, std::uint32_t value) {
    for (unsigned port = 0; port < 2; ++port) {
        const std::string camera = "Cam" + std::to_string(port);
        if (name == "Monitoring_ClearOverride" + camera + "_Mode")
            mCameras[port].overridden.clear(value);
        if (name == "Monitoring_ClearMissingFrame_" + camera + "_Mode")
            mCameras[port].missing.clear(value);
        if (name == "Monitoring_CheckForMissingFrame_" + camera + "_ResetMissing_Mode") {
            mCameras[port].checkHeld = value == 1;
            if (value == 1 || value == 2) {
                mCameras[port].unanswered = false;
                mCameras[port].pending = 0;
            }
        }
    }
}

std::uint32_t PerTickModel::queueStatus() const {
    std::uint32_t status = 0;
    for (unsigned port = 0; port < 2; ++port) {
        const Camera& camera = mCameras[port];
        const bool full =
            value(port, "Generators_Queue_QueueEnabled_Select") % 2 == 1 &&
            camera.waiting >= std::min(2040U, value(port, "Generators_Queue_QueueFullValue_Number"));
        const unsigned bit = port == 0 ? 1 : 8;
        status += camera.overridden.up ? bit : 0;
        status += full ? bit * 2 : 0;
        status += camera.missing.up ? bit * 4 : 0;
    }
    return status;
}

std::uint32_t PerTickModel::read(TriggerParameterIndex index) const {
    const TriggerParameter& parameter = triggerParameters()[index];
    const std::string name = parameter.name.substr(prefix.size());
    if (name == "Monitoring_ReadQueueStatus_Status")
        return queueStatus();
    if (name == "TriggerInput_InputStatus_Status") {
        std::uint32_t levels = 0;
        for (unsigned pin = 0; pin < 8; ++pin)
            levels += mPins[pin].accepted ? 1U << pin : 0U;
        return levels;
    }
    if (!parameter.readOnly)
        return mRegisters[index];
    const Camera& camera = mCameras[parameter.port];
    const auto& periods = camera.periods;
    const std::map<std::string, Tick> values{
        {"Generators_Generator_MaximumReached_Status", periodPassed(parameter.port) ? 1 : 0},
        {"Generators_QueueValue_Status", camera.waiting},
        {"TriggerCamera_ActionCommand_PendingActionCmdCount", camera.pending},
        {"InputStatistics_ReadPulses_Status", camera.inputPulses.pulses},
        {"InputStatistics_ReadPeriod_Status", camera.lastPeriod},
        {"InputStatistics_ReadMax_Status",
         periods.empty() ? 0 : *std::max_element(periods.begin(), periods.end())},
        {"InputStatistics_ReadMin_Status",
         periods.empty() ? 0 : *std::min_element(periods.begin(), periods.end())},
        {"OutputStatistics_ReadPulses_Status", camera.outputPulses.pulses}};
    return static_cast<std::uint32_t>(values.at(name.substr(12)));
}

void PerTickModel::setInput(unsigned pin, bool level) { changePin(pin, level); }

void PerTickModel::scheduleInput(unsigned pin, bool level, Tick tick) {
    if (tick <= mNow)
        changePin(pin, level);
    else
        mPlan.emplace(tick, std::make_pair(pin, level));
}

void PerTickModel::driveInput(unsigned pin, Tick first, Tick high, Tick low, std::uint64_t count) {
    mWaves[pin] = {true, std::max(first, mNow + 1), high, low, count};
}

void PerTickModel::frameStarted(unsigned port) {
    Camera& camera = mCameras[port];
    camera.unanswered = false;
    camera.pending -= camera.pending > 0 ? 1 : 0;
    report("frame", port, 0, 1);
    report("event frame", port, 0, 0);
}

} // namespace simulator
