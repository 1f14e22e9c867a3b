#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// What a figure is compared with.
struct Comparison {
    std::string figure; ///< benchmark name
    std::string floor;  ///< benchmark name, measured in the same run
    double target;      ///< ratio to reach; 0: none
};

/// Adds a figure to the table at the end of the run.
void compare(const std::string& figure, const std::string& floor, double target = 0);

/// Prints the runs as they come, and behind the last the table of figures, floors and ratios.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    std::map<std::string, double> mNanoseconds;
};
