#include "simulator/model/TriggerBlock.h"

#include <utility>

namespace simulator {

TriggerBlock::TriggerBlock(DesignStore& store, EventLog& events, Expose expose)
    : mEvents(events), mExpose(std::move(expose)) {
    for (const TriggerEvent& each : triggerEvents()) {
        mEventNames.push_back(designEventName(each));
    }
    claimRegisters(store);
    reset();
}

void TriggerBlock::claimRegisters(DesignStore& store) {
    const std::vector<TriggerParameter>& parameters = triggerParameters();
    for (TriggerParameterIndex index = 0; index < parameters.size(); ++index) {
        DesignCell& cell = store.claim(parameters[index].name);
        cell.compute = [this, index] { return std::uint64_t{mSystem->read(index, mSystem->now())}; };
        if (!parameters[index].readOnly) {
            cell.written = [this, index](std::uint64_t value) {
                mSystem->write(index, static_cast<std::uint32_t>(value), mSystem->now());
            };
        }
    }
}

void TriggerBlock::reset() {
    mIsTracing = false;
    mTrace.reset();
    mSystem = std::make_unique<TriggerSystem>();
    mSystem->addListener(*this);
}

void TriggerBlock::startTrace(std::size_t capacity) {
    stopTrace();
    mTrace.emplace(capacity);
    mTrace->start(*mSystem);
    mSystem->addListener(*mTrace);
    mIsTracing = true;
}

void TriggerBlock::stopTrace() {
    if (std::exchange(mIsTracing, false)) {
        mSystem->removeListener(*mTrace);
    }
}

void TriggerBlock::recordExposure(unsigned port, bool isExposing, Tick now) {
    if (mIsTracing) {
        mTrace->record({TriggerSignalKind::Exposure, port, 0}, isExposing ? 1 : 0, now);
    }
}

void TriggerBlock::event(const TriggerEvent& event, Tick tick) {
    mEvents.raise(tick, mEventNames[triggerEventIndex(event)]);
}

} // namespace simulator
