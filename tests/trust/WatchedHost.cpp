#include "tests/trust/WatchedHost.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <optional>
#include <sched.h>
#include <string>

extern "C" {
void* __real_dlsym(void* library, const char* name);
void* __wrap_dlsym(void* library, const char* name);
int __real_KavoRegisterRead(QXdevice* device, int reg, void* buffer);
int __wrap_KavoRegisterRead(QXdevice* device, int reg, void* buffer);
int __real_KavoRegisterWrite(QXdevice* device, int reg, unsigned lower, unsigned upper);
int __wrap_KavoRegisterWrite(QXdevice* device, int reg, unsigned lower, unsigned upper);
}

namespace {

constexpr std::size_t mostHandles = 1024;

std::array<WatchedHost::Handle, mostHandles>& handles() {
    static std::array<WatchedHost::Handle, mostHandles> all;
    return all;
}

template <class Function>
Function* runtimeFunction(const char* name) {
    static void* const runtime = dlopen("libgrabcore5.so", RTLD_NOW);
    return reinterpret_cast<Function*>(__real_dlsym(runtime, name));
}

/// A stay in the runtime.
class Stay {
  public:
    explicit Stay(const Fg_Struct* inner) : Stay(WatchedHost::of(inner)) {}
    explicit Stay(WatchedHost::Handle& handle) : mHandle(handle) {
        if (mHandle.inside.fetch_add(1, std::memory_order_relaxed) != 0) {
            mHandle.overlaps.fetch_add(1, std::memory_order_relaxed);
        }
        mHandle.entries.fetch_add(1, std::memory_order_relaxed);
        // Let others come in between.
        const long entries = mHandle.unguardedEntries;
        if (entries % 8 == 0) {
            sched_yield();
        }
        mHandle.unguardedEntries = entries + 1;
    }
    ~Stay() { mHandle.inside.fetch_sub(1, std::memory_order_relaxed); }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;
    void note(const WatchedHost::Write& write) { mHandle.writes.push_back(write); }

  private:
    WatchedHost::Handle& mHandle;
};

/// A stay in the registers of a device that is watched.
class RegisterStay {
  public:
    explicit RegisterStay(const QXdevice* device) {
        for (WatchedHost::Handle& each : handles()) {
            if (each.device.load(std::memory_order_relaxed) == device) {
                mStay.emplace(each);
                return;
            }
        }
    }

  private:
    std::optional<Stay> mStay;
};

std::uint32_t wordAt(const void* value) {
    std::uint32_t word = 0;
    std::memcpy(&word, value, sizeof word);
    return word;
}

int setTyped(Fg_Struct* inner, int id, const void* value, unsigned dmaIndex, int type) {
    static auto* const function =
        runtimeFunction<decltype(Fg_setParameterWithType)>("Fg_setParameterWithType");
    Stay stay(inner);
    stay.note({id, dmaIndex, wordAt(value)});
    return function(inner, id, value, dmaIndex, type);
}

int set(Fg_Struct* inner, int id, const void* value, unsigned dmaIndex) {
    static auto* const function = runtimeFunction<decltype(Fg_setParameter)>("Fg_setParameter");
    Stay stay(inner);
    stay.note({id, dmaIndex, wordAt(value)});
    return function(inner, id, value, dmaIndex);
}

int getTyped(Fg_Struct* inner, int id, void* value, unsigned dmaIndex, int type) {
    static auto* const function =
        runtimeFunction<decltype(Fg_getParameterWithType)>("Fg_getParameterWithType");
    const Stay stay(inner);
    return function(inner, id, value, dmaIndex, type);
}

int get(Fg_Struct* inner, int id, void* value, unsigned dmaIndex) {
    static auto* const function = runtimeFunction<decltype(Fg_getParameter)>("Fg_getParameter");
    const Stay stay(inner);
    return function(inner, id, value, dmaIndex);
}

} // namespace

void WatchedHost::forget() {
    for (Handle& each : handles()) {
        each.handle = nullptr;
        each.device = nullptr;
        each.entries = 0;
        each.overlaps = 0;
        each.unguardedEntries = 0;
        each.writes.clear();
    }
}

WatchedHost::Handle& WatchedHost::of(const Fg_Struct* inner) {
    for (Handle& each : handles()) {
        const void* known = each.handle.load(std::memory_order_relaxed);
        if (known == inner || (known == nullptr && (each.handle.compare_exchange_strong(
                                                        known, inner, std::memory_order_relaxed) ||
                                                    known == inner))) {
            return each;
        }
    }
    std::abort();
}

void WatchedHost::watchRegisters(const QXdevice* device, const Fg_Struct* inner) {
    of(inner).device = device;
}

int __wrap_KavoRegisterRead(QXdevice* device, int reg, void* buffer) {
    const RegisterStay stay(device);
    return __real_KavoRegisterRead(device, reg, buffer);
}

int __wrap_KavoRegisterWrite(QXdevice* device, int reg, unsigned lower, unsigned upper) {
    const RegisterStay stay(device);
    return __real_KavoRegisterWrite(device, reg, lower, upper);
}

void* __wrap_dlsym(void* library, const char* name) {
    const std::string wanted(name);
    if (wanted == "Fg_setParameterWithType") {
        return reinterpret_cast<void*>(setTyped);
    }
    if (wanted == "Fg_getParameterWithType") {
        return reinterpret_cast<void*>(getTyped);
    }
    if (wanted == "Fg_setParameter") {
        return reinterpret_cast<void*>(set);
    }
    if (wanted == "Fg_getParameter") {
        return reinterpret_cast<void*>(get);
    }
    return __real_dlsym(library, name);
}
