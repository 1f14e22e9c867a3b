#pragma once

#include "simulator/trigger/DigitalInputs.h"
#include "simulator/trigger/TriggerCamera.h"
#include "simulator/trigger/TriggerListener.h"
#include "simulator/trigger/TriggerParameters.h"
#include "simulator/trigger/TriggerSink.h"

#include <array>
#include <optional>
#include <string_view>

namespace simulator {

/// The trigger block of the design: eight inputs and one trigger system for each of the two cameras.
///
/// Time is given by the caller, in ticks of 16 ns, and only moves forward: a tick before now() counts as
/// now(). Whatever is scheduled up to and including a tick happens before a register access or a notification
/// of that tick; an access acts at once. Stages have no latency of their own: an accepted input edge reaches
/// the outputs within its tick. Idle time costs nothing. docs/board-trigger.md states the rules of each
/// block.
///
/// Not thread-safe: the board serialises the calls.
class TriggerSystem {
  public:
    TriggerSystem();
    TriggerSystem(const TriggerSystem&) = delete;
    TriggerSystem& operator=(const TriggerSystem&) = delete;

    /// Listeners are called in the order in which they were added and must outlive the system or be removed.
    void addListener(TriggerListener& listener) { mSink.addListener(listener); }
    void removeListener(TriggerListener& listener) { mSink.removeListener(listener); }

    Tick now() const { return mNow; }

    /// Lets everything up to and including `tick` happen. With a generator running free or a wave without end
    /// on an input the work grows with the time that passes.
    void advanceTo(Tick tick);

    /// Tick of the next thing that happens of itself, later than now(); neverTick when nothing is under way.
    Tick nextActivity() const;

    /// Writes a register at a tick; false, and nothing written, for a read-only one.
    /// Throws std::out_of_range for an index outside triggerParameters().
    bool write(TriggerParameterIndex index, std::uint32_t value, Tick now);
    /// The same by name; false for an unknown name too.
    bool write(std::string_view name, std::uint32_t value, Tick now);

    /// Reads a register at a tick. Throws std::out_of_range for an index outside triggerParameters().
    std::uint32_t read(TriggerParameterIndex index, Tick now);
    /// The same by name; nothing for an unknown one.
    std::optional<std::uint32_t> read(std::string_view name, Tick now);

    /// Puts a level on an input pin (0 .. 7) at a tick. Throws std::out_of_range for another pin.
    void setInput(unsigned pin, bool level, Tick tick);
    /// Plans a level for a later tick; changes planned for one tick happen in the order of planning.
    void scheduleInput(unsigned pin, bool level, Tick tick);
    /// Plays a wave on a pin in place of the one that it may be playing, from the next tick on at the
    /// earliest; planned changes still happen. Throws std::invalid_argument for a wave that has no high or no
    /// low time.
    void driveInput(unsigned pin, const InputWave& wave);
    /// Ends the wave on a pin, which keeps its level.
    void releaseInput(unsigned pin);
    /// Drops every planned change and wave; the pins keep their levels.
    void clearInputSchedule();

    /// The camera's picture begins, or has fully arrived. Throws std::out_of_range for a port other than 0
    /// and 1.
    void frameStarted(unsigned port, Tick tick);
    void frameArrived(unsigned port, Tick tick);

    /// Present value of a level or fill level; 0 for signals that are instants and for exposures.
    std::uint32_t signalValue(const TriggerSignal& signal) const;

  private:
    void run();
    void setDebounce(std::uint32_t steps);
    std::uint32_t readShared(SharedRegister which) const;
    std::uint32_t queueStatus() const;

    Tick mNow = 0;
    std::uint32_t mDebouncePeriod = 0;
    TriggerSink mSink;
    std::array<TriggerCamera, triggerPortCount> mCameras;
    DigitalInputs mInputs;
};

} // namespace simulator
