#pragma once

#include "simulator/Board.h"
#include "simulator/model/DesignStore.h"
#include "simulator/model/EventLog.h"
#include "simulator/model/RuntimeParameters.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace simulator {

/// The board behind the host libraries and the control API: its registers, blocks and time under one lock.
/// Nothing runs by itself: whoever asks first lets everything happen that was due by then.
class BoardModel {
  public:
    BoardModel();
    BoardModel(const BoardModel&) = delete;
    BoardModel& operator=(const BoardModel&) = delete;

    void reset();
    BoardClock& clock() { return mClock; }

    /// Connects a design with the board; its registers are the ones that register access reaches from now on.
    std::shared_ptr<const DesignBinding> open(SharedDesign design);

    std::uint64_t read(const DesignCell& cell);
    /// Refuses a status with -12.
    int write(DesignCell& cell, std::uint64_t value);
    std::shared_ptr<const Table> readTable(const DesignCell& cell);
    /// Refuses elements that do not fit with -2070.
    int writeTable(DesignCell& cell, std::size_t first, const std::uint32_t* values, std::size_t count);

    /// Registers of the design that was opened last, by number from 1.
    int readRegister(int number, std::uint64_t& value);
    int writeRegister(int number, std::uint64_t value);
    /// Name of a register of that design, or empty.
    std::string registerName(int number);

    /// One of the runtime's own parameters; -2070 for an id that is none.
    int readRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t& value);
    int writeRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value);
    void pinRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value);
    void releaseRuntimeParameter(int id, unsigned dmaIndex);

    // What the control API needs beyond that; see Board.
    std::uint64_t peek(const std::string& name);
    void poke(const std::string& name, std::uint64_t value);
    void release(const std::string& name);
    std::vector<std::uint32_t> peekTable(const std::string& name);
    void pokeTable(const std::string& name, std::size_t first, const std::vector<std::uint32_t>& values);
    void raise(const std::string& event);
    std::vector<RaisedEvent> takeEvents();
    std::uint64_t eventCount(const std::string& event);

  private:
    using Guard = std::unique_lock<std::mutex>;

    /// Takes the lock and lets everything happen that is due.
    Guard enter();
    DesignCell& known(const std::string& name);
    DesignCell* registerCell(int number) const;
    void claimBoardRegisters();

    BoardClock mClock;
    std::mutex mLock;
    DesignStore mStore;
    EventLog mEvents;
    std::shared_ptr<const DesignBinding> mDesign;
    RuntimeParameters mRuntimeParameters;
};

} // namespace simulator
