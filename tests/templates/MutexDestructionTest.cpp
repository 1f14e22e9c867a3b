// The program is linked so that mutexes are destroyed through the function below.

#include "templates/Locks.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

using kavo::templates::platform::CriticalSection;
using kavo::templates::platform::RecursiveMutex;

// Addresses as numbers: what stood there is gone when they are looked at.
std::vector<std::uintptr_t> destroyedMutexes;

struct Place {
    template <class Object>
    explicit Place(const Object& object)
        : begin(reinterpret_cast<std::uintptr_t>(&object)), end(begin + sizeof object) {}

    bool holdsTheDestroyedOne() const {
        return destroyedMutexes.size() == 1 && destroyedMutexes[0] >= begin && destroyedMutexes[0] < end;
    }

    std::uintptr_t begin, end;
};

template <class Lock>
Place createAndDestroy() {
    const Lock lock;
    EXPECT_TRUE(destroyedMutexes.empty());
    return Place(lock);
}

class MutexDestructionTest : public testing::Test {
  protected:
    MutexDestructionTest() { destroyedMutexes.clear(); }
};

TEST_F(MutexDestructionTest, CriticalSectionDestroysItsOwnMutex) {
    EXPECT_TRUE(createAndDestroy<CriticalSection>().holdsTheDestroyedOne());
}

TEST_F(MutexDestructionTest, CriticalSectionOverABorrowedMutexDestroysNone) {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    { const CriticalSection lock(&mutex); }
    EXPECT_TRUE(destroyedMutexes.empty());
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
    destroyedMutexes.push_back(reinterpret_cast<std::uintptr_t>(mutex));
    return __real_pthread_mutex_destroy(mutex);
}
}
