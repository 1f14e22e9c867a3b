// Creation, freeing and loading of the applet.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"

#include <dlfcn.h>

namespace {

void createAndFree(benchmark::State& state) {
    for (auto _ : state) {
        BareHandle handle;
        benchmark::DoNotOptimize(handle.get());
    }
}
BENCHMARK(createAndFree)->Name("lifetime/create+free");

/// The host calls of a creation with defaults, about as many as it makes.
void creationCalls(benchmark::State& state) {
    constexpr int idLookups = 178;
    constexpr int accesses = 250;
    std::uint64_t word = 0;
    for (auto _ : state) {
        for (int lookup = 0; lookup < idLookups; ++lookup) {
            benchmark::DoNotOptimize(host().idByName(nullptr, "Device1"));
        }
        for (int access = 0; access < accesses; ++access) {
            benchmark::DoNotOptimize(host().get(nullptr, access, &word, 0, 2));
        }
    }
}
BENCHMARK(creationCalls)->Name("floor/creation-calls");

void openLibrary(benchmark::State& state) {
    for (auto _ : state) {
        void* library = dlopen(APPLET_FILE, RTLD_NOW | RTLD_LOCAL);
        benchmark::DoNotOptimize(library);
        dlclose(library);
    }
}
BENCHMARK(openLibrary)->Name("lifetime/open-library");

const bool compared = [] {
    compare("lifetime/create+free", "floor/creation-calls");
    return true;
}();

} // namespace
