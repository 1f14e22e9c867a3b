#include "tests/support/AllocationFaults.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

constexpr long never = -1;
thread_local long successesLeft = never;
thread_local bool staysShort = false;
thread_local bool hasFailed = false;
thread_local int pauses = 0;
thread_local long allocations = 0;

std::atomic<long> liveBlocks{0};
std::atomic<long> liveBytes{0};

bool isRefused() {
    if (pauses > 0 || successesLeft == never) {
        return false;
    }
    if (successesLeft > 0) {
        --successesLeft;
        return false;
    }
    hasFailed = true;
    successesLeft = staysShort ? 0 : never;
    return true;
}

/// Stands before every block.
struct alignas(std::max_align_t) BlockHeader {
    bool isCounted;
};

void count(BlockHeader* block, long change) {
    if (block->isCounted) {
        liveBlocks.fetch_add(change, std::memory_order_relaxed);
        liveBytes.fetch_add(change * static_cast<long>(malloc_usable_size(block) - sizeof *block),
                            std::memory_order_relaxed);
    }
}

void* allocate(std::size_t size) noexcept {
    auto* const block =
        isRefused() ? nullptr : static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + size));
    if (block == nullptr) {
        return nullptr;
    }
    block->isCounted = pauses == 0;
    allocations += block->isCounted ? 1 : 0;
    count(block, 1);
    return block + 1;
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void release(void* memory) noexcept {
    if (memory != nullptr) {
        BlockHeader* const block = static_cast<BlockHeader*>(memory) - 1;
        count(block, -1);
        std::free(block);
    }
}

} // namespace

namespace kavo::test {

AllocationFault::AllocationFault(long successes, Duration duration) {
    hasFailed = false;
    staysShort = duration == Duration::forEver;
    successesLeft = successes;
}
AllocationFault::~AllocationFault() { successesLeft = never; }
bool AllocationFault::hasHappened() const { return hasFailed; }

AllocationPause::AllocationPause() { ++pauses; }
AllocationPause::~AllocationPause() { --pauses; }

long allocationCount() { return allocations; }

LiveMemory liveMemory() { return {liveBlocks, liveBytes}; }

} // namespace kavo::test

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }
