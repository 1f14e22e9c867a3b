#include "templates/Locks.h"

namespace kavo::templates::platform {
namespace {

void makeMutex(pthread_mutex_t& mutex, pthread_mutexattr_t& attribute, int type) {
    pthread_mutexattr_init(&attribute);
    pthread_mutexattr_settype(&attribute, type);
    pthread_mutex_init(&mutex, &attribute);
}

} // namespace

CriticalSection::CriticalSection() : mMutex(&mOwnMutex), mIsBorrowed(false) {
    pthread_mutexattr_t attribute;
    makeMutex(mOwnMutex, attribute, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutexattr_destroy(&attribute);
}

CriticalSection::CriticalSection(pthread_mutex_t* borrowed) : mMutex(borrowed), mIsBorrowed(true) {}

CriticalSection::~CriticalSection() noexcept(false) {
    if (!mIsBorrowed) {
        pthread_mutex_destroy(&mOwnMutex);
    }
}

bool CriticalSection::try_acquire(unsigned int /*timeout*/) { return pthread_mutex_trylock(mMutex) == 0; }

RecursiveMutex::RecursiveMutex() { makeMutex(mMutex, mAttribute, PTHREAD_MUTEX_RECURSIVE); }

RecursiveMutex::~RecursiveMutex() {
    pthread_mutex_destroy(&mMutex);
    pthread_mutexattr_destroy(&mAttribute);
}

void RecursiveMutex::acquire() {
    pthread_mutex_lock(&mMutex);
    ++mLockDepth;
}

void RecursiveMutex::release() {
    --mLockDepth;
    pthread_mutex_unlock(&mMutex);
}

} // namespace kavo::templates::platform
