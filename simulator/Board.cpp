#include "simulator/Board.h"

#include "simulator/model/BoardModel.h"

#include <array>
#include <functional>
#include <mutex>
#include <stdexcept>

/// What a device pointer points to. Only the address counts.
struct QXdevice {
    unsigned char place;
};

namespace simulator {
namespace {

std::array<QXdevice, Board::numberOfBoards> devices{};

unsigned checkedPort(unsigned port) {
    if (port >= Board::numberOfPorts) {
        throw std::out_of_range("a board has the camera ports 0 and 1");
    }
    return port;
}

unsigned checkedInput(unsigned input) {
    if (input >= Board::numberOfInputs) {
        throw std::out_of_range("a board has the trigger inputs 0 to 7");
    }
    return input;
}

} // namespace

Board& Board::at(unsigned number) {
    static std::mutex lock;
    static std::array<std::unique_ptr<Board>, numberOfBoards> boards;
    const std::lock_guard<std::mutex> guard(lock);
    std::unique_ptr<Board>& board = boards.at(number);
    if (board == nullptr) {
        board.reset(new Board(number));
    }
    return *board;
}

Board* Board::of(const QXdevice* device) {
    const std::less<const QXdevice*> before;
    const QXdevice* first = devices.data();
    if (before(device, first) || !before(device, first + devices.size())) {
        return nullptr;
    }
    return &at(static_cast<unsigned>(device - first));
}

Board::Board(unsigned number) : mNumber(number), mModel(std::make_unique<BoardModel>()) {}

Board::~Board() = default;

unsigned Board::number() const { return mNumber; }

QXdevice* Board::device() { return &devices[mNumber]; }

void Board::reset() { mModel->reset(false); }

void Board::resetAndStepByHand() { mModel->reset(true); }

BoardClock& Board::clock() { return mModel->clock(); }

CameraSetup Board::camera(unsigned port) const { return mModel->camera(checkedPort(port)); }

void Board::setCamera(unsigned port, const CameraSetup& setup) {
    mModel->setCamera(checkedPort(port), setup);
}

std::uint64_t Board::exposures(unsigned port) const { return mModel->exposures(checkedPort(port)); }

std::uint64_t Board::designValue(const std::string& name) const { return mModel->peek(name); }

void Board::setDesignValue(const std::string& name, std::uint64_t value) { mModel->poke(name, value); }

void Board::releaseDesignValue(const std::string& name) { mModel->release(name); }

std::vector<std::uint32_t> Board::designField(const std::string& name) const {
    return mModel->peekTable(name);
}

void Board::setDesignField(const std::string& name, std::size_t first,
                           const std::vector<std::uint32_t>& values) {
    mModel->pokeTable(name, first, values);
}

void Board::pinRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value) {
    mModel->pinRuntimeParameter(id, checkedPort(dmaIndex), value);
}

void Board::releaseRuntimeParameter(int id, unsigned dmaIndex) {
    mModel->releaseRuntimeParameter(id, checkedPort(dmaIndex));
}

void Board::driveInput(unsigned input, bool level) { mModel->driveInput(checkedInput(input), level); }

void Board::driveInputAt(std::uint64_t tick, unsigned input, bool level) {
    mModel->driveInputAt(tick, checkedInput(input), level);
}

void Board::playInput(unsigned input, const InputWave& wave) { mModel->playInput(checkedInput(input), wave); }

void Board::releaseInput(unsigned input) { mModel->releaseInput(checkedInput(input)); }

void Board::startTrace(std::size_t capacity) { mModel->startTrace(capacity); }

void Board::stopTrace() { mModel->stopTrace(); }

TriggerTrace Board::trace() const { return mModel->trace(); }

void Board::raiseEvent(const std::string& designEventName) { mModel->raise(designEventName); }

std::vector<RaisedEvent> Board::takeEvents(std::size_t most) { return mModel->takeEvents(most); }

std::vector<std::string> Board::designEvents() { return mModel->designEvents(); }

std::uint64_t Board::eventCount(const std::string& designEventName) const {
    return mModel->eventCount(designEventName);
}

BoardModel& Board::model() { return *mModel; }

} // namespace simulator
