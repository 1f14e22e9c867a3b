#pragma once

#include "platform/RegisterAccess.h"
#include "simulator/BoardClock.h"
#include "simulator/CameraSetup.h"
#include "simulator/trigger/DigitalInputs.h"
#include "simulator/trigger/TriggerTrace.h"
#include "simulator/Visibility.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace simulator {

class BoardModel;

/// An event that the board raised, in the words of the design.
struct RaisedEvent {
    std::uint64_t tick; ///< board time
    std::string name;   ///< name of the design event
};

/// One board in software: the control beside the three host libraries, for tests and for programs that set
/// the scene (cameras, trigger inputs, time). There are 16 boards in a process, each made when it is first
/// asked for; they share nothing. Every function may be called from any thread.
class SIMULATOR_PUBLIC Board {
  public:
    static constexpr unsigned numberOfBoards = 16;
    static constexpr unsigned numberOfPorts = 2;
    static constexpr unsigned numberOfInputs = 8;

    /// \param number  0 to 15
    /// \throws std::out_of_range for another number
    static Board& at(unsigned number);
    /// The board behind a device pointer, or null for any other pointer; the pointer is compared, never
    /// followed.
    static Board* of(const QXdevice* device);

    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;
    ~Board();

    unsigned number() const;
    /// What the runtime and an applet know the board by; valid for the life of the process.
    QXdevice* device();

    /// Power-on state: every register, camera, input and event as after switching on, nothing pinned, time at
    /// tick 0 and driven by the wall clock. Handles that are open stay open.
    void reset();
    /// The same, but time is stepped by hand, so that nothing happens between tick 0 and the next step.
    void resetAndStepByHand();

    /// Board time; it starts with the wall clock.
    BoardClock& clock();

    // ---- cameras -----------------------------------------------------

    /// \param port  camera port, 0 or 1 (std::out_of_range otherwise, as everywhere below)
    CameraSetup camera(unsigned port) const;
    /// Replaces a camera; a picture under way is lost.
    /// \throws std::invalid_argument when the sensor is not 16 .. 4096 x 2 .. 4096, the packet not
    ///     44 .. 9036, the format unknown, or the folder holds no readable picture
    void setCamera(unsigned port, const CameraSetup& setup);
    /// Pictures that the camera of a port has exposed since power-on.
    std::uint64_t exposures(unsigned port) const;

    // ---- registers, past the recorder and the failures ---------------

    /// Value of a design parameter or register by its full name, as the design would answer it.
    /// \throws std::out_of_range for a name that neither the board nor a loaded design knows
    std::uint64_t designValue(const std::string& name) const;
    /// Writes a design parameter or register as a call would, bits above its width dropped. A status that the
    /// board computes itself is pinned to the value until releaseDesignValue() or reset().
    void setDesignValue(const std::string& name, std::uint64_t value);
    /// Ends a pin of setDesignValue; does nothing where there is none.
    void releaseDesignValue(const std::string& name);
    /// The whole table of a field parameter, such as the lookup table's 4096 words; empty for any other
    /// parameter.
    std::vector<std::uint32_t> designField(const std::string& name) const;
    /// Overwrites elements from \p first on.
    /// \throws std::out_of_range when they do not fit the table or the parameter has none
    void setDesignField(const std::string& name, std::size_t first, const std::vector<std::uint32_t>& values);

    /// Fixes what the runtime answers for one of its own parameters (FG_CAMSTATUS_EXTENDED, ...) and a DMA
    /// index.
    void pinRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value);
    void releaseRuntimeParameter(int id, unsigned dmaIndex);

    // ---- trigger inputs and events -----------------------------------

    /// Sets the level of a trigger input at the present board time.
    /// \param input  0 to 7
    void driveInput(unsigned input, bool level);
    /// Plans a level for a later board time; a time that has passed takes effect at once.
    void driveInputAt(std::uint64_t tick, unsigned input, bool level);
    /// Plays pulses on an input in place of those that it may be playing.
    /// \throws std::invalid_argument for a wave that has no high or no low time
    void playInput(unsigned input, const InputWave& wave);
    /// Ends the pulses on an input, which keeps its level.
    void releaseInput(unsigned input);

    /// Starts a recording of every trigger signal and exposure for a diagram; the latest samples are kept. A
    /// recording that runs is thrown away.
    void startTrace(std::size_t capacity);
    /// Ends the recording, which can still be asked for.
    void stopTrace();
    /// What was recorded up to now.
    TriggerTrace trace() const;

    /// Raises a design event now, as if the board had done so.
    void raiseEvent(const std::string& designEventName);
    /// The events raised since the last call, oldest first; at most the latest 65536 are kept.
    /// \param most  how many are taken; the others stay for the next call
    std::vector<RaisedEvent> takeEvents(std::size_t most = SIZE_MAX);
    /// The events of the design that was opened last, in its order; empty before one was.
    std::vector<std::string> designEvents();
    /// How often an event was raised since power-on.
    std::uint64_t eventCount(const std::string& designEventName) const;

    /// The model behind the board, for the host libraries.
    BoardModel& model();

  private:
    explicit Board(unsigned number);

    unsigned mNumber;
    std::unique_ptr<BoardModel> mModel;
};

} // namespace simulator
