#pragma once

#include <string>

/// How long a fault lasts: for one call, or for it and every later one.
enum class FaultDuration { once, forEver };
constexpr FaultDuration bothDurations[] = {FaultDuration::once, FaultDuration::forEver};
const char* nameOf(FaultDuration duration);

/// Counts what a sweep has done; tells it at the end, on the console and in the test's report.
class SweepReport {
  public:
    explicit SweepReport(std::string title) : mTitle(std::move(title)) {}
    ~SweepReport();
    SweepReport(const SweepReport&) = delete;
    SweepReport& operator=(const SweepReport&) = delete;

    void operation() { ++mOperations; }
    /// \param survived  whether the operation succeeded all the same
    void fault(bool survived) {
        ++mFaults;
        mSurvivors += survived ? 1 : 0;
    }
    [[nodiscard]] long faults() const { return mFaults; }
    [[nodiscard]] long survivors() const { return mSurvivors; }

  private:
    std::string mTitle;
    long mOperations = 0;
    long mFaults = 0;
    long mSurvivors = 0;
};
