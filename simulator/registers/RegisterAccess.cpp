#include "platform/RegisterAccess.h"

#include "simulator/Board.h"
#include "simulator/model/BoardModel.h"
#include "simulator/Observed.h"
#include "simulator/RuntimeCodes.h"

#include <cstring>

/// libkavoiolibrt.so: the registers of a board, which are the storage of its design parameters too.

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

simulator::BoardModel* modelOf(QXdevice* device) {
    simulator::Board* board = simulator::Board::of(device);
    return board != nullptr ? &board->model() : nullptr;
}

int readRegister(simulator::BoardModel* model, int reg, void* buffer) {
    if (model == nullptr || buffer == nullptr) {
        return simulator::code::invalidParameter;
    }
    std::uint64_t value = 0;
    const int result = model->readRegister(reg, value);
    if (result == simulator::code::ok) {
        std::memcpy(buffer, &value, sizeof value);
    }
    return result;
}

void describe(simulator::Call& call, simulator::BoardModel* model, int reg) {
    call.id = reg;
    call.name = model != nullptr ? model->registerName(reg) : std::string();
}

} // namespace

EXPORTED int KavoRegisterRead(QXdevice* device, int reg, void* buffer) {
    simulator::BoardModel* model = modelOf(device);
    return simulator::observed(
        simulator::CallKind::registerRead, "KavoRegisterRead",
        [&](simulator::Call& call) { describe(call, model, reg); },
        [&] { return readRegister(model, reg, buffer); });
}

EXPORTED int KavoRegisterWrite(QXdevice* device, int reg, unsigned lower, unsigned upper) {
    simulator::BoardModel* model = modelOf(device);
    return simulator::observed(
        simulator::CallKind::registerWrite, "KavoRegisterWrite",
        [&](simulator::Call& call) {
            describe(call, model, reg);
            call.values = {lower, upper};
        },
        [&] {
            const std::uint64_t value = (std::uint64_t{upper} << 32) | lower;
            return model != nullptr ? model->writeRegister(reg, value) : simulator::code::invalidParameter;
        });
}
