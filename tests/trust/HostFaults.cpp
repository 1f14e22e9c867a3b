#include "tests/trust/HostFaults.h"

#include <algorithm>
#include <iterator>

using simulator::Call;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr CallKind failingKinds[] = {
    CallKind::designLoad,     CallKind::designUnload,  CallKind::registerRead, CallKind::registerWrite,
    CallKind::initialisation, CallKind::release,       CallKind::idLookup,     CallKind::read,
    CallKind::write,          CallKind::parameterTree, CallKind::acquisition,  CallKind::status,
};

bool canFail(const Call& call) {
    return std::find(std::begin(failingKinds), std::end(failingKinds), call.kind) != std::end(failingKinds);
}

} // namespace

void HostFaults::noteCalls() {
    const std::vector<Call> all = hostCalls().calls();
    std::copy_if(all.begin(), all.end(), std::back_inserter(mCalls), canFail);
    hostCalls().record(false);
    hostCalls().clear();
}

bool HostFaults::hasWrittenBefore(std::size_t nth) const { return callsBefore(nth, CallKind::write) > 0; }

unsigned HostFaults::callsBefore(std::size_t nth, CallKind kind) const {
    const auto end = mCalls.begin() + static_cast<std::ptrdiff_t>(nth);
    return static_cast<unsigned>(
        std::count_if(mCalls.begin(), end, [kind](const Call& call) { return call.kind == kind; }));
}

void HostFaults::arrange(std::size_t nth, FaultDuration duration) const {
    const CallKind kind = mCalls[nth].kind;
    if (duration == FaultDuration::once) {
        hostCalls().failOnce(kind, callsBefore(nth, kind) + 1, injectedCode);
        return;
    }
    for (const CallKind each : failingKinds) {
        hostCalls().failFrom(each, callsBefore(nth, each) + 1, injectedCode);
    }
}
