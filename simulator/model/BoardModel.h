#pragma once

#include "simulator/Board.h"
#include "simulator/model/DesignStore.h"
#include "simulator/model/EventLog.h"
#include "simulator/model/ImagePort.h"
#include "simulator/model/RuntimeParameters.h"
#include "simulator/model/TriggerBlock.h"

#include <array>
#include <condition_variable>
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

    void reset(bool steppedByHand);
    BoardClock& clock() { return mClock; }

    /// Connects a design with the board; its registers are the ones that register access reaches from now on.
    std::shared_ptr<const DesignBinding> open(const SharedDesign& design);

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

    // Acquisition of a port. A memory that is named must be the one of the acquisition.
    int startAcquisition(unsigned dmaIndex, int pictures, std::shared_ptr<dma_mem> memory, const void* owner);
    int stopAcquisition(unsigned dmaIndex, const dma_mem* memory);
    /// Stops every acquisition of an owner.
    void stopAcquisitionsOf(const void* owner);
    /// Stops every acquisition into a memory.
    void stopAcquisitionsInto(const dma_mem* memory);
    /// Number of the last picture, 0 before the first, or an error code.
    int lastPicture(unsigned dmaIndex, const dma_mem* memory);
    /// Waits until a picture has come; the answer is the last one's number. A clock that is stepped by hand
    /// is stepped on instead of waiting.
    /// \param seconds  board time to wait; below 0: the port's FG_TIMEOUT
    int waitForPicture(unsigned dmaIndex, int picture, int seconds, const dma_mem* memory);
    std::uint64_t lostPictures(unsigned dmaIndex);

    CameraSetup camera(unsigned port);
    void setCamera(unsigned port, const CameraSetup& setup);
    std::uint64_t exposures(unsigned port);

    void driveInput(unsigned input, bool level);
    void driveInputAt(Tick tick, unsigned input, bool level);
    void playInput(unsigned input, const InputWave& wave);
    void releaseInput(unsigned input);
    void startTrace(std::size_t capacity);
    void stopTrace();
    TriggerTrace trace();

    // What the control API needs beyond that; see Board.
    std::uint64_t peek(const std::string& name);
    void poke(const std::string& name, std::uint64_t value);
    void release(const std::string& name);
    std::vector<std::uint32_t> peekTable(const std::string& name);
    void pokeTable(const std::string& name, std::size_t first, const std::vector<std::uint32_t>& values);
    void raise(const std::string& event);
    std::vector<RaisedEvent> takeEvents(std::size_t most);
    std::vector<std::string> designEvents();
    std::uint64_t eventCount(const std::string& event);

  private:
    using Guard = std::unique_lock<std::mutex>;

    /// Takes the lock and lets everything happen that is due.
    Guard enter();
    void catchUp();
    Tick nextActivity() const;
    void runPort(unsigned port);
    void storeFrame(unsigned port);
    void expose(unsigned port, Tick now);
    /// 0, or why a program may not use the port's acquisition so.
    int checkAcquisition(unsigned dmaIndex, const dma_mem* memory) const;
    /// The answer to a wait for a picture, if there is one already.
    std::optional<int> answerToWait(const DmaChannel& dma, int picture) const;
    void sleepUntil(Tick tick, Guard& guard);
    void claimRuntimeParameters();
    DesignCell& known(const std::string& name);
    DesignCell* registerCell(int number) const;
    void claimBoardRegisters();

    BoardClock mClock;
    std::mutex mLock;
    DesignStore mStore;
    EventLog mEvents;
    std::shared_ptr<const DesignBinding> mDesign;
    RuntimeParameters mRuntimeParameters;
    std::array<std::unique_ptr<ImagePort>, Board::numberOfPorts> mPorts;
    std::array<std::uint64_t, Board::numberOfPorts> mLostPictures{};
    TriggerBlock mTrigger{mStore, mEvents, [this](unsigned port, Tick now) { expose(port, now); }};
    Tick mTick = 0; ///< everything up to here has happened
    std::condition_variable mChanged;
};

} // namespace simulator
