#pragma once

namespace kavo::test {

// A program that links AllocationCounts.cpp in place of AllocationFaults.cpp can make no allocation fail, but
// the counts of AllocationFaults.h then know every way to the heap: malloc and its kind, the language's new,
// thrown exceptions, the system's own streams.

/// What this thread has taken from the heap outside pauses, less what it gave back there. The bytes are those
/// of the heap's pieces, which may be a little larger than asked for, one time more than another.
struct KeptMemory {
    long blocks;
    long bytes;
};
KeptMemory keptMemory();

} // namespace kavo::test
