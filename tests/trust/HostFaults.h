#pragma once

#include "simulator/HostCalls.h"
#include "tests/trust/FaultSweep.h"

#include <vector>

/// A code that neither the applet nor the board gives by itself.
constexpr int injectedCode = -4711;

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
