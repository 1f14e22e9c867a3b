// Single accesses: gets, sets, refusals, look-ups.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"
#include "platform/ParameterValues.h"

namespace {

void cachedGet(benchmark::State& state) {
    BareHandle handle;
    unsigned value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_getParameterWithType(handle.get(), FG_WIDTH, &value, 1, anyType));
    }
}
BENCHMARK(cachedGet)->Name("get/cached");

void widthSet(benchmark::State& state) {
    BareHandle handle;
    unsigned width = 512;
    for (auto _ : state) {
        width ^= 1024U ^ 512U;
        benchmark::DoNotOptimize(Fg_setParameterWithType(handle.get(), FG_WIDTH, &width, 0, anyType));
    }
}
BENCHMARK(widthSet)->Name("set/width");

void refusedSet(benchmark::State& state) {
    BareHandle handle;
    const unsigned width = 20;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_setParameterWithType(handle.get(), FG_WIDTH, &width, 0, anyType));
    }
}
BENCHMARK(refusedSet)->Name("set/refused");

void outputSet(benchmark::State& state) {
    BareHandle handle;
    unsigned source = 0;
    for (auto _ : state) {
        source ^= 6;
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_TRIGGEROUT_SELECT0, &source, 0, anyType));
    }
}
BENCHMARK(outputSet)->Name("set/output");

void statusGet(benchmark::State& state) {
    BareHandle handle;
    unsigned status = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Fg_getParameterWithType(handle.get(), FG_CAMSTATUS_EXTENDED, &status, 0, anyType));
    }
}
BENCHMARK(statusGet)->Name("get/status");

void tableEntrySet(benchmark::State& state) {
    BareHandle handle;
    const FieldParameterInt_s entry{1000, 1000};
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_setParameterWithType(handle.get(), FG_LUT_VALUE, &entry, 0, anyType));
    }
}
BENCHMARK(tableEntrySet)->Name("set/table-entry");

void statusFloor(benchmark::State& state) {
    BareHandle handle;
    unsigned status = 0;
    const unsigned long calls = hostCallsOf(
        [&] { Fg_getParameterWithType(handle.get(), FG_CAMSTATUS_EXTENDED, &status, 0, anyType); });
    for (auto _ : state) {
        callHost(calls);
    }
}
BENCHMARK(statusFloor)->Name("floor/status-calls");

void nameLookup(benchmark::State& state) {
    BareHandle handle;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_getParameterIdByName(handle.get(), "FG_TRIGGER_PULSEFORMGEN2_DELAY"));
    }
}
BENCHMARK(nameLookup)->Name("lookup/id-by-name");

void indexLookup(benchmark::State& state) {
    BareHandle handle;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_getParameterId(handle.get(), 60));
    }
}
BENCHMARK(indexLookup)->Name("lookup/id-by-index");

void eventLookup(benchmark::State& state) {
    BareHandle handle;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_getEventMask(handle.get(), "FG_OVERFLOW_CAM0"));
    }
}
BENCHMARK(eventLookup)->Name("lookup/event");

const bool compared = [] {
    compare("get/cached", "floor/lock+call+switch", 1.5);
    compare("get/status", "floor/status-calls");
    compare("set/width", "floor/lock+call+switch+2writes", 2.5);
    compare("set/output", "floor/lock+call+switch+2writes");
    compare("set/table-entry", "floor/lock+call+switch+2writes");
    compare("set/refused", "floor/thrown-code", 1.2);
    compare("lookup/id-by-name", "floor/lock+call+switch");
    compare("lookup/id-by-index", "floor/lock+call+switch");
    compare("lookup/event", "floor/lock+call+switch");
    return true;
}();

} // namespace
