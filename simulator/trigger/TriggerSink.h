#pragma once

#include "simulator/trigger/TriggerListener.h"

#include <algorithm>

namespace simulator {

/// Hands what the blocks report to every listener.
class TriggerSink {
  public:
    void addListener(TriggerListener& listener) { mListeners.push_back(&listener); }

    void removeListener(TriggerListener& listener) {
        mListeners.erase(std::remove(mListeners.begin(), mListeners.end(), &listener), mListeners.end());
    }

    void signal(TriggerSignalKind kind, unsigned port, unsigned index, std::uint32_t value, Tick tick) const {
        for (TriggerListener* listener : mListeners)
            listener->signalChanged({kind, port, index}, value, tick);
    }

    void event(TriggerEventKind kind, unsigned index, Tick tick) const {
        for (TriggerListener* listener : mListeners)
            listener->event({kind, index}, tick);
    }

    void output(unsigned port, unsigned output, bool level, Tick tick) const {
        signal(TriggerSignalKind::Output, port, output, level ? 1 : 0, tick);
        for (TriggerListener* listener : mListeners)
            listener->outputChanged(port, output, level, tick);
    }

    void actionCommand(unsigned port, Tick tick) const {
        signal(TriggerSignalKind::ActionCommand, port, 0, 1, tick);
        for (TriggerListener* listener : mListeners)
            listener->cameraActionCommand(port, tick);
    }

  private:
    std::vector<TriggerListener*> mListeners;
};

} // namespace simulator
