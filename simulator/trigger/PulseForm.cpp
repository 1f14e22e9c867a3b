#include "simulator/trigger/PulseForm.h"

namespace simulator {

PulseForm::Outcome PulseForm::trigger(std::uint32_t delay, std::uint32_t width, Tick now) {
    if (mDelayEnd != neverTick)
        return Outcome::Lost;
    if (delay == 0)
        return start(width, now);
    mDelayEnd = now + delay;
    return Outcome::Nothing;
}

bool PulseForm::endWidth(Tick now) {
    if (mWidthEnd > now)
        return false;
    mWidthEnd = neverTick;
    return true;
}

PulseForm::Outcome PulseForm::endDelay(std::uint32_t width, Tick now) {
    if (mDelayEnd > now)
        return Outcome::Nothing;
    mDelayEnd = neverTick;
    return start(width, now);
}

PulseForm::Outcome PulseForm::start(std::uint32_t width, Tick now) {
    if (level())
        return Outcome::Lost;
    if (width == 0)
        return Outcome::Nothing;
    mWidthEnd = now + width;
    return Outcome::Rose;
}

} // namespace simulator
