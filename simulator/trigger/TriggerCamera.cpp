#include "simulator/trigger/TriggerCamera.h"

namespace simulator {

namespace {

bool isAmong(CameraRegister which, CameraRegister first, unsigned count) {
    return which >= first && which < offsetRegister(first, count);
}

unsigned offsetFrom(CameraRegister first, CameraRegister which) {
    return static_cast<unsigned>(which) - static_cast<unsigned>(first);
}

} // namespace

TriggerCamera::TriggerCamera(unsigned port, TriggerSink& sink)
    : mPort(port), mSink(sink), mRegisters(powerOnRegisters()), mGenerator(generatorSettings()) {
    mGenerator.controlClear(value(CameraRegister::ClearQueuePulse));
}

PulseGeneratorSettings TriggerCamera::generatorSettings() const {
    return {value(CameraRegister::MinimumPeriod),     isSet(CameraRegister::EnableQueue),
            isSet(CameraRegister::QueueEnabled),      value(CameraRegister::QueueFullValue),
            value(CameraRegister::SequenceDownscale), value(CameraRegister::SequenceSelectedPulse)};
}

void TriggerCamera::write(CameraRegister which, std::uint32_t newValue, Tick now) {
    std::uint32_t& stored = mRegisters[static_cast<std::size_t>(which)];
    const bool bitToggles = ((stored ^ newValue) & 1) != 0;
    stored = newValue;
    if (which == CameraRegister::SoftwareTrigger) {
        if (newValue == modePulse && !isSet(CameraRegister::SelectExternal))
            arrive(now);
    } else if (which == CameraRegister::InputClearMinMax) {
        if (bitToggles)
            mInputPeriods.clearShortestAndLongest();
    } else {
        applySetting(which, now);
        applyClear(which, newValue, now);
        applyMonitorClear(which, newValue);
    }
}

void TriggerCamera::applySetting(CameraRegister which, Tick now) {
    switch (which) {
    case CameraRegister::InputSelect:
    case CameraRegister::InputPolarity:
        refreshInput(now);
        return;
    case CameraRegister::EnableQueue:
    case CameraRegister::MinimumPeriod:
    case CameraRegister::QueueFullValue:
    case CameraRegister::QueueEnabled:
    case CameraRegister::SequenceDownscale:
    case CameraRegister::SequenceSelectedPulse:
        mGenerator.setSettings(generatorSettings());
        runGenerator(now);
        return;
    default:
        refreshOutputs(now);
    }
}

void TriggerCamera::applyClear(CameraRegister which, std::uint32_t mode, Tick now) {
    if (isAmong(which, CameraRegister::FormClearDownscale0, pulseFormCount))
        mFormDownscales[offsetFrom(CameraRegister::FormClearDownscale0, which)].control(mode);
    if (which == CameraRegister::InputClearDownscale)
        mInputDownscale.control(mode);
    if (which == CameraRegister::SequenceClearDownscale)
        mGenerator.controlSequence(mode);
    if (which == CameraRegister::ClearQueuePulse) {
        mGenerator.controlClear(mode);
        reportFillLevel(now);
        runGenerator(now);
    }
}

void TriggerCamera::applyMonitorClear(CameraRegister which, std::uint32_t mode) {
    switch (which) {
    case CameraRegister::InputClearPulses:
        return mInputPulses.control(mode);
    case CameraRegister::OutputClearPulses:
        return mOutputPulses.control(mode);
    case CameraRegister::ResetMissing:
        return mFrameCheck.control(mode);
    case CameraRegister::ClearOverride:
        return mOverride.control(mode);
    case CameraRegister::ClearMissingFrame:
        return mMissingFrame.control(mode);
    default:
        return;
    }
}

std::uint32_t TriggerCamera::read(CameraRegister which, Tick now) const {
    switch (which) {
    case CameraRegister::PendingActionCommands:
        return mFrameCheck.pending();
    case CameraRegister::MaximumReached:
        return mGenerator.periodPassed(now) ? 1 : 0;
    case CameraRegister::QueueValue:
        return mGenerator.fillLevel();
    case CameraRegister::InputPulses:
        return mInputPulses.pulses();
    case CameraRegister::InputPeriod:
        return mInputPeriods.last();
    case CameraRegister::InputLongestPeriod:
        return mInputPeriods.longest();
    case CameraRegister::InputShortestPeriod:
        return mInputPeriods.shortest();
    case CameraRegister::OutputPulses:
        return mOutputPulses.pulses();
    default:
        return value(which);
    }
}

void TriggerCamera::setInputLevels(std::uint32_t levels, Tick now) {
    mInputLevels = levels;
    refreshOutputs(now);
    refreshInput(now);
}

void TriggerCamera::frameStarted(Tick now) {
    mFrameCheck.frameStarted();
    mSink.signal(TriggerSignalKind::FrameStart, mPort, 0, 1, now);
    mSink.event(TriggerEventKind::FrameStart, mPort, now);
}

void TriggerCamera::frameArrived(Tick now) {
    mSink.signal(TriggerSignalKind::FrameEnd, mPort, 0, 1, now);
    mSink.event(TriggerEventKind::FrameEnd, mPort, now);
}

void TriggerCamera::runPulseForms(Tick now) {
    if (mFormsDue > now)
        return;
    mFormsDue = neverTick;
    for (unsigned form = 0; form < pulseFormCount; ++form) {
        if (mForms[form].nextActivity() <= now)
            runPulseForm(form, now);
        mFormsDue = std::min(mFormsDue, mForms[form].nextActivity());
    }
}

void TriggerCamera::runPulseForm(unsigned form, Tick now) {
    if (mForms[form].endWidth(now)) {
        mSink.signal(TriggerSignalKind::PulseForm, mPort, form, 0, now);
        refreshOutputs(now);
    }
    const std::uint32_t width = value(offsetRegister(CameraRegister::FormWidth0, form));
    formOutcome(form, mForms[form].endDelay(width, now), now);
}

void TriggerCamera::runGenerator(Tick now) {
    if (mGenerator.isDue(now))
        generatorPulse(now);
}

} // namespace simulator
