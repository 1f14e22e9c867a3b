#include "tests/support/AppletOnBoard.h"

#include "applet/ParameterFamilies.h"

#include <algorithm>

using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr unsigned unreadInteger = 0xDEADBEEF;
constexpr double unreadReal = -12345.0;
constexpr std::size_t textCapacity = 4096;
/// The applet ignores the type code but for the 64-bit types.
constexpr int anyType = kavo::type::unsigned32;

} // namespace

std::ostream& operator<<(std::ostream& out, const RecordedWrite& write) {
    return out << write.name << " <- " << write.value << " (DMA " << write.dmaIndex << ", type " << write.type
               << ")";
}

AppletOnBoard::AppletOnBoard(Role role) : mBoard(simulator::Board::at(0)) {
    hostCalls().reset();
    mBoard.reset();
    mBoard.clock().stepByHand();
    mHandle.Master = Std_entry(mBoard.device(), &mError, role == Role::slave ? 1 : 0);
    hostCalls().record(true);
}

AppletOnBoard::~AppletOnBoard() {
    hostCalls().reset();
    if (mHandle.Master != nullptr) {
        Fg_FreeGrabber(&mHandle);
    }
}

FgQxWrapperImpl& AppletOnBoard::wrapper() {
    return static_cast<FgQxWrapperImpl&>(*static_cast<FgQxWrapper*>(mHandle.Master));
}

int AppletOnBoard::set(int id, unsigned value, int port) {
    return Fg_setParameterWithType(&mHandle, id, &value, static_cast<unsigned>(port), anyType);
}

int AppletOnBoard::set(int id, double value, int port) {
    return Fg_setParameterWithType(&mHandle, id, &value, static_cast<unsigned>(port), anyType);
}

int AppletOnBoard::set(int id, const char* value, int port) {
    return Fg_setParameterWithType(&mHandle, id, value, static_cast<unsigned>(port), anyType);
}

int AppletOnBoard::set(int id, const FieldParameterInt_s& value, int port) {
    return Fg_setParameterWithType(&mHandle, id, &value, static_cast<unsigned>(port), anyType);
}

unsigned AppletOnBoard::get(int id, int port) {
    unsigned value = unreadInteger;
    Fg_getParameterWithType(&mHandle, id, &value, static_cast<unsigned>(port), anyType);
    return value;
}

double AppletOnBoard::getReal(int id, int port) {
    double value = unreadReal;
    Fg_getParameterWithType(&mHandle, id, &value, static_cast<unsigned>(port), anyType);
    return value;
}

std::string AppletOnBoard::getText(int id, int port) {
    std::array<char, textCapacity> text{};
    Fg_getParameterWithType(&mHandle, id, text.data(), static_cast<unsigned>(port), anyType);
    return text.data();
}

int AppletOnBoard::readCode(int id, int port) {
    std::array<char, textCapacity> buffer{};
    return Fg_getParameterWithType(&mHandle, id, buffer.data(), static_cast<unsigned>(port), anyType);
}

int AppletOnBoard::lastError() { return Fg_getLastErrorNumber(&mHandle); }

RegisterInfo* AppletOnBoard::record(int id, int port) {
    RegisterInfo* found = nullptr;
    walkParameterTree(Fg_getParameterInfo(&mHandle, port), [&](const RegisterInfo& record) {
        if (record.id == id) {
            found = const_cast<RegisterInfo*>(&record);
        }
    });
    return found;
}

void AppletOnBoard::forgetCalls() { hostCalls().clear(); }

std::vector<RecordedWrite> AppletOnBoard::writes() {
    std::vector<RecordedWrite> recorded;
    for (const simulator::Call& call : hostCalls().calls(CallKind::write)) {
        recorded.push_back(
            {call.name, call.values.empty() ? 0 : call.values.front(), call.dmaIndex, call.type});
    }
    return recorded;
}

std::vector<std::string> AppletOnBoard::reads() {
    std::vector<std::string> names;
    for (const simulator::Call& call : hostCalls().calls(CallKind::read)) {
        names.push_back(call.name);
    }
    return names;
}

void AppletOnBoard::failWrite(unsigned nth, int code) { hostCalls().failOnce(CallKind::write, nth, code); }

void AppletOnBoard::failRead(unsigned nth, int code) { hostCalls().failOnce(CallKind::read, nth, code); }

std::string AppletOnBoard::process(int port, const std::string& name) {
    return "Device1_Process" + std::to_string(port) + "_" + name;
}

std::string AppletOnBoard::trigger(int port, const std::string& name) {
    return "Device1_Process2_Trigger_TriggerCam" + std::to_string(port) + "_" + name;
}
