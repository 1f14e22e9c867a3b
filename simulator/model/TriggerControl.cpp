#include "simulator/model/BoardModel.h"

/// What programs do to the trigger inputs, and the recording of the trigger signals.

namespace simulator {

void BoardModel::driveInput(unsigned input, bool level) {
    const Guard guard = enter();
    mTrigger.system().setInput(input, level, mTick);
    mChanged.notify_all();
}

void BoardModel::driveInputAt(Tick tick, unsigned input, bool level) {
    const Guard guard = enter();
    mTrigger.system().scheduleInput(input, level, tick);
    mChanged.notify_all();
}

void BoardModel::playInput(unsigned input, const InputWave& wave) {
    const Guard guard = enter();
    mTrigger.system().driveInput(input, wave);
    mChanged.notify_all();
}

void BoardModel::releaseInput(unsigned input) {
    const Guard guard = enter();
    mTrigger.system().releaseInput(input);
}

void BoardModel::startTrace(std::size_t capacity) {
    const Guard guard = enter();
    mTrigger.startTrace(capacity);
}

void BoardModel::stopTrace() {
    const Guard guard = enter();
    mTrigger.stopTrace();
}

TriggerTrace BoardModel::trace() {
    const Guard guard = enter();
    return mTrigger.trace();
}

} // namespace simulator
