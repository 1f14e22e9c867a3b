// What the figures stand beside: the least that a figure must do, measured in the same run.

#include "benchmarks/BareHandle.h"
#include "platform/ParameterIds.h"

#include <benchmark/benchmark.h>

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

/// An operation behind a virtual call, as a wrapper's are.
class Operation {
  public:
    virtual ~Operation() = default;
    virtual int access(int id, unsigned* value) = 0;
};

class SwitchOverIds final : public Operation {
  public:
    explicit SwitchOverIds(int hostCalls) : mHostCalls(hostCalls) {}

    int access(int id, unsigned* value) override {
        mMutex.lock();
        const int code = choose(id, value);
        mMutex.unlock();
        return code;
    }

  private:
    int choose(int id, unsigned* value) {
        switch (id) {
#define IDS(first)                                                                                           \
    case first:                                                                                              \
    case first + 1:                                                                                          \
    case first + 2:                                                                                          \
    case first + 3:                                                                                          \
    case first + 4:
            // As many ids as the applet has, as far apart.
            IDS(600)
            IDS(2000)
            IDS(2050)
            IDS(3050) IDS(3080) IDS(4000) IDS(4010) IDS(5210) IDS(8110) IDS(8116) IDS(8800) IDS(11011)
                IDS(14010) IDS(24010) IDS(24020) IDS(110017) IDS(200350) IDS(300000)* value =
                    static_cast<unsigned>(id);
            return 0;
#undef IDS
        case FG_WIDTH:
        case FG_HEIGHT:
        case FG_XOFFSET: {
            for (int call = 0; call < mHostCalls; ++call) {
                host().set(nullptr, id, value, 0, 2);
            }
            benchmark::DoNotOptimize(*value += 1);
            return 0;
        }
        default:
            return -1;
        }
    }

    ErrorCheckingMutex mMutex;
    int mHostCalls;
};

void accessBeside(benchmark::State& state, int hostCalls) {
    SwitchOverIds floor(hostCalls);
    Operation* operation = &floor;
    benchmark::DoNotOptimize(operation);
    unsigned value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(operation->access(FG_WIDTH, &value));
    }
}

void floorAccess(benchmark::State& state) { accessBeside(state, 0); }
BENCHMARK(floorAccess)->Name("floor/lock+call+switch");

void floorSet(benchmark::State& state) { accessBeside(state, 2); }
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

/// The bare host calls of a rate change: eight reads, one write.
void floorRateCalls(benchmark::State& state) {
    std::uint64_t word = 0;
    for (auto _ : state) {
        for (int read = 0; read < 8; ++read) {
            host().get(nullptr, read, &word, 0, 2);
        }
        benchmark::DoNotOptimize(host().set(nullptr, 1, &word, 0, 2));
    }
}
BENCHMARK(floorRateCalls)->Name("floor/8reads+1write");

/// The bare host calls of an extended status: overflow twice, two fill levels, the runtime's own status.
void floorStatusCalls(benchmark::State& state) {
    std::uint64_t word = 0;
    for (auto _ : state) {
        for (int read = 0; read < 5; ++read) {
            benchmark::DoNotOptimize(host().get(nullptr, read, &word, 0, 2));
        }
    }
}
BENCHMARK(floorStatusCalls)->Name("floor/5reads");

} // namespace
