#pragma once

namespace kavo::test {

/// Makes an allocation of this thread fail. Only a program that links AllocationFaults.cpp has these
/// allocation functions in place of the language's own.
class AllocationFault {
  public:
    /// \param successes  number of allocations that still succeed before one fails
    explicit AllocationFault(int successes);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    /// Whether the allocation came that had to fail.
    bool hasHappened() const;
};

/// Number of allocations that this thread has made.
long allocationCount();

} // namespace kavo::test
