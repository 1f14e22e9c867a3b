// The counts of AllocationFaults.h on the heap itself: malloc and its kind, the language's new, thrown
// exceptions.

#include "tests/trust/AllocationCounts.h"

#include "tests/support/AllocationFaults.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORBELLINE_HEAP_IS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORBELLINE_HEAP_IS_SANITIZED
#endif
#endif

namespace {

thread_local int pauses = 0;
thread_local long allocations = 0;
thread_local long keptBlocks = 0;
thread_local long keptBytes = 0;
std::atomic<long> liveBlocks{0};
std::atomic<long> liveBytes{0};

void countTaken(std::size_t size) {
    const auto bytes = static_cast<long>(size);
    if (pauses == 0) {
        ++allocations;
        ++keptBlocks;
        keptBytes += bytes;
    }
    liveBlocks.fetch_add(1, std::memory_order_relaxed);
    liveBytes.fetch_add(bytes, std::memory_order_relaxed);
}

void countReturned(std::size_t size) {
    const auto bytes = static_cast<long>(size);
    if (pauses == 0) {
        --keptBlocks;
        keptBytes -= bytes;
    }
    liveBlocks.fetch_sub(1, std::memory_order_relaxed);
    liveBytes.fetch_sub(bytes, std::memory_order_relaxed);
}

} // namespace

namespace kavo::test {

AllocationPause::AllocationPause() { ++pauses; }
AllocationPause::~AllocationPause() { --pauses; }

long allocationCount() { return allocations; }

KeptMemory keptMemory() { return {keptBlocks, keptBytes}; }

LiveMemory liveMemory() {
    return {liveBlocks.load(std::memory_order_relaxed), liveBytes.load(std::memory_order_relaxed)};
}

} // namespace kavo::test

#ifdef ORBELLINE_HEAP_IS_SANITIZED

// The sanitizers bring a heap of their own, and tell what happens on it. Not every compiler has the header.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*taken)(const volatile void* block, std::size_t size),
                                              void (*returned)(const volatile void* block));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

[[maybe_unused]] const int hooks = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void* block, std::size_t) {
        if (block != nullptr) {
            countTaken(__sanitizer_get_allocated_size(block));
        }
    },
    [](const volatile void* block) {
        if (block != nullptr) {
            countReturned(__sanitizer_get_allocated_size(block));
        }
    });

} // namespace

#else

#define EXPORTED extern "C" __attribute__((visibility("default")))

// The system's heap under the names that it keeps for programs that put something before it.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

void* taken(void* block) {
    if (block != nullptr) {
        countTaken(malloc_usable_size(block));
    }
    return block;
}

} // namespace

EXPORTED void* malloc(std::size_t size) noexcept { return taken(__libc_malloc(size)); }
EXPORTED void* calloc(std::size_t count, std::size_t size) noexcept {
    return taken(__libc_calloc(count, size));
}
EXPORTED void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return taken(__libc_memalign(alignment, size));
}
EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return taken(__libc_memalign(alignment, size));
}
EXPORTED int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = taken(__libc_memalign(alignment, size));
    return *block != nullptr ? 0 : ENOMEM;
}

EXPORTED void* realloc(void* block, std::size_t size) noexcept {
    const std::size_t before = block != nullptr ? malloc_usable_size(block) : 0;
    void* const moved = __libc_realloc(block, size);
    if (block != nullptr && (moved != nullptr || size == 0)) {
        countReturned(before);
    }
    return taken(moved);
}

EXPORTED void free(void* block) noexcept {
    if (block != nullptr) {
        countReturned(malloc_usable_size(block));
        __libc_free(block);
    }
}

#endif
