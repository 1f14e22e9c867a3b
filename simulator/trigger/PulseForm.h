#pragma once

#include "simulator/trigger/PulseDownscale.h"
#include "simulator/trigger/TriggerListener.h"

namespace simulator {

/// One pulse form generator behind its downscale: a delay stage and, behind it, a width stage, each of which
/// holds one pulse. A pulse that finds its stage taken is lost. A stage is free again in the tick in which it
/// ends. The delay counts from the pulse, the width from the end of the delay, each as set when it begins.
class PulseForm {
  public:
    /// What a step did to the output.
    enum class Outcome : std::uint8_t { Nothing, Rose, Lost };

    /// A pulse that passed the downscale. With a delay of 0 the output rises within the tick.
    Outcome trigger(std::uint32_t delay, std::uint32_t width, Tick now);
    /// Ends the output's pulse when that is due; true when it fell.
    bool endWidth(Tick now);
    /// Ends the delay when that is due.
    Outcome endDelay(std::uint32_t width, Tick now);

    bool level() const { return mWidthEnd != neverTick; }
    Tick nextActivity() const { return mDelayEnd < mWidthEnd ? mDelayEnd : mWidthEnd; }

  private:
    Outcome start(std::uint32_t width, Tick now);

    Tick mDelayEnd = neverTick;
    Tick mWidthEnd = neverTick;
};

} // namespace simulator
