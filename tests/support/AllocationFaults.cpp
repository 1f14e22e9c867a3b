#include "tests/support/AllocationFaults.h"

#include <cstdlib>
#include <new>

namespace {

constexpr int never = -1;
thread_local int successesLeft = never;
thread_local long allocations = 0;

void* allocate(std::size_t size) noexcept {
    if (successesLeft == 0) {
        successesLeft = never;
        return nullptr;
    }
    if (successesLeft > 0) {
        --successesLeft;
    }
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

namespace kavo::test {

AllocationFault::AllocationFault(int successes) { successesLeft = successes; }
AllocationFault::~AllocationFault() { successesLeft = never; }
bool AllocationFault::hasHappened() const { return successesLeft == never; }

long allocationCount() { return allocations; }

} // namespace kavo::test

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
