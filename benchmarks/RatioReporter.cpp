#include "benchmarks/RatioReporter.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace {

std::vector<Comparison>& comparisons() {
    static std::vector<Comparison> all;
    return all;
}

std::string fixed(double value, int digits) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << value;
    return text.str();
}

std::string timeText(double nanoseconds) {
    constexpr double microsecond = 1e3;
    constexpr double millisecond = 1e6;
    if (nanoseconds >= millisecond) {
        return fixed(nanoseconds / millisecond, 2) + " ms";
    }
    return nanoseconds >= microsecond ? fixed(nanoseconds / microsecond, 1) + " µs"
                                      : fixed(nanoseconds, 1) + " ns";
}

std::string aimText(const Comparison& comparison) {
    if (comparison.nanoseconds > 0) {
        return timeText(comparison.nanoseconds);
    }
    return comparison.ratio > 0 ? fixed(comparison.ratio, 2) + " x" : "";
}

} // namespace

void compare(const std::string& figure, const std::string& floor, double ratio) {
    comparisons().push_back({figure, floor, ratio, 0});
}

void compareTime(const std::string& figure, const std::string& floor, double nanoseconds) {
    comparisons().push_back({figure, floor, 0, nanoseconds});
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.iterations == 0) {
            continue;
        }
        const double seconds = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        const auto perSecond = run.counters.find("items_per_second");
        const double time = (perSecond != run.counters.end() ? 1 / perSecond->second.value : seconds) * 1e9;
        const auto [known, isNew] = mNanoseconds.emplace(run.run_name.function_name, time);
        known->second = std::min(known->second, time);
    }
}

std::vector<RatioReporter::Row> RatioReporter::measured() const {
    std::vector<Row> rows;
    for (const Comparison& comparison : comparisons()) {
        const auto figure = mNanoseconds.find(comparison.figure);
        const auto floor = mNanoseconds.find(comparison.floor);
        if (figure != mNanoseconds.end() && floor != mNanoseconds.end()) {
            rows.push_back({comparison, figure->second, floor->second});
        }
    }
    std::sort(rows.begin(), rows.end(), [](const Row& left, const Row& right) {
        return left.comparison.figure < right.comparison.figure;
    });
    return rows;
}

void RatioReporter::Finalize() {
    const std::vector<Row> rows = measured();
    std::printf("\n%-32s %10s   %-32s %10s %7s %9s\n", "figure", "CPU", "floor", "CPU", "ratio", "aim");
    for (const Row& row : rows) {
        std::printf("%-32s %10s   %-32s %10s %7.2f %9s\n", row.comparison.figure.c_str(),
                    timeText(row.figure).c_str(), row.comparison.floor.c_str(), timeText(row.floor).c_str(),
                    row.figure / row.floor, aimText(row.comparison).c_str());
    }
    if (!mMarkdown.empty()) {
        writeMarkdown(rows);
    }
}

void RatioReporter::writeMarkdown(const std::vector<Row>& rows) const {
    std::ofstream file(mMarkdown);
    file << "| figure | CPU time | floor | CPU time | ratio | aim |\n|---|---:|---|---:|---:|---:|\n";
    for (const Row& row : rows) {
        file << "| " << row.comparison.figure << " | " << timeText(row.figure) << " | "
             << row.comparison.floor << " | " << timeText(row.floor) << " | "
             << fixed(row.figure / row.floor, 2) << " | " << aimText(row.comparison) << " |\n";
    }
}
