#pragma once

/// The functions of libgrabcore5.so that an applet binds by name. Each can be made to be missing
/// (HostCalls::lackSymbol). One macro call per function: SYMBOL(name).
#define SIMULATOR_BOUND_SYMBOLS(SYMBOL)                                                                      \
    SYMBOL(Fg_InitHandleSlaveAware)                                                                          \
    SYMBOL(Fg_InitHandle)                                                                                    \
    SYMBOL(Fg_FreeGrabber)                                                                                   \
    SYMBOL(Fg_getLastErrorNumber)                                                                            \
    SYMBOL(Fg_setParameter)                                                                                  \
    SYMBOL(Fg_setParameterWithType)                                                                          \
    SYMBOL(Fg_getParameter)                                                                                  \
    SYMBOL(Fg_getParameterWithType)                                                                          \
    SYMBOL(Fg_getParameterIdByName)                                                                          \
    SYMBOL(Fg_getParameterInfo)                                                                              \
    SYMBOL(Fg_saveConfig)                                                                                    \
    SYMBOL(Fg_loadConfig)                                                                                    \
    SYMBOL(Fg_Acquire)                                                                                       \
    SYMBOL(Fg_stopAcquire)                                                                                   \
    SYMBOL(Fg_getAppletId)                                                                                   \
    SYMBOL(Fg_getStatusEx)                                                                                   \
    SYMBOL(Fg_AcquireEx)                                                                                     \
    SYMBOL(Fg_stopAcquireEx)                                                                                 \
    SYMBOL(Fg_getLastPicNumberEx)                                                                            \
    SYMBOL(Fg_getLastPicNumberBlockingEx)                                                                    \
    SYMBOL(Fg_AllocShading)                                                                                  \
    SYMBOL(Fg_FreeShading)                                                                                   \
    SYMBOL(Shad_SetSubValueLine)                                                                             \
    SYMBOL(Shad_SetMultValueLine)                                                                            \
    SYMBOL(Shad_SetFixedPatternNoiseLine)                                                                    \
    SYMBOL(Shad_GetMaxLine)                                                                                  \
    SYMBOL(Shad_GetAccess)                                                                                   \
    SYMBOL(Shad_FreeAccess)                                                                                  \
    SYMBOL(Shad_WriteActLine)

namespace simulator {

#define SIMULATOR_SYMBOL_NUMBER(name) symbolNumber_##name,
enum SymbolNumber : unsigned { SIMULATOR_BOUND_SYMBOLS(SIMULATOR_SYMBOL_NUMBER) numberOfBoundSymbols };
#undef SIMULATOR_SYMBOL_NUMBER

} // namespace simulator

/// One byte per bound function, not 0 while the library shall lack it. Plain bytes: the dynamic linker asks
/// for them at moments when nothing else of the process may be relied on.
extern "C" __attribute__((
    visibility("default"))) volatile unsigned char simulatorLackingSymbols[simulator::numberOfBoundSymbols];
