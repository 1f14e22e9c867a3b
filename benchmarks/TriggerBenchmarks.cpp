// The trigger system's costliest accesses, beside the host calls that they must make.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"

#include <ctime>

namespace {

constexpr int anyType = 2;

template <class Value>
void set(BareHandle& handle, int id, Value value) {
    Fg_setParameterWithType(handle.get(), id, &value, 0, anyType);
}

void rateSet(benchmark::State& state) {
    BareHandle handle;
    double rate = 100;
    for (auto _ : state) {
        rate = rate == 100 ? 200 : 100;
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_TRIGGER_FRAMESPERSECOND, &rate, 0, anyType));
    }
}
BENCHMARK(rateSet)->Name("trigger/rate");

void stateChange(benchmark::State& state) {
    BareHandle handle;
    unsigned triggerState = 0;
    for (auto _ : state) {
        triggerState ^= 2;
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_TRIGGERSTATE, &triggerState, 0, anyType));
    }
}
BENCHMARK(stateChange)->Name("trigger/state-change");

void softwareTriggers(benchmark::State& state) {
    BareHandle handle;
    set(handle, FG_AREATRIGGERMODE, 4U);
    set(handle, FG_TRIGGERQUEUE_MODE, 1U);
    set(handle, FG_TRIGGERSTATE, 0U);
    const unsigned pulses = 2040;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_SENDSOFTWARETRIGGER, &pulses, 0, anyType));
    }
}
BENCHMARK(softwareTriggers)->Name("trigger/2040-software-pulses");

/// The writes and sleeps that 2040 pulses are made of.
void softwareFloor(benchmark::State& state) {
    const unsigned request = 2;
    const timespec gap{0, 160};
    for (auto _ : state) {
        for (int pulse = 0; pulse < 2040; ++pulse) {
            host().set(nullptr, 1, &request, 0, anyType);
            nanosleep(&gap, nullptr);
        }
    }
}
BENCHMARK(softwareFloor)->Name("floor/2040-writes+sleeps");

const bool compared = [] {
    compare("trigger/rate", "floor/8reads+1write");
    compare("trigger/state-change", "floor/8reads+1write");
    compare("trigger/2040-software-pulses", "floor/2040-writes+sleeps");
    return true;
}();

} // namespace
