// The trigger system's costliest accesses, beside the host calls that they must make.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"

#include <ctime>

namespace {

template <class Value>
void set(BareHandle& handle, int id, Value value) {
    Fg_setParameterWithType(handle.get(), id, &value, 0, anyType);
}

/// A set that takes two values in turn, or only the host calls of one.
template <class Value>
void alternate(benchmark::State& state, int id, Value first, Value second, bool onlyCalls) {
    BareHandle handle;
    Value value = first;
    const auto change = [&] {
        value = value == first ? second : first;
        return Fg_setParameterWithType(handle.get(), id, &value, 0, anyType);
    };
    const unsigned long calls = (hostCallsOf(change) + hostCallsOf(change)) / 2;
    for (auto _ : state) {
        onlyCalls ? callHost(calls) : benchmark::DoNotOptimize(change());
    }
}

void rate(benchmark::State& state, bool onlyCalls) {
    alternate(state, FG_TRIGGER_FRAMESPERSECOND, 100.0, 200.0, onlyCalls);
}
BENCHMARK_CAPTURE(rate, set, false)->Name("trigger/rate");
BENCHMARK_CAPTURE(rate, calls, true)->Name("floor/rate-calls");

void triggerState(benchmark::State& state, bool onlyCalls) {
    alternate(state, FG_TRIGGERSTATE, 0U, 2U, onlyCalls);
}
BENCHMARK_CAPTURE(triggerState, set, false)->Name("trigger/state-change");
BENCHMARK_CAPTURE(triggerState, calls, true)->Name("floor/state-change-calls");

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
    compare("trigger/rate", "floor/rate-calls");
    compare("trigger/state-change", "floor/state-change-calls");
    compare("trigger/2040-software-pulses", "floor/2040-writes+sleeps");
    return true;
}();

} // namespace
