// The program is linked so that mutexes are destroyed through the function below.

#include "templates/Locks.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

namespace {

using kavo::templates::platform::CriticalSection;
using kavo::templates::platform::RecursiveMutex;

// The last address, as a number: what stood there is gone when it is looked at. Plain values, for mutexes are
// destroyed until the very end of the program.
std::size_t destroyedMutexes = 0;
std::uintptr_t lastDestroyedMutex = 0;

struct Place {
    template <class Object>
    explicit Place(const Object& object)
        : begin(reinterpret_cast<std::uintptr_t>(&object)), end(begin + sizeof object) {}

    bool holdsTheDestroyedOne() const {
        return destroyedMutexes == 1 && lastDestroyedMutex >= begin && lastDestroyedMutex < end;
    }

    std::uintptr_t begin, end;
};

template <class Lock>
Place createAndDestroy() {
    const Lock lock;
    EXPECT_EQ(destroyedMutexes, 0U);
    return Place(lock);
}

class MutexDestructionTest : public testing::Test {
  protected:
    MutexDestructionTest() { destroyedMutexes = 0; }
};

TEST_F(MutexDestructionTest, CriticalSectionDestroysItsOwnMutex) {
    EXPECT_TRUE(createAndDestroy<CriticalSection>().holdsTheDestroyedOne());
}

TEST_F(MutexDestructionTest, CriticalSectionOverABorrowedMutexDestroysNone) {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    { const CriticalSection lock(&mutex); }
    EXPECT_EQ(destroyedMutexes, 0U);
    pthread_mutex_destroy(&mutex);
}

TEST_F(MutexDestructionTest, RecursiveMutexDestroysItsMutex) {
    EXPECT_TRUE(createAndDestroy<RecursiveMutex>().holdsTheDestroyedOne());
}

} // namespace

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED int __real_pthread_mutex_destroy(pthread_mutex_t* mutex);
EXPORTED int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex) {
    ++destroyedMutexes;
    lastDestroyedMutex = reinterpret_cast<std::uintptr_t>(mutex);
    return __real_pthread_mutex_destroy(mutex);
}
}
