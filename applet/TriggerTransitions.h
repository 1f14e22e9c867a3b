#pragma once

#include "applet/Enumerations.h"

#include <cstddef>

/// One step of a change of trigger mode or state.
enum class TriggerStep {
    OUT0,  ///< switch the outputs to their constant level
    OUT1,  ///< switch the outputs to what is cached for them
    GEN0,  ///< hold the generator in clear
    GEN1,  ///< start the generator, without a queue
    RQ,    ///< start the generator in queue mode, with an empty queue
    CD,    ///< reset the input downscale
    GCD,   ///< reset the downscale on the generator's side
    CPF,   ///< reset the downscales of the pulse form generators
    EXT0,  ///< detach the external input
    EXT1,  ///< attach the external input
    SYNC0, ///< leave slave mode (port 1)
    SYNC1, ///< enter slave mode (port 1)
    EN0,   ///< stop the pulse form generators by their enable register (port 1)
    EN1,   ///< start them
};

/// A sequence of steps.
class TriggerSteps {
  public:
    constexpr TriggerSteps() = default;
    template <std::size_t size>
    constexpr TriggerSteps(const TriggerStep (&steps)[size]) : mSteps(steps), mSize(size) {}

    [[nodiscard]] constexpr const TriggerStep* begin() const { return mSteps; }
    [[nodiscard]] constexpr const TriggerStep* end() const { return mSteps + mSize; }

  private:
    const TriggerStep* mSteps = nullptr;
    std::size_t mSize = 0;
};

/// The steps from one pair of mode and state to another. A change of both at once is not foreseen; a change
/// that the tables do not hold has no steps.
TriggerSteps triggerSteps(unsigned oldMode, unsigned oldState, unsigned newMode, unsigned newState);
