#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// What a figure is compared with.
struct Comparison {
    std::string figure; ///< benchmark name
    std::string floor;  ///< benchmark name, measured in the same run
    double ratio;       ///< ratio to reach; 0: none
    double nanoseconds; ///< time to reach; 0: none
};

/// Adds a figure to the table at the end of the run, with the ratio that it is to reach.
void compare(const std::string& figure, const std::string& floor, double ratio = 0);
/// The same for a figure that is to reach a time of its own.
void compareTime(const std::string& figure, const std::string& floor, double nanoseconds = 0);

/// Prints the runs as they come, and behind the last the table of figures, floors and ratios. Of a benchmark's
/// repetitions the quickest counts: whatever else the machine does only adds.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    /// \param markdown  file for the table as Markdown, none when empty
    explicit RatioReporter(std::string markdown) : mMarkdown(std::move(markdown)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    struct Row {
        Comparison comparison;
        double figure, floor;
    };
    [[nodiscard]] std::vector<Row> measured() const;
    void writeMarkdown(const std::vector<Row>& rows) const;

    std::string mMarkdown;
    std::map<std::string, double> mNanoseconds;
};
