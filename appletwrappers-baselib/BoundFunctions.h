#pragma once

#include "platform/FrameGrabber.h"

/// The runtime functions that a wrapper binds by name, in the order in which they are looked up.
#define KAVO_BOUND_FUNCTIONS(X)                                                                              \
    X(Fg_getAppletId)                                                                                        \
    X(Fg_setParameter)                                                                                       \
    X(Fg_setParameterWithType)                                                                               \
    X(Fg_getParameter)                                                                                       \
    X(Fg_getParameterWithType)                                                                               \
    X(Fg_saveConfig)                                                                                         \
    X(Fg_loadConfig)                                                                                         \
    X(Fg_Acquire)                                                                                            \
    X(Fg_stopAcquire)                                                                                        \
    X(Fg_getLastPicNumberBlockingEx)                                                                         \
    X(Fg_getLastPicNumberEx)                                                                                 \
    X(Fg_FreeGrabber)                                                                                        \
    X(Fg_getLastErrorNumber)                                                                                 \
    X(Fg_getStatusEx)                                                                                        \
    X(Fg_AcquireEx)                                                                                          \
    X(Fg_stopAcquireEx)                                                                                      \
    X(Fg_getParameterInfo)                                                                                   \
    X(Fg_AllocShading)                                                                                       \
    X(Fg_FreeShading)                                                                                        \
    X(Shad_SetSubValueLine)                                                                                  \
    X(Shad_SetMultValueLine)                                                                                 \
    X(Shad_SetFixedPatternNoiseLine)                                                                         \
    X(Shad_GetMaxLine)                                                                                       \
    X(Shad_GetAccess)                                                                                        \
    X(Shad_FreeAccess)                                                                                       \
    X(Shad_WriteActLine)

/// One pointer per runtime function; null until it was bound and where the runtime lacks the function.
struct BoundFunctions {
#define X(name) decltype(&::name) DLL_##name = nullptr;
    KAVO_BOUND_FUNCTIONS(X)
#undef X
};
