#include "docs/reference/DrivenParameters.h"

#include "simulator/HostCalls.h"

#include <array>
#include <cstring>
#include <vector>

namespace {

constexpr int anyType = 2;
constexpr int writableFlag = 2;
constexpr std::size_t valueCapacity = 4096;
using Value = std::array<char, valueCapacity>;

template <class Number>
Value numberValue(Number number) {
    Value value{};
    std::memcpy(value.data(), &number, sizeof number);
    return value;
}

/// Values whose setting shows what a parameter drives.
std::vector<Value> valuesToTry(const RegisterInfo& record) {
    std::vector<Value> values;
    switch (record.format) {
    case REG_FORMAT_UINT:
        values.push_back(numberValue(record.u.uiReg.from));
        values.push_back(numberValue(record.u.uiReg.to));
        break;
    case REG_FORMAT_DOUBLE:
        values.push_back(numberValue(record.u.dReg.from));
        values.push_back(numberValue(record.u.dReg.to));
        break;
    case REG_FORMAT_ENUM:
        for (int index = 0; index < record.u.eReg.nrOfElements; ++index) {
            values.push_back(numberValue(record.u.eReg.enumValues[index]));
        }
        break;
    default:
        break;
    }
    // Back again: a change of mode or state drives other parameters in the other direction.
    const std::vector<Value> forth = values;
    values.insert(values.end(), forth.rbegin(), forth.rend());
    return values;
}

std::set<std::string> namesOf(simulator::CallKind kind) {
    std::set<std::string> names;
    for (const simulator::Call& call : simulator::hostCalls().calls(kind)) {
        names.insert(call.name);
    }
    return names;
}

} // namespace

DrivenParameters drivenBy(const LiveApplet& applet, const RegisterInfo& record) {
    simulator::HostCalls& calls = simulator::hostCalls();
    DrivenParameters driven;
    Value before{};
    calls.clear();
    calls.record(true);
    Fg_getParameterWithType(applet.handle(), record.id, before.data(), 0, anyType);
    driven.readOnGet = namesOf(simulator::CallKind::read);
    calls.clear();
    if ((record.accessFlags & writableFlag) != 0) {
        for (const Value& value : valuesToTry(record)) {
            Fg_setParameterWithType(applet.handle(), record.id, value.data(), 0, anyType);
        }
        Fg_setParameterWithType(applet.handle(), record.id, before.data(), 0, anyType);
        driven.written = namesOf(simulator::CallKind::write);
    }
    calls.record(false);
    calls.clear();
    return driven;
}
