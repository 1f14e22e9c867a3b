#pragma once

namespace kavo::test {

// A program that links AllocationCounts.cpp in place of AllocationFaults.cpp can make no allocation fail, but
// the counts of AllocationFaults.h then know every way to the heap: malloc and its kind, the language's new,
// thrown exceptions, the system's own streams.

/// Bytes that this thread has taken from the heap outside pauses, less those that it gave back there.
long bytesKept();

} // namespace kavo::test
