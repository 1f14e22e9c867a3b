#include "benchmarks/RatioReporter.h"

#include <cstdio>

namespace {

std::vector<Comparison>& comparisons() {
    static std::vector<Comparison> all;
    return all;
}

} // namespace

void compare(const std::string& figure, const std::string& floor, double target) {
    comparisons().push_back({figure, floor, target});
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const bool counts = run.run_type == Run::RT_Iteration || run.aggregate_name == "median";
        if (counts && run.iterations > 0) {
            const double seconds = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            mNanoseconds[run.run_name.function_name] = seconds * 1e9;
        }
    }
}

void RatioReporter::Finalize() {
    std::printf("\n%-34s %12s   %-34s %12s %7s %7s\n", "figure", "CPU ns", "floor", "CPU ns", "ratio", "aim");
    for (const Comparison& comparison : comparisons()) {
        const auto figure = mNanoseconds.find(comparison.figure);
        const auto floor = mNanoseconds.find(comparison.floor);
        if (figure == mNanoseconds.end() || floor == mNanoseconds.end()) {
            continue;
        }
        std::printf("%-34s %12.1f   %-34s %12.1f %7.2f", comparison.figure.c_str(), figure->second,
                    comparison.floor.c_str(), floor->second, figure->second / floor->second);
        if (comparison.target > 0) {
            std::printf(" %7.2f", comparison.target);
        }
        std::printf("\n");
    }
}
