#include "simulator/trigger/TriggerSystem.h"

#include <algorithm>

namespace simulator {

TriggerSystem::TriggerSystem()
    : mCameras{TriggerCamera(0, mSink), TriggerCamera(1, mSink)},
      mInputs(mSink, [this](unsigned, bool, Tick tick) {
          const std::uint32_t levels = mInputs.acceptedLevels();
          for (TriggerCamera& camera : mCameras)
              camera.setInputLevels(levels, tick);
      }) {
    mCameras[0].setFollower(mCameras[1]);
}

void TriggerSystem::advanceTo(Tick tick) {
    for (Tick next = nextActivity(); next <= tick && next != neverTick; next = nextActivity()) {
        mNow = std::max(mNow, next);
        run();
    }
    mNow = std::max(mNow, tick);
}

Tick TriggerSystem::nextActivity() const {
    return std::min({mInputs.nextActivity(), mCameras[0].nextActivity(), mCameras[1].nextActivity()});
}

void TriggerSystem::run() {
    for (TriggerCamera& camera : mCameras)
        camera.runPulseForms(mNow);
    for (TriggerCamera& camera : mCameras)
        camera.runGenerator(mNow);
    if (mInputs.nextActivity() <= mNow)
        mInputs.run(mNow);
}

bool TriggerSystem::write(TriggerParameterIndex index, std::uint32_t value, Tick now) {
    const TriggerParameter& parameter = triggerParameters().at(index);
    if (parameter.readOnly)
        return false;
    advanceTo(now);
    if (parameter.shared)
        setDebounce(value);
    else
        mCameras[parameter.port].write(parameter.cameraRegister, value, mNow);
    return true;
}

bool TriggerSystem::write(std::string_view name, std::uint32_t value, Tick now) {
    const std::optional<TriggerParameterIndex> index = findTriggerParameter(name);
    return index.has_value() && write(*index, value, now);
}

std::uint32_t TriggerSystem::read(TriggerParameterIndex index, Tick now) {
    const TriggerParameter& parameter = triggerParameters().at(index);
    advanceTo(now);
    if (parameter.shared)
        return readShared(parameter.sharedRegister);
    return mCameras[parameter.port].read(parameter.cameraRegister, mNow);
}

std::optional<std::uint32_t> TriggerSystem::read(std::string_view name, Tick now) {
    const std::optional<TriggerParameterIndex> index = findTriggerParameter(name);
    if (!index.has_value())
        return std::nullopt;
    return read(*index, now);
}

void TriggerSystem::setInput(unsigned pin, bool level, Tick tick) {
    advanceTo(tick);
    mInputs.setLevel(pin, level, mNow);
}

void TriggerSystem::scheduleInput(unsigned pin, bool level, Tick tick) {
    if (tick <= mNow)
        mInputs.setLevel(pin, level, mNow);
    else
        mInputs.schedule(pin, level, tick);
}

void TriggerSystem::driveInput(unsigned pin, const InputWave& wave) {
    InputWave started = wave;
    started.firstRise = std::max(wave.firstRise, mNow + 1);
    mInputs.drive(pin, started);
}

void TriggerSystem::releaseInput(unsigned pin) { mInputs.release(pin); }

void TriggerSystem::clearInputSchedule() { mInputs.clearSchedule(); }

void TriggerSystem::frameStarted(unsigned port, Tick tick) {
    TriggerCamera& camera = mCameras.at(port);
    if (tick > mNow)
        advanceTo(tick);
    camera.frameStarted(mNow);
}

void TriggerSystem::frameArrived(unsigned port, Tick tick) {
    TriggerCamera& camera = mCameras.at(port);
    if (tick > mNow)
        advanceTo(tick);
    camera.frameArrived(mNow);
}

void TriggerSystem::setDebounce(std::uint32_t steps) {
    mDebouncePeriod = steps;
    mInputs.setDebounce(steps, mNow);
}

std::uint32_t TriggerSystem::readShared(SharedRegister which) const {
    if (which == SharedRegister::DebouncePeriod)
        return mDebouncePeriod;
    if (which == SharedRegister::InputStatus)
        return mInputs.acceptedLevels();
    return queueStatus();
}

std::uint32_t TriggerSystem::queueStatus() const {
    constexpr unsigned bitsPerPort = 3;
    std::uint32_t status = 0;
    for (unsigned port = 0; port < triggerPortCount; ++port) {
        const TriggerCamera& camera = mCameras[port];
        const std::uint32_t flags = (camera.overrideRaised() ? 1U : 0U) | (camera.queueFull() ? 2U : 0U) |
                                    (camera.missingFrameRaised() ? 4U : 0U);
        status |= flags << (port * bitsPerPort);
    }
    return status;
}

std::uint32_t TriggerSystem::signalValue(const TriggerSignal& signal) const {
    const TriggerCamera& camera = mCameras.at(signal.port);
    switch (signal.kind) {
    case TriggerSignalKind::Input:
        return mInputs.level(signal.index) ? 1 : 0;
    case TriggerSignalKind::DebouncedInput:
        return mInputs.accepted(signal.index) ? 1 : 0;
    case TriggerSignalKind::QueueFillLevel:
        return camera.fillLevel();
    case TriggerSignalKind::PulseForm:
        return camera.pulseFormLevel(signal.index) ? 1 : 0;
    case TriggerSignalKind::Output:
        return camera.outputLevel(signal.index) ? 1 : 0;
    default:
        return 0;
    }
}

} // namespace simulator
