#include "simulator/trigger/TriggerTrace.h"

#include "simulator/trigger/TriggerSystem.h"

#include <algorithm>

namespace simulator {

namespace {

void addSignals(std::vector<TriggerSignal>& signals, TriggerSignalKind kind, unsigned port, unsigned count) {
    for (unsigned index = 0; index < count; ++index)
        signals.push_back({kind, port, index});
}

} // namespace

std::vector<TriggerSignal> triggerLevelSignals() {
    std::vector<TriggerSignal> signals;
    addSignals(signals, TriggerSignalKind::Input, 0, triggerPinCount);
    addSignals(signals, TriggerSignalKind::DebouncedInput, 0, triggerPinCount);
    for (unsigned port = 0; port < triggerPortCount; ++port) {
        addSignals(signals, TriggerSignalKind::QueueFillLevel, port, 1);
        addSignals(signals, TriggerSignalKind::PulseForm, port, pulseFormCount);
        addSignals(signals, TriggerSignalKind::Output, port, triggerOutputCount);
        addSignals(signals, TriggerSignalKind::Exposure, port, 1);
    }
    return signals;
}

bool isInstant(TriggerSignalKind kind) {
    return kind == TriggerSignalKind::GeneratorPulse || kind == TriggerSignalKind::ActionCommand ||
           kind == TriggerSignalKind::FrameStart || kind == TriggerSignalKind::FrameEnd;
}

TriggerTrace::TriggerTrace(std::size_t capacity) : mCapacity(std::max<std::size_t>(capacity, 1)) {}

void TriggerTrace::start(const TriggerSystem& system) {
    mSamples.clear();
    mDropped = 0;
    mBegin = system.now();
    mLevelsBefore.clear();
    for (const TriggerSignal& signal : triggerLevelSignals())
        mLevelsBefore.push_back({signal, system.signalValue(signal)});
}

void TriggerTrace::record(const TriggerSignal& signal, std::uint32_t value, Tick tick) {
    if (mSamples.size() == mCapacity)
        dropOldest();
    mSamples.push_back({tick, signal, value});
}

void TriggerTrace::dropOldest() {
    const Sample& oldest = mSamples.front();
    const auto level = std::find_if(mLevelsBefore.begin(), mLevelsBefore.end(),
                                    [&](const Level& before) { return before.signal == oldest.signal; });
    if (level != mLevelsBefore.end())
        level->value = oldest.value;
    mBegin = oldest.tick;
    ++mDropped;
    mSamples.pop_front();
}

} // namespace simulator
