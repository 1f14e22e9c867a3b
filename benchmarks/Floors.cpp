// What the figures stand beside: the least that a figure must do, measured in the same run.

#include "applet/StandardParameterCaches.h"
#include "benchmarks/BareHandle.h"
#include "platform/ParameterIds.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <pthread.h>

namespace {

class ErrorCheckingMutex {
  public:
    ErrorCheckingMutex() {
        pthread_mutexattr_t attribute;
        pthread_mutexattr_init(&attribute);
        pthread_mutexattr_settype(&attribute, PTHREAD_MUTEX_ERRORCHECK);
        pthread_mutex_init(&mMutex, &attribute);
        pthread_mutexattr_destroy(&attribute);
    }
    ~ErrorCheckingMutex() { pthread_mutex_destroy(&mMutex); }
    void lock() { pthread_mutex_lock(&mMutex); }
    void unlock() { pthread_mutex_unlock(&mMutex); }

  private:
    pthread_mutex_t mMutex{};
};

/// Accesses behind a virtual call, as a wrapper's are.
class Access {
  public:
    virtual ~Access() = default;
    virtual int get(int id, unsigned* value) = 0;
    virtual int set(int id, const unsigned* value) = 0;
};

/// The least that an access is made of: the lock, one switch over the applet's ids, the value; for a set, two
/// calls on the host.
class LeastAccess final : public Access {
  public:
    int get(int id, unsigned* value) override {
        mMutex.lock();
        const int code = read(id, value);
        mMutex.unlock();
        return code;
    }

    int set(int id, const unsigned* value) override {
        mMutex.lock();
        const int code = write(id, value);
        mMutex.unlock();
        return code;
    }

  private:
    int read(int id, unsigned* value) const {
        switch (id) {
#define X(name, ...)                                                                                         \
    case name:                                                                                               \
        *value = of_##name;                                                                                  \
        return 0;
            ORBELLINE_WRITABLE_PARAMETERS(X)
            ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
        default:
            return -1;
        }
    }

    int write(int id, const unsigned* value) {
        switch (id) {
#define X(name, ...)                                                                                         \
    case name:                                                                                               \
        of_##name = *value;                                                                                  \
        break;
            ORBELLINE_WRITABLE_PARAMETERS(X)
            ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
        default:
            return -1;
        }
        host().set(nullptr, id, value, 0, anyType);
        return host().set(nullptr, id, value, 0, anyType);
    }

    ErrorCheckingMutex mMutex;
#define X(name, ...) unsigned of_##name = 0;
    ORBELLINE_WRITABLE_PARAMETERS(X)
    ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
};

/// Nothing about the object is known outside, so that its calls stay virtual.
[[gnu::noipa]] std::unique_ptr<Access> makeLeastAccess() { return std::make_unique<LeastAccess>(); }

template <class Operation>
void leastAccess(benchmark::State& state, Operation operation) {
    const std::unique_ptr<Access> access = makeLeastAccess();
    unsigned value = 512;
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation(*access, value));
    }
}

void floorGet(benchmark::State& state) {
    leastAccess(state, [](Access& access, unsigned& value) { return access.get(FG_WIDTH, &value); });
}
BENCHMARK(floorGet)->Name("floor/lock+call+switch");

void floorSet(benchmark::State& state) {
    leastAccess(state, [](Access& access, unsigned& value) { return access.set(FG_WIDTH, &value); });
}
BENCHMARK(floorSet)->Name("floor/lock+call+switch+2writes");

[[gnu::noinline]] void throwCode(int code) {
    if (code != 0) {
        throw code;
    }
}

[[gnu::noinline]] void passThrough(int code) {
    throwCode(code);
    benchmark::ClobberMemory();
}

void floorThrow(benchmark::State& state) {
    for (auto _ : state) {
        try {
            passThrough(-6000);
        } catch (int code) {
            benchmark::DoNotOptimize(code);
        }
    }
}
BENCHMARK(floorThrow)->Name("floor/thrown-code");

} // namespace
