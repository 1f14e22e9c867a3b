#include "simulator/runtime/InnerHandle.h"

#include "grabber_basis/parameterInfo.h"
#include "platform/ParameterValues.h"
#include "simulator/model/BoardModel.h"
#include "simulator/runtime/ParameterTree.h"
#include "simulator/runtime/ParameterValue.h"
#include "simulator/RuntimeCodes.h"

namespace simulator {

InnerHandle::InnerHandle(Board& board, const SharedDesign& design)
    : mBoard(board), mModel(board.model()), mBinding(mModel.open(design)) {}

InnerHandle::~InnerHandle() { mModel.stopAcquisitionsOf(this); }

int InnerHandle::designType() const { return mBinding->design->image.type; }

int InnerHandle::conclude(int result) {
    mLastError = result < 0 ? result : 0;
    return result;
}

int InnerHandle::idByName(const char* name) const {
    if (name == nullptr) {
        return code::invalidParameter;
    }
    const auto found = mBinding->parameterNumbers.find(name);
    if (found != mBinding->parameterNumbers.end()) {
        return firstDesignId + static_cast<int>(found->second);
    }
    const RuntimeParameters::Description* own = RuntimeParameters::find(name);
    return own != nullptr ? own->id : code::invalidParameter;
}

std::string InnerHandle::nameOf(int id) const {
    if (cellOf(id) != nullptr) {
        return mBinding->design->image.parameters[static_cast<std::size_t>(id - firstDesignId)].name;
    }
    const RuntimeParameters::Description* own = RuntimeParameters::find(id);
    return own != nullptr ? own->name : std::string();
}

const DesignCell* InnerHandle::cellOf(int id) const {
    if (id < firstDesignId || static_cast<std::size_t>(id - firstDesignId) >= mBinding->parameters.size()) {
        return nullptr;
    }
    return mBinding->parameters[static_cast<std::size_t>(id - firstDesignId)];
}

DesignCell* InnerHandle::cellOf(int id) {
    const InnerHandle& self = *this;
    return const_cast<DesignCell*>(self.cellOf(id));
}

int InnerHandle::read(int id, void* value, unsigned dmaIndex, int type) {
    if (value == nullptr || dmaIndex >= Board::numberOfPorts) {
        return code::invalidParameter;
    }
    const DesignCell* cell = cellOf(id);
    if (cell == nullptr) {
        std::uint32_t word = 0;
        const int result = mModel.readRuntimeParameter(id, dmaIndex, word);
        return result == code::ok ? storeScalar(word, 32, type, value) : result;
    }
    if (cell->elementBits > 0) {
        return readTableValue(mModel, *cell, value, type);
    }
    return storeScalar(mModel.read(*cell), cell->bits, type, value);
}

int InnerHandle::write(int id, const void* value, unsigned dmaIndex, int type) {
    if (value == nullptr || dmaIndex >= Board::numberOfPorts) {
        return code::invalidParameter;
    }
    DesignCell* cell = cellOf(id);
    if (cell != nullptr && cell->elementBits > 0) {
        return writeTableValue(mModel, *cell, value, type);
    }
    std::uint64_t scalar = 0;
    const int result = loadScalar(value, cell != nullptr ? cell->bits.load() : 32, type, scalar);
    if (result != code::ok) {
        return result;
    }
    return cell != nullptr ? mModel.write(*cell, scalar)
                           : mModel.writeRuntimeParameter(id, dmaIndex, static_cast<std::uint32_t>(scalar));
}

std::vector<std::uint32_t> InnerHandle::wordsOf(int id, const void* value, int type) const {
    if (value == nullptr) {
        return {};
    }
    const DesignCell* cell = cellOf(id);
    const bool isTable = cell != nullptr && cell->elementBits > 0;
    return isTable ? tableWords(value, type)
                   : scalarWords(value, cell != nullptr ? cell->bits.load() : 32, type);
}

RegisterInfo* InnerHandle::parameterTree(int port) {
    if (port < 0 || port >= static_cast<int>(Board::numberOfPorts)) {
        return nullptr;
    }
    std::call_once(mTreeMade, [this] { mTree = makeParameterTree(*mBinding, firstDesignId); });
    return mTree->getRegisterInfo(port);
}

} // namespace simulator
