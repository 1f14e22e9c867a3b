#include "simulator/trigger/TriggerCamera.h"

namespace simulator {

namespace {

constexpr std::uint32_t selectBypass = 4;
constexpr std::uint32_t pinMask = triggerPinCount - 1;
constexpr std::uint32_t formMask = pulseFormCount - 1;

bool levelOfPin(std::uint32_t levels, std::uint32_t select) {
    return ((levels >> (select & pinMask)) & 1) != 0;
}

} // namespace

void TriggerCamera::refreshInput(Tick now) {
    const bool level =
        levelOfPin(mInputLevels, value(CameraRegister::InputSelect)) != isSet(CameraRegister::InputPolarity);
    const bool rises = level && !mInput;
    mInput = level;
    if (rises)
        inputPulse(now);
}

void TriggerCamera::inputPulse(Tick now) {
    mInputPulses.count();
    mInputPeriods.rise(now);
    const bool passes = mInputDownscale.count(value(CameraRegister::InputDownscale),
                                              value(CameraRegister::InputSelectedPulse));
    if (passes && isSet(CameraRegister::SelectExternal))
        arrive(now);
}

void TriggerCamera::arrive(Tick now) {
    if (!mGenerator.arrive(now))
        lostPulse(now);
    runGenerator(now);
    reportFillLevel(now);
}

void TriggerCamera::generatorPulse(Tick now) {
    mGenerator.givePulse(now);
    mSink.signal(TriggerSignalKind::GeneratorPulse, mPort, 0, 1, now);
    if (!isSet(CameraRegister::SlaveMode))
        distributePulse(now);
    if (mFollower != nullptr && mFollower->isSet(CameraRegister::SlaveMode))
        mFollower->distributePulse(now);
    reportFillLevel(now);
}

void TriggerCamera::distributePulse(Tick now) {
    if (!isSet(CameraRegister::PulseFormsEnable))
        return;
    for (unsigned form = 0; form < pulseFormCount; ++form)
        triggerForm(form, now);
}

void TriggerCamera::triggerForm(unsigned form, Tick now) {
    const bool passes =
        mFormDownscales[form].count(value(offsetRegister(CameraRegister::FormDownscale0, form)),
                                    value(offsetRegister(CameraRegister::FormSelectedPulse0, form)));
    if (!passes)
        return;
    const std::uint32_t delay = value(offsetRegister(CameraRegister::FormDelay0, form));
    const std::uint32_t width = value(offsetRegister(CameraRegister::FormWidth0, form));
    const PulseForm::Outcome outcome = mForms[form].trigger(delay, width, now);
    mFormsDue = std::min(mFormsDue, mForms[form].nextActivity());
    formOutcome(form, outcome, now);
}

void TriggerCamera::formOutcome(unsigned form, PulseForm::Outcome outcome, Tick now) {
    if (outcome == PulseForm::Outcome::Lost)
        lostPulse(now);
    if (outcome == PulseForm::Outcome::Rose)
        formRose(form, now);
}

void TriggerCamera::formRose(unsigned form, Tick now) {
    mSink.signal(TriggerSignalKind::PulseForm, mPort, form, 1, now);
    if ((value(CameraRegister::OutputStatisticsSelect) & formMask) == form)
        mOutputPulses.count();
    if ((value(CameraRegister::OutputEventSelect) & formMask) == form)
        mSink.event(TriggerEventKind::OutputEvent, mPort, now);
    refreshOutputs(now);
}

void TriggerCamera::lostPulse(Tick now) {
    if (mOverride.raise())
        mSink.event(TriggerEventKind::Override, mPort, now);
}

void TriggerCamera::reportFillLevel(Tick now) {
    const std::uint32_t fillLevel = mGenerator.fillLevel();
    if (fillLevel == mReportedFillLevel)
        return;
    mReportedFillLevel = fillLevel;
    mSink.signal(TriggerSignalKind::QueueFillLevel, mPort, 0, fillLevel, now);
    if (!mAboveHysteresis && fillLevel >= value(CameraRegister::HysteresisOnLevel)) {
        mAboveHysteresis = true;
        mSink.event(TriggerEventKind::HysteresisOn, mPort, now);
    } else if (mAboveHysteresis && fillLevel < value(CameraRegister::HysteresisOffLevel)) {
        mAboveHysteresis = false;
        mSink.event(TriggerEventKind::HysteresisOff, mPort, now);
    }
}

bool TriggerCamera::selectedLevel(std::uint32_t select) const {
    if (select < pulseFormCount)
        return mForms[select].level();
    return select == selectBypass && levelOfPin(mInputLevels, value(CameraRegister::BypassSelect));
}

void TriggerCamera::refreshOutputs(Tick now) {
    for (unsigned output = 0; output < triggerOutputCount; ++output) {
        const bool level = selectedLevel(value(offsetRegister(CameraRegister::OutputSelect0, output))) !=
                           isSet(offsetRegister(CameraRegister::OutputPolarity0, output));
        if (level == mOutputs[output])
            continue;
        mOutputs[output] = level;
        mSink.output(mPort, output, level, now);
    }
    const bool trigger =
        selectedLevel(value(CameraRegister::CameraSelect)) != isSet(CameraRegister::CameraPolarity);
    const bool rises = trigger && !mCameraTrigger;
    mCameraTrigger = trigger;
    if (rises)
        actionCommand(now);
}

void TriggerCamera::actionCommand(Tick now) {
    if (mFrameCheck.actionCommand() && mMissingFrame.raise())
        mSink.event(TriggerEventKind::MissingFrame, mPort, now);
    mSink.actionCommand(mPort, now);
}

} // namespace simulator
