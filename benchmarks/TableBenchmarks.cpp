// The lookup table: computed, and as the identity.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"

#include <array>
#include <cmath>
#include <cstring>

namespace {

constexpr int entries = 4096;

void computeTable(benchmark::State& state, double gamma) {
    BareHandle handle;
    Fg_setParameterWithType(handle.get(), FG_PROCESSING_GAMMA, &gamma, 0, anyType);
    double gain = 1;
    for (auto _ : state) {
        gain = gain == 1 ? 1.5 : 1;
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_PROCESSING_GAIN, &gain, 0, anyType));
    }
}

void gammaTable(benchmark::State& state) { computeTable(state, 2.2); }
BENCHMARK(gammaTable)->Name("table/gamma");

void linearTable(benchmark::State& state) { computeTable(state, 1.0); }
BENCHMARK(linearTable)->Name("table/gamma-1");

void powers(benchmark::State& state) {
    double gain = 1;
    for (auto _ : state) {
        gain = gain == 1 ? 1.5 : 1;
        double sum = 0;
        for (int input = 0; input < entries; ++input) {
            sum += std::pow(input / 4095.0 * gain, 1 / 2.2);
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(powers)->Name("floor/4096-pow");

void tableCopy(benchmark::State& state) {
    static std::array<unsigned, entries> from{};
    static std::array<unsigned, entries> to{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(from.data());
        std::memcpy(to.data(), from.data(), sizeof to);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(tableCopy)->Name("floor/table-copy");

const bool compared = [] {
    compare("table/gamma", "floor/4096-pow", 1.05);
    compare("table/gamma-1", "floor/4096-pow", 0.05);
    compare("table/gamma-1", "floor/table-copy");
    return true;
}();

} // namespace
