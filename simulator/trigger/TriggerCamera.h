#pragma once

#include "simulator/trigger/InputStatistics.h"
#include "simulator/trigger/PulseForm.h"
#include "simulator/trigger/PulseGenerator.h"
#include "simulator/trigger/TriggerMonitor.h"
#include "simulator/trigger/TriggerParameters.h"
#include "simulator/trigger/TriggerSink.h"

#include <array>

namespace simulator {

/// The trigger system of one camera, from the accepted input levels to outputs and action commands.
class TriggerCamera {
  public:
    TriggerCamera(unsigned port, TriggerSink& sink);

    /// The camera whose pulse form generators can take this one's generator pulses.
    void setFollower(TriggerCamera& follower) { mFollower = &follower; }

    void write(CameraRegister which, std::uint32_t value, Tick now);
    std::uint32_t read(CameraRegister which, Tick now) const;

    /// Levels behind the debounce filter, bit n is pin n.
    void setInputLevels(std::uint32_t levels, Tick now);
    void frameStarted(Tick now);
    void frameArrived(Tick now);

    Tick nextActivity() const { return std::min(mFormsDue, mGenerator.nextActivity()); }
    void runPulseForms(Tick now);
    void runGenerator(Tick now);

    bool overrideRaised() const { return mOverride.raised(); }
    bool missingFrameRaised() const { return mMissingFrame.raised(); }
    bool queueFull() const { return mGenerator.queueFull(); }
    std::uint32_t fillLevel() const { return mGenerator.fillLevel(); }
    bool pulseFormLevel(unsigned form) const { return mForms.at(form).level(); }
    bool outputLevel(unsigned output) const { return mOutputs.at(output); }

  private:
    std::uint32_t value(CameraRegister which) const { return mRegisters[static_cast<std::size_t>(which)]; }
    bool isSet(CameraRegister which) const { return (value(which) & 1) != 0; }
    PulseGeneratorSettings generatorSettings() const;

    void applySetting(CameraRegister which, Tick now);
    void applyClear(CameraRegister which, std::uint32_t mode, Tick now);
    void applyMonitorClear(CameraRegister which, std::uint32_t mode);

    void refreshInput(Tick now);
    void inputPulse(Tick now);
    void arrive(Tick now);
    void generatorPulse(Tick now);
    void distributePulse(Tick now);
    void triggerForm(unsigned form, Tick now);
    void runPulseForm(unsigned form, Tick now);
    void formOutcome(unsigned form, PulseForm::Outcome outcome, Tick now);
    void formRose(unsigned form, Tick now);
    void lostPulse(Tick now);
    void reportFillLevel(Tick now);
    void refreshOutputs(Tick now);
    bool selectedLevel(std::uint32_t select) const;
    void actionCommand(Tick now);

    const unsigned mPort;
    TriggerSink& mSink;
    TriggerCamera* mFollower = nullptr;
    std::array<std::uint32_t, cameraRegisterCount> mRegisters;

    std::uint32_t mInputLevels = 0;
    bool mInput = false;
    PulseDownscale mInputDownscale;
    PulseCount mInputPulses;
    PeriodStatistics mInputPeriods;

    PulseGenerator mGenerator;
    std::uint32_t mReportedFillLevel = 0;
    bool mAboveHysteresis = false;

    std::array<PulseDownscale, pulseFormCount> mFormDownscales;
    std::array<PulseForm, pulseFormCount> mForms;
    Tick mFormsDue = neverTick;
    std::array<bool, triggerOutputCount> mOutputs{};
    bool mCameraTrigger = false;
    PulseCount mOutputPulses;

    StickyFlag mOverride;
    StickyFlag mMissingFrame;
    FrameCheck mFrameCheck;
};

} // namespace simulator
