#include "simulator/model/BoardModel.h"

#include "simulator/RuntimeCodes.h"

#include <stdexcept>

namespace simulator {

BoardModel::BoardModel() {
    claimBoardRegisters();
    for (unsigned port = 0; port < Board::numberOfPorts; ++port) {
        mPorts[port] = std::make_unique<ImagePort>(mStore, port);
    }
    claimRuntimeParameters();
}

void BoardModel::claimBoardRegisters() {
    mStore.claim("Device1_Board_Time").compute = [this] { return mClock.now(); };
    mStore.claim("Device1_Board_SerialNumber").compute = [] { return std::uint64_t{0x0B1E55ED0001u}; };
}

void BoardModel::reset(bool steppedByHand) {
    const Guard guard(mLock);
    mClock.restart(steppedByHand);
    mStore.reset();
    mEvents.reset();
    mRuntimeParameters.reset();
    mLostPictures = {};
    mTrigger.reset();
    for (const std::unique_ptr<ImagePort>& port : mPorts) {
        port->reset();
    }
    mTick = 0;
    mChanged.notify_all();
}

BoardModel::Guard BoardModel::enter() {
    Guard guard(mLock);
    catchUp();
    return guard;
}

std::shared_ptr<const DesignBinding> BoardModel::open(const SharedDesign& design) {
    const Guard guard = enter();
    mDesign = mStore.bind(design);
    return mDesign;
}

std::uint64_t BoardModel::read(const DesignCell& cell) {
    const Guard guard = enter();
    return cell.read();
}

int BoardModel::write(DesignCell& cell, std::uint64_t value) {
    const Guard guard = enter();
    if (cell.isStatus) {
        return code::notAvailable;
    }
    cell.write(value);
    mChanged.notify_all();
    return code::ok;
}

std::shared_ptr<const Table> BoardModel::readTable(const DesignCell& cell) {
    const Guard guard = enter();
    return cell.table;
}

int BoardModel::writeTable(DesignCell& cell, std::size_t first, const std::uint32_t* values,
                           std::size_t count) {
    const Guard guard = enter();
    return cell.writeTable(first, values, count) ? code::ok : code::invalidParameter;
}

DesignCell* BoardModel::registerCell(int number) const {
    if (mDesign == nullptr || number < 1 || static_cast<std::size_t>(number) > mDesign->registers.size()) {
        return nullptr;
    }
    return mDesign->registers[static_cast<std::size_t>(number) - 1];
}

int BoardModel::readRegister(int number, std::uint64_t& value) {
    const Guard guard = enter();
    const DesignCell* cell = registerCell(number);
    if (cell == nullptr) {
        return code::noRegister;
    }
    value = cell->read();
    return code::ok;
}

int BoardModel::writeRegister(int number, std::uint64_t value) {
    const Guard guard = enter();
    DesignCell* cell = registerCell(number);
    if (cell == nullptr) {
        return code::noRegister;
    }
    if (cell->isStatus) {
        return code::notAvailable;
    }
    cell->write(value);
    return code::ok;
}

std::string BoardModel::registerName(int number) {
    const Guard guard(mLock);
    const bool isKnown = registerCell(number) != nullptr;
    return isKnown ? mDesign->design->image.registers[static_cast<std::size_t>(number) - 1].name
                   : std::string();
}

int BoardModel::readRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t& value) {
    const Guard guard = enter();
    return mRuntimeParameters.read(id, dmaIndex, value);
}

int BoardModel::writeRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value) {
    const Guard guard = enter();
    return mRuntimeParameters.write(id, dmaIndex, value);
}

void BoardModel::pinRuntimeParameter(int id, unsigned dmaIndex, std::uint32_t value) {
    const Guard guard(mLock);
    mRuntimeParameters.pin(id, dmaIndex, value);
}

void BoardModel::releaseRuntimeParameter(int id, unsigned dmaIndex) {
    const Guard guard(mLock);
    mRuntimeParameters.release(id, dmaIndex);
}

DesignCell& BoardModel::known(const std::string& name) {
    DesignCell* cell = mStore.find(name);
    if (cell == nullptr) {
        throw std::out_of_range("the board has no register or design parameter " + name);
    }
    return *cell;
}

std::uint64_t BoardModel::peek(const std::string& name) {
    const Guard guard = enter();
    return known(name).read();
}

void BoardModel::poke(const std::string& name, std::uint64_t value) {
    const Guard guard = enter();
    DesignCell& cell = known(name);
    if (cell.isStatus || (cell.compute && !cell.written)) {
        cell.pinned = value;
    } else {
        cell.write(value);
    }
}

void BoardModel::release(const std::string& name) {
    const Guard guard = enter();
    known(name).pinned.reset();
}

std::vector<std::uint32_t> BoardModel::peekTable(const std::string& name) {
    const Guard guard = enter();
    const DesignCell& cell = known(name);
    return cell.table != nullptr ? *cell.table : Table();
}

void BoardModel::pokeTable(const std::string& name, std::size_t first,
                           const std::vector<std::uint32_t>& values) {
    const Guard guard = enter();
    if (!known(name).writeTable(first, values.data(), values.size())) {
        throw std::out_of_range("the elements do not fit the table of " + name);
    }
}

void BoardModel::raise(const std::string& event) {
    const Guard guard = enter();
    mEvents.raise(mClock.now(), event);
}

std::vector<RaisedEvent> BoardModel::takeEvents(std::size_t most) {
    const Guard guard = enter();
    return mEvents.take(most);
}

std::vector<std::string> BoardModel::designEvents() {
    const Guard guard = enter();
    return mDesign == nullptr ? std::vector<std::string>() : mDesign->design->image.events;
}

std::uint64_t BoardModel::eventCount(const std::string& event) {
    const Guard guard = enter();
    return mEvents.count(event);
}

} // namespace simulator
