#include "templates/Locks.h"
#include "templates/Guards.h"

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using kavo::templates::patterns::GenericLock;
using kavo::templates::patterns::GenericLockGuard;
using kavo::templates::platform::CriticalSection;
using kavo::templates::platform::CriticalSectionGuard;
using kavo::templates::platform::RecursiveMutex;
using kavo::templates::platform::RecursiveMutexGuard;

constexpr char lockedTwice[] = "GenericLock object got lock but is already marked as locked";
constexpr char notHeld[] = "GenericLock::leave() called with lock not held";
constexpr char destroyedWhileHeld[] = "GenericLock object destroyed with lock still held";

class OpenCriticalSection : public CriticalSection {
  public:
    using CriticalSection::CriticalSection;
    using GenericLock::locked;
};

template <class Action>
std::string logicErrorOf(Action action) {
    try {
        action();
    } catch (const std::logic_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

bool anotherThreadGets(GenericLock& lock) {
    bool isGot = false;
    std::thread([&] {
        isGot = lock.try_acquire(0);
        if (isGot) {
            lock.release();
        }
    }).join();
    return isGot;
}

template <class Guard>
class LockGuardTest : public testing::Test {};
using LockGuards = testing::Types<GenericLockGuard, CriticalSectionGuard>;

struct GuardName {
    template <class Guard>
    static std::string GetName(int /*index*/) {
        return std::is_same_v<Guard, GenericLockGuard> ? "GenericLockGuard" : "CriticalSectionGuard";
    }
};
TYPED_TEST_SUITE(LockGuardTest, LockGuards, GuardName);

TYPED_TEST(LockGuardTest, HoldsAndMarksTheLockForItsScope) {
    OpenCriticalSection lock;
    EXPECT_FALSE(lock.locked);
    {
        const TypeParam guard(&lock);
        EXPECT_TRUE(lock.locked);
        EXPECT_FALSE(anotherThreadGets(lock));
    }
    EXPECT_FALSE(lock.locked);
    EXPECT_TRUE(anotherThreadGets(lock));
}

TYPED_TEST(LockGuardTest, SecondGuardOfTheSameThreadThrows) {
    CriticalSection lock;
    const TypeParam outer(&lock);
    EXPECT_EQ(logicErrorOf([&] { const TypeParam inner(&lock); }), lockedTwice);
}

TYPED_TEST(LockGuardTest, RefusedSecondGuardUnlocksTheMutexThatTheFirstBelievesItHolds) {
    OpenCriticalSection lock;
    {
        const TypeParam outer(&lock);
        logicErrorOf([&] { const TypeParam inner(&lock); });
        EXPECT_TRUE(lock.locked);
        EXPECT_TRUE(anotherThreadGets(lock));
    }
    EXPECT_FALSE(lock.locked);
}

TYPED_TEST(LockGuardTest, EndThrowsWhenTheLockWasLeftInBetween) {
    OpenCriticalSection lock;
    EXPECT_EQ(logicErrorOf([&] {
                  const TypeParam guard(&lock);
                  lock.locked = false;
              }),
              notHeld);
    EXPECT_FALSE(anotherThreadGets(lock)) << "the mutex stays locked";
    lock.release();
}

TYPED_TEST(LockGuardTest, EndNeverThrowsWhileAnExceptionUnwinds) {
    OpenCriticalSection lock;
    EXPECT_THROW(
        {
            const TypeParam guard(&lock);
            lock.locked = false;
            throw -6000;
        },
        int);
    lock.release();
}

TYPED_TEST(LockGuardTest, ReleasesWhileAnExceptionUnwinds) {
    CriticalSection lock;
    EXPECT_THROW(
        {
            const TypeParam guard(&lock);
            throw -6000;
        },
        int);
    EXPECT_TRUE(anotherThreadGets(lock));
}

TYPED_TEST(LockGuardTest, GuardOfNothingDoesNothing) {
    EXPECT_EQ(logicErrorOf([] { const TypeParam guard(nullptr); }), "nothing thrown");
}

TYPED_TEST(LockGuardTest, SerialisesThreads) {
    constexpr int threadCount = 4;
    constexpr int rounds = 5000;
    CriticalSection lock;
    int counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const TypeParam guard(&lock);
                ++counter;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(counter, threadCount * rounds);
}

TEST(CriticalSectionTest, SecondAcquisitionOfTheSameThreadReturnsAtOnce) {
    CriticalSection lock;
    lock.acquire();
    lock.acquire();
    lock.release();
    EXPECT_TRUE(anotherThreadGets(lock));
}

TEST(CriticalSectionTest, TryAcquireGetsAFreeLock) {
    CriticalSection lock;
    EXPECT_TRUE(lock.try_acquire(0));
    EXPECT_FALSE(anotherThreadGets(lock));
    lock.release();
}

TEST(CriticalSectionTest, TryAcquireOfALockHeldByAnotherThreadIgnoresTheTimeout) {
    CriticalSection lock;
    lock.acquire();
    const auto start = std::chrono::steady_clock::now();
    bool isGot = true;
    std::thread([&] { isGot = lock.try_acquire(3600000); }).join();
    EXPECT_FALSE(isGot);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
    lock.release();
}

TEST(CriticalSectionTest, UsesABorrowedMutexAndNeverDestroysIt) {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    {
        CriticalSection lock(&mutex);
        lock.acquire();
        EXPECT_NE(pthread_mutex_trylock(&mutex), 0);
        lock.release();
    }
    EXPECT_EQ(pthread_mutex_trylock(&mutex), 0);
    pthread_mutex_unlock(&mutex);
    pthread_mutex_destroy(&mutex);
}

TEST(CriticalSectionTest, DestructionOfAnEnteredLockThrows) {
    EXPECT_EQ(logicErrorOf([] {
                  CriticalSection lock;
                  lock.enter();
              }),
              destroyedWhileHeld);
}

TEST(CriticalSectionTest, DestructionThroughTheBaseThrowsToo) {
    auto lock = std::make_unique<CriticalSection>();
    lock->enter();
    EXPECT_EQ(logicErrorOf([&] { delete static_cast<GenericLock*>(lock.release()); }), destroyedWhileHeld);
}

TEST(CriticalSectionTest, DestructionOfAnEnteredLockNeverThrowsWhileAnExceptionUnwinds) {
    EXPECT_THROW(
        {
            CriticalSection lock;
            lock.enter();
            throw -6000;
        },
        int);
}

TEST(CriticalSectionTest, DestructionOfALockThatWasOnlyAcquiredIsSilent) {
    EXPECT_EQ(logicErrorOf([] {
                  CriticalSection lock;
                  lock.acquire();
                  lock.release();
              }),
              "nothing thrown");
}

/// The function in a slot of an object's virtual table; the two entries of the destructor are slots 0 and 1.
template <class Function>
Function slotOf(GenericLock& lock, int slot) {
    void** const table = *reinterpret_cast<void***>(&lock);
    return reinterpret_cast<Function>(table[slot]);
}

TEST(GenericLockTest, OperationsStandInTheirVirtualSlots) {
    CriticalSection lock;
    slotOf<void (*)(GenericLock*)>(lock, 2)(&lock);
    EXPECT_FALSE(anotherThreadGets(lock)) << "slot 2 acquires";
    slotOf<void (*)(GenericLock*)>(lock, 4)(&lock);
    EXPECT_TRUE(anotherThreadGets(lock)) << "slot 4 releases";
    EXPECT_TRUE((slotOf<bool (*)(GenericLock*, unsigned)>(lock, 3)(&lock, 0))) << "slot 3 tries";
    EXPECT_FALSE(anotherThreadGets(lock));
    lock.release();
}

TEST(RecursiveMutexTest, CountsHowDeepItIsLocked) {
    RecursiveMutex mutex;
    EXPECT_EQ(mutex.lockDepth(), 0);
    {
        const RecursiveMutexGuard outer(&mutex);
        const RecursiveMutexGuard inner(&mutex);
        EXPECT_EQ(mutex.lockDepth(), 2);
    }
    EXPECT_EQ(mutex.lockDepth(), 0);
}

TEST(RecursiveMutexTest, KeepsOtherThreadsOutUntilTheLastRelease) {
    RecursiveMutex mutex;
    int value = 0;
    std::thread other;
    {
        const RecursiveMutexGuard outer(&mutex);
        { const RecursiveMutexGuard inner(&mutex); }
        other = std::thread([&] {
            const RecursiveMutexGuard guard(&mutex);
            value *= 10;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        value = 7;
    }
    other.join();
    EXPECT_EQ(value, 70);
}

TEST(RecursiveMutexTest, GuardOfNothingDoesNothing) {
    const RecursiveMutexGuard guard(nullptr);
    static_assert(std::has_virtual_destructor_v<RecursiveMutex>);
}

} // namespace
