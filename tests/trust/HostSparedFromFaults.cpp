
#include "tests/trust/HostSparedFromFaults.h"

#include "appletwrappers-baselib/BoundFunctions.h"
#include "platform/DesignRuntime.h"
#include "platform/RegisterAccess.h"
#include "tests/support/AllocationFaults.h"

#include <cstring>
#include <dlfcn.h>

using kavo::test::AllocationPause;

#define EXPORTED __attribute__((visibility("default")))

/// A function that the applet is linked against.
#define SPARED(Result, name, parameters, arguments)                                                          \
    EXPORTED Result __real_##name parameters;                                                                \
    EXPORTED Result __wrap_##name parameters;                                                                \
    Result __wrap_##name parameters {                                                                        \
        const AllocationPause pause;                                                                         \
        return __real_##name arguments;                                                                      \
    }

extern "C" {
SPARED(fpga_design*, QelLoadDesignFromBuffer, (const void* image, unsigned size, int flag),
       (image, size, flag))
SPARED(fpga_design*, QelLoadQelFileWithType, (const char* file, int type, int flag), (file, type, flag))
SPARED(int, QelUnloadQelFile, (fpga_design * design), (design))
SPARED(int, QelGetNrOfRegister, (fpga_design * design), (design))
SPARED(const char*, QelGetRegisterName, (fpga_design * design, int index), (design, index))
SPARED(int, QelGetRegisterByName, (fpga_design * design, const char* name), (design, name))
SPARED(int, QelGetRegisterBitRange, (fpga_design * design, int index), (design, index))
SPARED(const QelEvent*, QelGetEvent, (fpga_design * design, int index), (design, index))
SPARED(int, KavoRegisterRead, (QXdevice * device, int number, void* buffer), (device, number, buffer))
SPARED(int, KavoRegisterWrite, (QXdevice * device, int number, unsigned lower, unsigned upper),
       (device, number, lower, upper))
EXPORTED void* __real_dlopen(const char* file, int mode);
EXPORTED void* __wrap_dlopen(const char* file, int mode);
EXPORTED void* __real_dlsym(void* library, const char* name);
EXPORTED void* __wrap_dlsym(void* library, const char* name);
EXPORTED int __real_dlclose(void* library);
EXPORTED int __wrap_dlclose(void* library);
}

namespace {

int libraries = 0;

/// A function that the applet looks up; the parameter `real` holds the runtime's own.
template <class Function>
struct Spared;

template <class Result, class... Arguments>
struct Spared<Result (*)(Arguments...)> {
    template <Result (*&real)(Arguments...)>
    static Result call(Arguments... arguments) {
        const AllocationPause pause;
        return real(arguments...);
    }
};

#define SPARED_BOUND_FUNCTIONS(X)                                                                            \
    KAVO_BOUND_FUNCTIONS(X)                                                                                  \
    X(Fg_InitHandleSlaveAware)                                                                               \
    X(Fg_InitHandle)                                                                                         \
    X(Fg_getParameterIdByName)

#define X(name) decltype(&::name) real_##name = nullptr;
SPARED_BOUND_FUNCTIONS(X)
#undef X

/// Keeps the runtime's function and gives the one that spares it; null stays null.
template <class Function>
void* spare(Function& real, Function spared, void* found) {
    real = reinterpret_cast<Function>(found);
    return found != nullptr ? reinterpret_cast<void*>(spared) : nullptr;
}

} // namespace

int openLibraries() { return libraries; }

void* __wrap_dlopen(const char* file, int mode) {
    const AllocationPause pause;
    void* const library = __real_dlopen(file, mode);
    libraries += library != nullptr ? 1 : 0;
    return library;
}

int __wrap_dlclose(void* library) {
    const AllocationPause pause;
    --libraries;
    return __real_dlclose(library);
}

void* __wrap_dlsym(void* library, const char* name) {
    const AllocationPause pause;
    void* const found = __real_dlsym(library, name);
#define X(function)                                                                                          \
    if (std::strcmp(name, #function) == 0) {                                                                 \
        return spare(real_##function, &Spared<decltype(&::function)>::call<real_##function>, found);         \
    }
    SPARED_BOUND_FUNCTIONS(X)
#undef X
    return found;
}
