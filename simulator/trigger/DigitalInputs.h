#pragma once

#include "simulator/trigger/TriggerSink.h"

#include <array>
#include <functional>
#include <map>
#include <utility>

namespace simulator {

/// Rising edges at firstRise and every highTicks + lowTicks from there; `count` pulses, 0 without end.
struct InputWave {
    Tick firstRise;
    Tick highTicks;
    Tick lowTicks;
    std::uint64_t count;
};

/// The eight input pins with their debounce filter, and what scripts put on them.
///
/// A level counts once it has held for the debounce time, counted in ticks from the change at the pin; a
/// change back before that leaves no trace. At one tick acceptance comes first, then waves, then planned
/// changes.
class DigitalInputs {
  public:
    /// Called for every accepted change of a pin.
    using Accepted = std::function<void(unsigned pin, bool level, Tick tick)>;

    DigitalInputs(TriggerSink& sink, Accepted accepted) : mSink(sink), mAccepted(std::move(accepted)) {}

    void setDebounce(std::uint32_t steps, Tick now);
    void setLevel(unsigned pin, bool level, Tick now);
    void schedule(unsigned pin, bool level, Tick tick);
    void drive(unsigned pin, const InputWave& wave);
    void release(unsigned pin);
    void clearSchedule();

    bool level(unsigned pin) const { return mPins.at(pin).raw; }
    bool accepted(unsigned pin) const { return mPins.at(pin).accepted; }
    /// Bit n is the accepted level of pin n.
    std::uint32_t acceptedLevels() const;

    Tick nextActivity() const { return mNext; }
    void run(Tick now);

  private:
    struct Pin {
        bool raw = false;
        bool accepted = false;
        Tick changedAt = 0;
        Tick nextWaveEdge = neverTick;
        bool waveRises = true;
        InputWave wave{};
        std::uint64_t wavePulses = 0;
    };

    Tick acceptanceDue(const Pin& pin) const;
    void changeLevel(unsigned pin, bool level, Tick now);
    void acceptDue(unsigned pin, Tick now);
    void runWave(unsigned pin, Tick now);
    void runSchedule(Tick now);
    void findNext();

    TriggerSink& mSink;
    Accepted mAccepted;
    std::array<Pin, triggerPinCount> mPins;
    std::multimap<Tick, std::pair<unsigned, bool>> mSchedule;
    Tick mDebounceTicks = 0;
    Tick mNext = neverTick;
};

} // namespace simulator
