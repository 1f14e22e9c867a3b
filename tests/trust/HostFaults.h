#pragma once

#include "simulator/HostCalls.h"

#include <ostream>
#include <string>
#include <vector>

/// A code that neither the applet nor the board gives by itself.
constexpr int injectedCode = -4711;

/// How long a fault lasts: for one call, or for it and every later one.
enum class FaultDuration { once, forEver };
constexpr FaultDuration bothDurations[] = {FaultDuration::once, FaultDuration::forEver};

/// The calls of an operation that can fail, in order, and the faults that make each of them fail.
class HostFaults {
  public:
    /// Runs an operation without faults and notes its calls.
    template <class Operation>
    explicit HostFaults(Operation operation) {
        simulator::hostCalls().clear();
        simulator::hostCalls().record(true);
        operation();
        noteCalls();
    }

    [[nodiscard]] std::size_t count() const { return mCalls.size(); }
    [[nodiscard]] const simulator::Call& call(std::size_t nth) const { return mCalls[nth]; }
    /// Whether a write comes before the nth call.
    [[nodiscard]] bool hasWrittenBefore(std::size_t nth) const;

    /// From now on the nth call (from 0) fails.
    void arrange(std::size_t nth, FaultDuration duration) const;

  private:
    void noteCalls();
    [[nodiscard]] unsigned callsBefore(std::size_t nth, simulator::CallKind kind) const;

    std::vector<simulator::Call> mCalls;
};

/// Counts what a sweep has done, and prints it at the end.
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
