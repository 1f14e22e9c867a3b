#pragma once

#include "templates/Locks.h"

#include <exception>
#include <stdexcept>

namespace kavo::templates {
namespace patterns {

/// Holds a lock for a scope. The object that it guards must outlive it; null guards nothing.
template <class Guarded>
class Guard;

/// Enters a lock, and leaves it at the end of the scope. Throws std::logic_error when the lock is entered
/// twice, and at the end when it was left in between; while an exception unwinds the stack, the end never
/// throws.
template <>
class Guard<GenericLock*> {
  public:
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

  protected:
    explicit Guard(GenericLock* lock) : mGuarded(lock) {
        if (mGuarded != nullptr) {
            mGuarded->enter();
            mOwns = true;
        }
    }

    // NOLINTNEXTLINE(bugprone-exception-escape): noexcept(false) on purpose
    ~Guard() noexcept(false) {
        if (!mOwns) {
            return;
        }
        try {
            mGuarded->leave();
        } catch (const std::logic_error&) {
            if (std::uncaught_exceptions() == 0) {
                throw;
            }
        }
    }

  private:
    GenericLock* mGuarded;
    bool mOwns = false;
};

class GenericLockGuard : public Guard<GenericLock*> {
  public:
    explicit GenericLockGuard(GenericLock* lock) : Guard(lock) {}
};

/// Takes a recursive mutex, and releases it at the end of the scope.
template <>
class Guard<platform::RecursiveMutex*> {
  public:
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

  protected:
    explicit Guard(platform::RecursiveMutex* mutex) : mGuarded(mutex), mOwns(mutex != nullptr) {
        if (mOwns) {
            mGuarded->acquire();
        }
    }

    ~Guard() {
        if (mOwns) {
            mGuarded->release();
        }
    }

  private:
    platform::RecursiveMutex* mGuarded;
    bool mOwns;
};

} // namespace patterns

namespace platform {

class CriticalSectionGuard : public patterns::Guard<patterns::GenericLock*> {
  public:
    explicit CriticalSectionGuard(patterns::GenericLock* lock) : Guard(lock) {}
};

class RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*> {
  public:
    explicit RecursiveMutexGuard(RecursiveMutex* mutex) : Guard(mutex) {}
};

} // namespace platform
} // namespace kavo::templates
