#pragma once

#include <exception>
#include <pthread.h>
#include <stdexcept>

/// Locks of the applet. Misusing one is a programming error and throws std::logic_error; nothing catches it
/// here.
namespace kavo::templates {

namespace patterns {

/// A lock with a marker that tells whether somebody entered it. The marker is read and written only while the
/// lock is held, by the guards.
class GenericLock {
  public:
    GenericLock() = default;
    GenericLock(const GenericLock&) = delete;
    GenericLock& operator=(const GenericLock&) = delete;

    /// Throws when the lock is still entered, unless an exception is on its way already.
    // NOLINTNEXTLINE(bugprone-exception-escape): noexcept(false) on purpose
    virtual ~GenericLock() noexcept(false) {
        if (locked && std::uncaught_exceptions() == 0) {
            throw std::logic_error("GenericLock object destroyed with lock still held");
        }
    }

    virtual void acquire() = 0;
    /// \return true when the lock was got
    virtual bool try_acquire(unsigned int timeout) = 0;
    virtual void release() = 0;

    /// Acquires and marks. Finding the marker set, releases and throws: a thread entered twice. The first
    /// entry has then lost its lock too, so this ends in an error and never in a deadlock.
    void enter() {
        acquire();
        if (locked) {
            release();
            throw std::logic_error("GenericLock object got lock but is already marked as locked");
        }
        locked = true;
    }

    /// Clears the marker and releases. Throws when the marker is not set; the lock then stays as it is.
    void leave() {
        if (!locked) {
            throw std::logic_error("GenericLock::leave() called with lock not held");
        }
        locked = false;
        release();
    }

  protected:
    bool locked = false;
};

} // namespace patterns

namespace platform {

/// A lock over a POSIX mutex: its own error-checking one, or one that somebody lends.
class CriticalSection : public patterns::GenericLock {
  public:
    CriticalSection();
    /// \param borrowed  outlives this object, which never destroys it
    explicit CriticalSection(pthread_mutex_t* borrowed);
    ~CriticalSection() noexcept(false) override;

    /// Waits for the mutex. The result of the mutex is not examined: a thread that holds its own
    /// error-checking mutex is refused by it and returns at once.
    void acquire() override { pthread_mutex_lock(mMutex); }
    /// Tries once without waiting, whatever the timeout.
    bool try_acquire(unsigned int timeout) override;
    void release() override { pthread_mutex_unlock(mMutex); }

  private:
    pthread_mutex_t mOwnMutex{};
    pthread_mutex_t* mMutex;
    bool mIsBorrowed;
};

/// A mutex that a thread may take any number of times, and releases as often.
class RecursiveMutex {
  public:
    RecursiveMutex();
    virtual ~RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;

    void acquire();
    void release();
    /// How often the calling thread, which holds the mutex, has taken it.
    int lockDepth() const { return mLockDepth; }

  private:
    pthread_mutexattr_t mAttribute{};
    pthread_mutex_t mMutex{};
    int mLockDepth = 0;
};

} // namespace platform
} // namespace kavo::templates
