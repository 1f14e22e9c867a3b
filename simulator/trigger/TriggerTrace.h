#pragma once

#include "simulator/trigger/TriggerListener.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace simulator {

class TriggerSystem;

/// Collects the transitions of all trigger signals for a diagram: a listener that keeps the latest ones.
class TriggerTrace : public TriggerListener {
  public:
    struct Sample {
        Tick tick;
        TriggerSignal signal;
        std::uint32_t value;
    };

    /// What a signal was when the recording begins.
    struct Level {
        TriggerSignal signal;
        std::uint32_t value;
    };

    /// `capacity` samples are kept at most (at least one); the oldest go first.
    explicit TriggerTrace(std::size_t capacity);

    /// Begins a recording: forgets the samples and notes the system's present levels. The trace records while
    /// it is a listener of the system.
    void start(const TriggerSystem& system);

    /// Adds a transition that the trigger system does not know of itself (exposures).
    void record(const TriggerSignal& signal, std::uint32_t value, Tick tick);
    void signalChanged(const TriggerSignal& signal, std::uint32_t value, Tick tick) override {
        record(signal, value, tick);
    }

    const std::deque<Sample>& samples() const { return mSamples; }
    /// Levels in force before the first kept sample, one entry for each signal that is a level or a fill
    /// level.
    const std::vector<Level>& levelsBefore() const { return mLevelsBefore; }
    /// Tick from which the recording is complete.
    Tick begin() const { return mBegin; }
    /// Samples that had to go to make room.
    std::uint64_t dropped() const { return mDropped; }

  private:
    void dropOldest();

    std::size_t mCapacity;
    std::deque<Sample> mSamples;
    std::vector<Level> mLevelsBefore;
    Tick mBegin = 0;
    std::uint64_t mDropped = 0;
};

/// Every signal that has a level: pins, fill levels, pulse form generators, outputs, exposures.
std::vector<TriggerSignal> triggerLevelSignals();

/// Whether the signal is an instant (a pulse without length) instead of a level.
bool isInstant(TriggerSignalKind kind);

} // namespace simulator
