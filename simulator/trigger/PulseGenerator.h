#pragma once

#include "simulator/trigger/PulseDownscale.h"
#include "simulator/trigger/TriggerListener.h"

namespace simulator {

/// Pulses that wait at most.
constexpr std::uint32_t queueCapacity = 2040;
/// The period is this much longer than the number in the minimum period register.
constexpr Tick minimumPeriodOffset = 9;

/// What the registers of the generator say at the moment.
struct PulseGeneratorSettings {
    std::uint32_t minimumPeriodNumber;
    bool queueMode;
    bool queueEnabled;
    std::uint32_t queueFullValue;
    std::uint32_t sequenceDownscale;
    std::uint32_t sequenceSelectedPulse;
};

/// The generator of one camera with its queue. Two pulses are never closer than the minimum period.
///
/// Out of queue mode it runs free, one pulse every minimum period. In queue mode it gives pulses while an
/// entry waits; the sequence counts them and its selected pulse takes the entry out, so that downscale and
/// selected pulse N make N pulses of each entry.
class PulseGenerator {
  public:
    explicit PulseGenerator(const PulseGeneratorSettings& settings) : mSettings(settings) {}

    const PulseGeneratorSettings& settings() const { return mSettings; }
    void setSettings(const PulseGeneratorSettings& settings) { mSettings = settings; }

    /// Value of the clear register: 1 holds the generator and an empty queue, 2 clears once.
    void controlClear(std::uint32_t mode);
    /// Value of the sequence's clear register.
    void controlSequence(std::uint32_t mode) { mSequence.control(mode); }

    /// Takes an incoming pulse into the queue; false when it is lost because it comes too early. Without
    /// queue mode, and in clear, incoming pulses mean nothing.
    bool arrive(Tick now);
    bool isDue(Tick now) const { return nextActivity() <= now; }
    /// Gives the pulse that is due.
    void givePulse(Tick now);

    /// Earliest tick at which a pulse can be given, possibly in the past; neverTick when none is wanted.
    Tick nextActivity() const {
        const bool wanted = !mSettings.queueMode || mFillLevel > 0;
        return wanted && !mHeld ? readyAt() : neverTick;
    }
    /// Whether the minimum period has passed since the last pulse.
    bool periodPassed(Tick now) const { return readyAt() <= now; }
    std::uint32_t fillLevel() const { return mFillLevel; }
    bool queueFull() const { return mSettings.queueEnabled && mFillLevel >= limit(); }

  private:
    Tick readyAt() const {
        return mFresh ? 0 : mLastPulse + mSettings.minimumPeriodNumber + minimumPeriodOffset;
    }
    std::uint32_t limit() const;

    PulseGeneratorSettings mSettings;
    PulseDownscale mSequence;
    std::uint32_t mFillLevel = 0;
    Tick mLastPulse = 0;
    bool mFresh = true;
    bool mHeld = false;
};

} // namespace simulator
