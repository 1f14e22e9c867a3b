// Configuration and lookup-table files and the XML description, beside one pass over the same bytes.

#include "benchmarks/BareHandle.h"
#include "benchmarks/RatioReporter.h"
#include "platform/ParameterIds.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

void savedConfiguration(const TemporaryFile& file) {
    BareHandle handle;
    Fg_saveConfig(handle.get(), file.path());
}

void savedTable(const TemporaryFile& file) {
    BareHandle handle;
    Fg_setParameterWithType(handle.get(), FG_LUT_SAVE_FILE, file.path(), 0, anyType);
}

void passOver(const TemporaryFile& saved) {
    std::array<char, 256> line{};
    const File file(std::fopen(saved.path(), "r"));
    while (std::fgets(line.data(), line.size(), file.get()) != nullptr) {
        benchmark::DoNotOptimize(line);
    }
}

void configurationPass(benchmark::State& state) {
    const TemporaryFile saved(".mcf");
    savedConfiguration(saved);
    BareHandle handle;
    const unsigned long calls = hostCallsOf([&] { Fg_loadConfig(handle.get(), saved.path()); });
    for (auto _ : state) {
        passOver(saved);
        callHost(calls);
    }
}
BENCHMARK(configurationPass)->Name("floor/configuration-pass+calls");

void tablePass(benchmark::State& state) {
    const TemporaryFile saved(".lut");
    savedTable(saved);
    for (auto _ : state) {
        passOver(saved);
    }
}
BENCHMARK(tablePass)->Name("floor/table-pass");

/// The lines of a configuration, flushed each.
void flushedLines(benchmark::State& state) {
    const TemporaryFile saved(".mcf");
    savedConfiguration(saved);
    std::vector<std::string> lines;
    {
        std::array<char, 256> line{};
        const File file(std::fopen(saved.path(), "r"));
        while (std::fgets(line.data(), line.size(), file.get()) != nullptr) {
            lines.emplace_back(line.data());
        }
    }
    for (auto _ : state) {
        const File file(std::fopen(saved.path(), "w"));
        for (const std::string& line : lines) {
            std::fputs(line.c_str(), file.get());
            std::fflush(file.get());
        }
    }
}
BENCHMARK(flushedLines)->Name("floor/configuration-flushes");

void saveConfiguration(benchmark::State& state) {
    BareHandle handle;
    const TemporaryFile file(".mcf");
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_saveConfig(handle.get(), file.path()));
    }
}
BENCHMARK(saveConfiguration)->Name("file/save-configuration");

void loadConfiguration(benchmark::State& state) {
    BareHandle handle;
    const TemporaryFile file(".mcf");
    Fg_saveConfig(handle.get(), file.path());
    for (auto _ : state) {
        benchmark::DoNotOptimize(Fg_loadConfig(handle.get(), file.path()));
    }
}
BENCHMARK(loadConfiguration)->Name("file/load-configuration");

void loadTable(benchmark::State& state) {
    BareHandle handle;
    const TemporaryFile file(".lut");
    Fg_setParameterWithType(handle.get(), FG_LUT_SAVE_FILE, file.path(), 0, anyType);
    const unsigned userFile = 0;
    Fg_setParameterWithType(handle.get(), FG_LUT_TYPE, &userFile, 0, anyType);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Fg_setParameterWithType(handle.get(), FG_LUT_CUSTOM_FILE, file.path(), 0, anyType));
    }
}
BENCHMARK(loadTable)->Name("file/load-table");

std::vector<char> documentBuffer(BareHandle& handle) {
    unsigned size = 0;
    Fg_getParameterInfoXML(handle.get(), 0, nullptr, &size);
    return std::vector<char>(size);
}

void xmlDocument(benchmark::State& state) {
    BareHandle handle;
    std::vector<char> document = documentBuffer(handle);
    for (auto _ : state) {
        auto size = static_cast<unsigned>(document.size());
        benchmark::DoNotOptimize(Fg_getParameterInfoXML(handle.get(), 0, document.data(), &size));
    }
    const std::string_view text(document.data(), document.size());
    double parameters = 0;
    for (std::size_t end = text.find("\n\r"); end != text.npos; end = text.find("\n\r", end + 1)) {
        ++parameters;
    }
    state.counters["per_parameter"] = benchmark::Counter(
        parameters, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(xmlDocument)->Name("xml/one-port");

void xmlCopy(benchmark::State& state) {
    BareHandle handle;
    const std::vector<char> document = documentBuffer(handle);
    std::vector<char> copy(document.size());
    for (auto _ : state) {
        copy = document;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(xmlCopy)->Name("floor/xml-copy");

const bool compared = [] {
    compare("file/save-configuration", "floor/configuration-flushes");
    compare("file/load-configuration", "floor/configuration-pass+calls", 4);
    compare("file/load-table", "floor/table-pass", 4);
    compareTime("xml/one-port", "floor/xml-copy", 100e3);
    return true;
}();

} // namespace
