#include "fuzz/LiveApplet.h"

#include "applet/ParameterFamilies.h"
#include "fuzz/FuzzInput.h"

namespace kavo::fuzz {

using simulator::CallKind;
using simulator::hostCalls;

LiveApplet::LiveApplet(unsigned boardNumber) : mBoard(simulator::Board::at(boardNumber)) {
    mBoard.resetAndStepByHand();
    hostCalls().record(true);
    int error = 0;
    mHandle.Master = Std_entry(mBoard.device(), &error, 0);
    require(mHandle.Master != nullptr && error == 0, "an applet is made");
    mWrites = hostCalls().calls(CallKind::write);
    hostCalls().reset();
    remember();
    const std::vector<std::uint64_t> atStart = boardValues();
    reset();
    require(boardValues() == atStart, "the board comes back to its start state");
}

LiveApplet::~LiveApplet() {
    hostCalls().reset();
    Fg_FreeGrabber(&mHandle);
}

FgQxWrapperImpl& LiveApplet::wrapper() {
    return static_cast<FgQxWrapperImpl&>(*static_cast<FgQxWrapper*>(mHandle.Master));
}

void LiveApplet::remember() {
    mValues = wrapper();
    for (const int port : {0, 1}) {
        walkParameterTree(Fg_getParameterInfo(&mHandle, port), [&](const RegisterInfo& record) {
            mLimits.push_back({const_cast<RegisterInfo*>(&record), record});
        });
    }
}

void LiveApplet::reset() {
    hostCalls().stopFailing();
    mBoard.resetAndStepByHand();
    for (const simulator::Call& call : mWrites) {
        writeAgain(call);
    }
    static_cast<StandardParameterCaches&>(wrapper()) = mValues;
    for (const Limits& limits : mLimits) {
        limits.record->u = limits.atStart.u;
        limits.record->accessFlags = limits.atStart.accessFlags;
    }
    wrapper().setError(0);
}

void LiveApplet::writeAgain(const simulator::Call& call) {
    const void* value = call.values.data();
    FieldAccess field{};
    if (call.type == kavo::type::wholeField) {
        constexpr std::size_t headWords = 3;
        field = {call.values[0], call.values[1], call.values[2], call.values.data() + headWords};
        value = &field;
    }
    const BoundFunctions& runtime = wrapper().wrapperFg();
    Fg_Struct* inner = wrapper().grabcoreFg();
    const int code =
        call.type != 0 ? runtime.DLL_Fg_setParameterWithType(inner, call.id, value, call.dmaIndex, call.type)
                       : runtime.DLL_Fg_setParameter(inner, call.id, value, call.dmaIndex);
    require(code == call.result, "a write of the creation can be repeated");
}

std::vector<std::uint64_t> LiveApplet::boardValues() {
    std::vector<std::uint64_t> values;
    for (const DesignParameterName& parameter : designParameterNames) {
        const std::vector<std::uint32_t> table = mBoard.designField(parameter.name);
        values.push_back(mBoard.designValue(parameter.name));
        values.insert(values.end(), table.begin(), table.end());
    }
    return values;
}

} // namespace kavo::fuzz
