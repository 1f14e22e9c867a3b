// Creation, freeing and loading of the applet.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"

#include <cstdint>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace {

// In batches: stopping the clock takes as long as a good part of a creation.
constexpr std::size_t batch = 32;

template <class Operation>
void perHandle(benchmark::State& state, Operation operation) {
    for (auto _ : state) {
        operation(state);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * batch));
}

void create(benchmark::State& state) {
    perHandle(state, [](benchmark::State& timed) {
        std::vector<std::unique_ptr<BareHandle>> handles(batch);
        for (auto& handle : handles) {
            handle = std::make_unique<BareHandle>();
        }
        timed.PauseTiming();
        handles.clear();
        timed.ResumeTiming();
    });
}
BENCHMARK(create)->Name("lifetime/create");

void release(benchmark::State& state) {
    perHandle(state, [](benchmark::State& timed) {
        timed.PauseTiming();
        std::vector<std::unique_ptr<BareHandle>> handles(batch);
        for (auto& handle : handles) {
            handle = std::make_unique<BareHandle>();
        }
        timed.ResumeTiming();
        handles.clear();
    });
}
BENCHMARK(release)->Name("lifetime/free");

void creationCalls(benchmark::State& state) {
    const unsigned long calls = hostCallsOf([] { const BareHandle handle; });
    perHandle(state, [calls](benchmark::State&) { callHost(calls * batch); });
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

void openFile(benchmark::State& state) {
    for (auto _ : state) {
        const int file = open(APPLET_FILE, O_RDONLY | O_CLOEXEC);
        benchmark::DoNotOptimize(file);
        close(file);
    }
}
BENCHMARK(openFile)->Name("floor/open-file");

const bool compared = [] {
    compareTime("lifetime/create", "floor/creation-calls", 300e3);
    compareTime("lifetime/free", "floor/creation-calls");
    compareTime("lifetime/open-library", "floor/open-file", 1e6);
    return true;
}();

} // namespace
