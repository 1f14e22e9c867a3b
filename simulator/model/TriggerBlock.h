#pragma once

#include "simulator/model/DesignStore.h"
#include "simulator/model/EventLog.h"
#include "simulator/trigger/TriggerSystem.h"
#include "simulator/trigger/TriggerTrace.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace simulator {

/// The trigger system in its place on the board: its registers are design parameters, its events are the
/// board's, and its action commands reach the cameras.
class TriggerBlock : private TriggerListener {
  public:
    /// Told of every action command.
    using Expose = std::function<void(unsigned port, Tick now)>;

    TriggerBlock(DesignStore& store, EventLog& events, Expose expose);

    TriggerSystem& system() { return *mSystem; }
    const TriggerSystem& system() const { return *mSystem; }

    /// Everything as after power-on; a recording ends.
    void reset();

    /// Starts a recording of every signal that keeps the latest samples.
    void startTrace(std::size_t capacity);
    void stopTrace();
    /// What was recorded; an empty recording before the first startTrace().
    TriggerTrace trace() const { return mTrace.value_or(TriggerTrace(1)); }
    /// Enters what the cameras do.
    void recordExposure(unsigned port, bool isExposing, Tick now);

  private:
    void claimRegisters(DesignStore& store);
    void cameraActionCommand(unsigned port, Tick tick) override { mExpose(port, tick); }
    void event(const TriggerEvent& event, Tick tick) override;

    EventLog& mEvents;
    Expose mExpose;
    std::vector<std::string> mEventNames; ///< in the order of triggerEvents()
    std::unique_ptr<TriggerSystem> mSystem;
    std::optional<TriggerTrace> mTrace;
    bool mIsTracing = false;
};

} // namespace simulator
