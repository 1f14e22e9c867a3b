#pragma once

#include "tests/support/AllocationFaults.h"
#include "tests/trust/FaultSweep.h"

#include <gtest/gtest.h>
#include <new>
#include <optional>

/// Expects that its scope leaves as many blocks allocated as it found.
class MemoryBalance {
  public:
    MemoryBalance() : mBlocks(kavo::test::liveMemory().blocks) {}
    ~MemoryBalance() { EXPECT_EQ(kavo::test::liveMemory().blocks, mBlocks) << "memory is left behind"; }
    MemoryBalance(const MemoryBalance&) = delete;
    MemoryBalance& operator=(const MemoryBalance&) = delete;

  private:
    long mBlocks;
};

/// Number of allocations that an operation makes.
template <class Operation>
long allocationsOf(Operation operation) {
    const long before = kavo::test::allocationCount();
    operation();
    return kavo::test::allocationCount() - before;
}

/// How an operation ended that ran short of memory.
struct MemoryFaultOutcome {
    bool hasHappened;        ///< whether the allocation came that had to fail
    std::optional<int> code; ///< what was returned; nothing after std::bad_alloc
};

/// Runs an operation whose nth allocation (from 0) fails. An exception of another kind passes.
template <class Operation>
MemoryFaultOutcome underMemoryFault(long nth, FaultDuration duration, Operation operation) {
    using kavo::test::AllocationFault;
    MemoryFaultOutcome outcome{};
    const AllocationFault fault(nth, duration == FaultDuration::once ? AllocationFault::Duration::once
                                                                     : AllocationFault::Duration::forEver);
    try {
        outcome.code = operation();
    } catch (const std::bad_alloc&) {
        outcome.code.reset();
    }
    outcome.hasHappened = fault.hasHappened();
    return outcome;
}
