// The entry points that take a handle. Each finds the wrapper in the handle, calls one of its operations or
// the runtime's function of the same name, and records the last error in the way of its group.

#include "appletwrappers-baselib/FgQxWrapper.h"
#include "platform/ErrorCodes.h"
#include "platform/FrameGrabber.h"

#include <cstring>

#define EXPORTED __attribute__((visibility("default")))

namespace error = kavo::error;

namespace {

/// Calls an operation of the wrapper and returns its result; a handle without a wrapper gives `noWrapper`.
template <class Result, class Operation>
Result onWrapper(Fg_Struct* handle, Result noWrapper, Operation operation) {
    if (handle == nullptr || handle->Master == nullptr) {
        return noWrapper;
    }
    return operation(*static_cast<FgQxWrapper*>(handle->Master));
}

/// The same for operations that do not keep the last error themselves: it becomes their result.
template <class Operation>
int onWrapperKeepingResult(Fg_Struct* handle, Operation operation) {
    return onWrapper(handle, error::noHandle,
                     [&](FgQxWrapper& wrapper) { return wrapper.setError(operation(wrapper)); });
}

/// Calls a bound runtime function on the inner handle; a negative result fetches the runtime's own last
/// error.
template <class Function, class... Arguments>
int onRuntime(Fg_Struct* handle, Function BoundFunctions::*member, Arguments... arguments) {
    return onWrapper(handle, error::noHandle, [&](FgQxWrapper& wrapper) {
        const Function function = wrapper.wrapperFg().*member;
        if (function == nullptr || wrapper.grabcoreFg() == nullptr) {
            return wrapper.setError(error::notAvailable);
        }
        const int result = function(wrapper.grabcoreFg(), arguments...);
        wrapper.setError(result < 0 ? wrapper.Fg_getLastErrorNumberQx() : error::ok);
        return result;
    });
}

int freeInnerHandle(const FgQxWrapper& wrapper) {
    const auto freeGrabber = wrapper.wrapperFg().DLL_Fg_FreeGrabber;
    if (freeGrabber != nullptr) {
        return freeGrabber(wrapper.grabcoreFg());
    }
    return wrapper.grabcoreFg() != nullptr ? error::notAvailable : error::ok;
}

} // namespace

extern "C" {

// ---- parameters

EXPORTED int Fg_setParameterWithType(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex, int) {
    return onWrapper(handle, error::noHandle, [&](FgQxWrapper& wrapper) {
        return wrapper.Fg_setParameter(id, value, static_cast<int>(dmaIndex));
    });
}

EXPORTED int Fg_getParameterWithType(Fg_Struct* handle, int id, void* value, unsigned dmaIndex, int type) {
    return onWrapper(handle, error::noHandle, [&](FgQxWrapper& wrapper) {
        // Most handlers write 32 bits; the caller of a 64-bit read is to find a clean upper word.
        if (value != nullptr && (type == kavo::type::signed64 || type == kavo::type::unsigned64)) {
            std::memset(value, 0, sizeof(std::uint64_t));
        }
        return wrapper.Fg_getParameter(id, value, static_cast<int>(dmaIndex));
    });
}

EXPORTED int Fg_getNrOfParameter(Fg_Struct* handle) {
    return onWrapper(handle, error::noHandle,
                     [](FgQxWrapper& wrapper) { return wrapper.Fg_getParameterCount(); });
}

EXPORTED const char* Fg_getParameterName(Fg_Struct* handle, int index) {
    return onWrapper(handle, static_cast<const char*>(nullptr),
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_getParameterName(index); });
}

EXPORTED int Fg_getParameterId(Fg_Struct* handle, int index) {
    return onWrapper(handle, error::noHandle,
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_getParameterId(index); });
}

EXPORTED int Fg_getParameterIdByName(Fg_Struct* handle, const char* name) {
    return onWrapper(handle, error::noHandle,
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_getParameterIdByName(name); });
}

EXPORTED RegisterInfo* Fg_getParameterInfo(Fg_Struct* handle, int port) {
    return onWrapper(handle, static_cast<RegisterInfo*>(nullptr), [&](FgQxWrapper& wrapper) {
        const bool runtimeUsable =
            wrapper.wrapperFg().DLL_Fg_getParameterInfo != nullptr && wrapper.grabcoreFg() != nullptr;
        return runtimeUsable ? wrapper.Fg_getParameterInfo(port) : nullptr;
    });
}

EXPORTED int Fg_getParameterInfoXML(Fg_Struct* handle, int port, char* buffer, unsigned* bufferSize) {
    return onWrapper(handle, error::noHandle, [&](FgQxWrapper& wrapper) {
        return wrapper.Fg_getParameterInfoXML(handle, port, buffer, bufferSize);
    });
}

// ---- configuration files, events

EXPORTED int Fg_saveConfig(Fg_Struct* handle, const char* file) {
    return onWrapper(handle, error::noHandle,
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_saveConfig(wrapper.grabcoreFg(), file); });
}

EXPORTED int Fg_loadConfig(Fg_Struct* handle, const char* file) {
    return onWrapper(handle, error::noHandle,
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_loadConfig(wrapper.grabcoreFg(), file); });
}

EXPORTED std::uint64_t Fg_getEventMask(Fg_Struct* handle, const char* name) {
    return onWrapper(handle, std::uint64_t{0},
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_getEventMask(name); });
}

EXPORTED const char* Fg_getEventName(Fg_Struct* handle, std::uint64_t mask) {
    return onWrapper(handle, static_cast<const char*>(nullptr),
                     [&](FgQxWrapper& wrapper) { return wrapper.Fg_getEventName(mask); });
}

// ---- shading

EXPORTED ShadingMaster* Fg_AllocShading(Fg_Struct* handle, int first, int second) {
    return onWrapper(handle, static_cast<ShadingMaster*>(nullptr), [&](FgQxWrapper& wrapper) {
        ShadingMaster* shading = wrapper.Fg_AllocShading(first, second);
        wrapper.setError(shading != nullptr ? error::ok : -1);
        return shading;
    });
}

EXPORTED int Fg_FreeShading(Fg_Struct* handle, ShadingMaster* shading) {
    return onWrapperKeepingResult(handle,
                                  [&](FgQxWrapper& wrapper) { return wrapper.Fg_FreeShading(shading); });
}

EXPORTED int Shad_SetSubValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                  float value) {
    return onWrapperKeepingResult(handle, [&](FgQxWrapper& wrapper) {
        return wrapper.Shad_SetSubValueLine(shading, first, second, value);
    });
}

EXPORTED int Shad_SetMultValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                   float value) {
    return onWrapperKeepingResult(handle, [&](FgQxWrapper& wrapper) {
        return wrapper.Shad_SetMultValueLine(shading, first, second, value);
    });
}

EXPORTED int Shad_SetFixedPatternNoiseLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                           int value) {
    return onWrapperKeepingResult(handle, [&](FgQxWrapper& wrapper) {
        return wrapper.Shad_SetFixedPatternNoiseLine(shading, first, second, value);
    });
}

EXPORTED int Shad_GetMaxLine(Fg_Struct* handle, ShadingMaster* shading) {
    return onWrapperKeepingResult(handle,
                                  [&](FgQxWrapper& wrapper) { return wrapper.Shad_GetMaxLine(shading); });
}

EXPORTED int Shad_GetAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return onWrapperKeepingResult(handle,
                                  [&](FgQxWrapper& wrapper) { return wrapper.Shad_GetAccess(shading); });
}

EXPORTED int Shad_FreeAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return onWrapperKeepingResult(handle,
                                  [&](FgQxWrapper& wrapper) { return wrapper.Shad_FreeAccess(shading); });
}

EXPORTED int Shad_WriteActLine(Fg_Struct* handle, ShadingMaster* shading, int line) {
    return onWrapperKeepingResult(
        handle, [&](FgQxWrapper& wrapper) { return wrapper.Shad_WriteActLine(shading, line); });
}

// ---- acquisition: forwarded to the runtime

EXPORTED int Fg_getAppletId(Fg_Struct* handle, const char* name) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_getAppletId, name);
}

EXPORTED int Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_getStatusEx, param, data, dmaIndex, memory);
}

EXPORTED int Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_AcquireEx, dmaIndex, frames, flag, memory);
}

EXPORTED int Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_stopAcquireEx, dmaIndex, memory, flag);
}

EXPORTED int Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_getLastPicNumberEx, dmaIndex, memory);
}

EXPORTED int Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout,
                                           dma_mem* memory) {
    return onRuntime(handle, &BoundFunctions::DLL_Fg_getLastPicNumberBlockingEx, picture, dmaIndex, timeout,
                     memory);
}

// ---- the handle itself

EXPORTED int Fg_getLastErrorNumber(Fg_Struct* handle) {
    return onWrapper(handle, error::noHandle,
                     [](FgQxWrapper& wrapper) { return wrapper.Fg_getLastErrorNumber(); });
}

EXPORTED int Fg_FreeGrabber(Fg_Struct* handle) {
    return onWrapper(handle, error::noHandle, [&](FgQxWrapper& wrapper) {
        const int result = freeInnerHandle(wrapper);
        handle->Master = nullptr;
        // Not through a smart pointer: destroying a wrapper whose lock is held throws, and that is to reach
        // the caller.
        delete &wrapper;
        return result;
    });
}
}
