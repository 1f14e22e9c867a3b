#include "tests/simulator/trigger/TriggerBench.h"

namespace simulator {

namespace {

const std::string prefix = "Device1_Process2_Trigger_";

} // namespace

std::string cameraRegisterName(unsigned port, const std::string& ending) {
    return prefix + "TriggerCam" + std::to_string(port) + "_" + ending;
}

std::vector<Tick> TriggerRecorder::ticksOf(TriggerSignalKind kind, unsigned port, unsigned index,
                                           std::uint32_t value) const {
    std::vector<Tick> ticks;
    for (const Signal& change : signals)
        if (change.signal == TriggerSignal{kind, port, index} && change.value == value)
            ticks.push_back(change.tick);
    return ticks;
}

std::vector<Tick> TriggerRecorder::ticksOf(TriggerEventKind kind, unsigned index) const {
    std::vector<Tick> ticks;
    for (const Event& raised : events)
        if (raised.event == TriggerEvent{kind, index})
            ticks.push_back(raised.tick);
    return ticks;
}

void TriggerRecorder::clear() {
    signals.clear();
    events.clear();
    actionCommands.clear();
    outputs.clear();
}

void TriggerBench::set(unsigned port, const std::string& ending, std::uint32_t value) {
    ASSERT_TRUE(system.write(cameraRegisterName(port, ending), value, system.now())) << ending;
}

std::uint32_t TriggerBench::get(unsigned port, const std::string& ending) {
    return system.read(cameraRegisterName(port, ending), system.now()).value();
}

void TriggerBench::setForm(unsigned port, unsigned form, std::uint32_t delay, std::uint32_t width,
                           std::uint32_t downscale, std::uint32_t selectedPulse) {
    const std::string beginning = "PulseFormGenerators_PulseFormGenerator" + std::to_string(form) + "_";
    set(port, beginning + "Delay_Delay", delay);
    set(port, beginning + "Width_Width", width);
    set(port, beginning + "Downscale_Downscale", downscale);
    set(port, beginning + "Downscale_SelectedPulse", selectedPulse);
}

void TriggerBench::setPeriod(unsigned port, Tick period) {
    set(port, "Generators_Generator_MinimumPeriod_Number", static_cast<std::uint32_t>(period - 9));
}

void TriggerBench::setShared(const std::string& ending, std::uint32_t value) {
    ASSERT_TRUE(system.write(prefix + ending, value, system.now())) << ending;
}

std::uint32_t TriggerBench::getShared(const std::string& ending) {
    return system.read(prefix + ending, system.now()).value();
}

void TriggerBench::runFree(unsigned port, Tick period) {
    set(port, "Generators_ClearQueuePulse_Mode", 1);
    set(port, "Generators_EnableQueue_Select", 0);
    setPeriod(port, period);
    set(port, "PulseFormGenerators_Enable_Select", 1);
    set(port, "Generators_ClearQueuePulse_Mode", 0);
}

void TriggerBench::runQueued(unsigned port, Tick period) {
    set(port, "Generators_ClearQueuePulse_Mode", 1);
    set(port, "Generators_EnableQueue_Select", 1);
    setPeriod(port, period);
    set(port, "PulseFormGenerators_Enable_Select", 1);
    set(port, "Generators_ClearQueuePulse_Mode", 0);
}

void TriggerBench::setQueue(unsigned port, bool enabled, std::uint32_t fullValue) {
    set(port, "Generators_Queue_QueueFullValue_Number", fullValue);
    set(port, "Generators_Queue_QueueEnabled_Select", enabled ? 1 : 0);
}

void TriggerBench::setMultiply(unsigned port, std::uint32_t pulses) {
    set(port, "Generators_Sequence_Downscale", pulses);
    set(port, "Generators_Sequence_SelectedPulse", pulses);
    set(port, "Generators_ClearDownscale_Mode", 2);
}

void TriggerBench::sendSoftware(unsigned port, unsigned pulses) {
    for (unsigned pulse = 0; pulse < pulses; ++pulse)
        set(port, "TriggerMode_SoftwareTrigger_Mode", 2);
}

void TriggerBench::pulseInput(unsigned pin) {
    system.setInput(pin, true, system.now());
    system.setInput(pin, false, system.now() + 1);
}

std::vector<Tick> TriggerBench::generatorPulses(unsigned port) const {
    return recorder.ticksOf(TriggerSignalKind::GeneratorPulse, port, 0, 1);
}

std::vector<Tick> TriggerBench::formRises(unsigned port, unsigned form) const {
    return recorder.ticksOf(TriggerSignalKind::PulseForm, port, form, 1);
}

std::vector<Tick> TriggerBench::formFalls(unsigned port, unsigned form) const {
    return recorder.ticksOf(TriggerSignalKind::PulseForm, port, form, 0);
}

} // namespace simulator
