// Many handles in one process, used by two threads at once.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"

#include <array>

namespace {

constexpr int threads = 2;

/// Gets from each handle in turn: those of one thread, or that thread's half of all.
template <std::size_t handleCount>
void getInTurn(benchmark::State& state) {
    std::array<BareHandle, handleCount> handles;
    std::size_t next = 0;
    unsigned value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_getParameterWithType(handles[next].get(), FG_WIDTH, &value, 1, anyType));
        next = next + 1 < handleCount ? next + 1 : 0;
    }
}
BENCHMARK(getInTurn<8>)->Name("threads/16-handles-on-2")->Threads(threads);
BENCHMARK(getInTurn<8>)->Name("floor/8-handles-on-1");

const bool compared = [] {
    compare("threads/16-handles-on-2", "floor/8-handles-on-1");
    return true;
}();

} // namespace
