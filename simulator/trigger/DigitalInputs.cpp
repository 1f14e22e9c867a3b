#include "simulator/trigger/DigitalInputs.h"

#include <stdexcept>

namespace simulator {

namespace {

/// 48 ns.
constexpr Tick ticksPerDebounceStep = 3;

} // namespace

void DigitalInputs::setDebounce(std::uint32_t steps, Tick now) {
    mDebounceTicks = steps * ticksPerDebounceStep;
    run(now);
}

void DigitalInputs::setLevel(unsigned pin, bool level, Tick now) {
    changeLevel(pin, level, now);
    findNext();
}

void DigitalInputs::schedule(unsigned pin, bool level, Tick tick) {
    mSchedule.emplace(tick, std::make_pair(pin, level));
    findNext();
}

void DigitalInputs::drive(unsigned pin, const InputWave& wave) {
    if (wave.highTicks == 0 || wave.lowTicks == 0)
        throw std::invalid_argument("A wave on an input needs a high time and a low time.");
    Pin& driven = mPins.at(pin);
    driven.wave = wave;
    driven.wavePulses = 0;
    driven.nextWaveEdge = wave.firstRise;
    driven.waveRises = true;
    findNext();
}

void DigitalInputs::release(unsigned pin) {
    mPins.at(pin).nextWaveEdge = neverTick;
    findNext();
}

void DigitalInputs::clearSchedule() {
    mSchedule.clear();
    for (Pin& pin : mPins)
        pin.nextWaveEdge = neverTick;
    findNext();
}

std::uint32_t DigitalInputs::acceptedLevels() const {
    std::uint32_t levels = 0;
    for (unsigned pin = 0; pin < triggerPinCount; ++pin)
        levels |= (mPins.at(pin).accepted ? 1U : 0U) << pin;
    return levels;
}

void DigitalInputs::run(Tick now) {
    for (unsigned pin = 0; pin < triggerPinCount; ++pin)
        acceptDue(pin, now);
    for (unsigned pin = 0; pin < triggerPinCount; ++pin)
        runWave(pin, now);
    runSchedule(now);
    findNext();
}

Tick DigitalInputs::acceptanceDue(const Pin& pin) const {
    return pin.raw == pin.accepted ? neverTick : pin.changedAt + mDebounceTicks;
}

void DigitalInputs::changeLevel(unsigned pin, bool level, Tick now) {
    Pin& changed = mPins.at(pin);
    if (changed.raw == level)
        return;
    changed.raw = level;
    changed.changedAt = now;
    mSink.signal(TriggerSignalKind::Input, 0, pin, level ? 1 : 0, now);
    acceptDue(pin, now);
}

void DigitalInputs::acceptDue(unsigned pin, Tick now) {
    Pin& waiting = mPins.at(pin);
    if (acceptanceDue(waiting) > now)
        return;
    waiting.accepted = waiting.raw;
    mSink.signal(TriggerSignalKind::DebouncedInput, 0, pin, waiting.accepted ? 1 : 0, now);
    mSink.event(waiting.accepted ? TriggerEventKind::InputRising : TriggerEventKind::InputFalling, pin, now);
    mAccepted(pin, waiting.accepted, now);
}

void DigitalInputs::runWave(unsigned pin, Tick now) {
    Pin& driven = mPins.at(pin);
    if (driven.nextWaveEdge > now)
        return;
    const InputWave& wave = driven.wave;
    const bool rises = driven.waveRises;
    driven.waveRises = !rises;
    if (rises) {
        ++driven.wavePulses;
        driven.nextWaveEdge += wave.highTicks;
    } else {
        driven.nextWaveEdge =
            driven.wavePulses == wave.count ? neverTick : driven.nextWaveEdge + wave.lowTicks;
    }
    changeLevel(pin, rises, now);
}

void DigitalInputs::runSchedule(Tick now) {
    while (!mSchedule.empty() && mSchedule.begin()->first <= now) {
        const auto [pin, level] = mSchedule.begin()->second;
        mSchedule.erase(mSchedule.begin());
        changeLevel(pin, level, now);
    }
}

void DigitalInputs::findNext() {
    mNext = mSchedule.empty() ? neverTick : mSchedule.begin()->first;
    for (const Pin& pin : mPins)
        mNext = std::min(mNext, std::min(acceptanceDue(pin), pin.nextWaveEdge));
}

} // namespace simulator
