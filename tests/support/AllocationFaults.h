#pragma once

namespace kavo::test {

/// Makes an allocation of this thread fail. Only a program that links AllocationFaults.cpp has these
/// allocation functions in place of the language's own.
class AllocationFault {
  public:
    /// How long memory is short: for one allocation, or for it and all later ones while this object lives.
    enum class Duration { once, forEver };

    /// \param successes  number of allocations that still succeed before one fails
    explicit AllocationFault(long successes, Duration duration = Duration::once);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    /// Whether the allocation came that had to fail.
    bool hasHappened() const;
};

/// While it lives, allocations of this thread succeed and are counted nowhere: for what happens on the other
/// side of an interface.
class AllocationPause {
  public:
    AllocationPause();
    ~AllocationPause();
    AllocationPause(const AllocationPause&) = delete;
    AllocationPause& operator=(const AllocationPause&) = delete;
};

/// Number of allocations that this thread has made.
long allocationCount();

/// What all threads have allocated and not released yet: blocks, and bytes as the heap gives them.
struct LiveMemory {
    long blocks;
    long bytes;
};
LiveMemory liveMemory();

} // namespace kavo::test
