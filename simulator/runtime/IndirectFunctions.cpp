#include "simulator/runtime/Answers.h"

/// The bound functions as GNU indirect functions: the dynamic linker calls a function's resolver whenever the
/// function is looked up and hands out what it returns, so that dlsym answers null for a function that shall
/// be missing. Resolvers can run before a sanitizer or the stack guard is set up: this file is built without
/// either.
#define SIMULATOR_INDIRECT(name)                                                                             \
    extern "C" __attribute__((visibility("hidden"))) decltype(name)* resolve_##name();                       \
    extern "C" decltype(name)* resolve_##name() {                                                            \
        const bool isLacking = simulatorLackingSymbols[simulator::symbolNumber_##name] != 0;                 \
        return isLacking ? nullptr : &answer_##name;                                                         \
    }                                                                                                        \
    extern "C" __attribute__((visibility("default"), ifunc("resolve_" #name))) decltype(name) name;
SIMULATOR_BOUND_SYMBOLS(SIMULATOR_INDIRECT)
#undef SIMULATOR_INDIRECT
