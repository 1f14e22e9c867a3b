#pragma once

#include "appletwrappers-baselib/BoundFunctions.h"
#include "grabber_basis/Fg_Error.h"
#include "grabber_basis/parameterInfo.h"
#include "platform/DesignRuntime.h"

#include <dlfcn.h>
#include <memory>

struct CloseLibrary {
    void operator()(void* library) const { dlclose(library); }
};
using LibraryHandle = std::unique_ptr<void, CloseLibrary>;

struct UnloadDesign {
    void operator()(fpga_design* design) const { QelUnloadQelFile(design); }
};
using DesignHandle = std::unique_ptr<fpga_design, UnloadDesign>;

/// The private part of a wrapper. The order of the members closes the runtime library before the design is
/// unloaded.
class FgQxWrapperPrivate {
  public:
    std::unique_ptr<BoundFunctions> mWrapperFg = std::make_unique<BoundFunctions>();
    Fg_Struct* mGrabcoreFg = nullptr;
    QXdevice* mBoardHandle = nullptr;
    DesignHandle mDesignHandle;
    LibraryHandle dll;

    decltype(&::Fg_InitHandleSlaveAware) Fg_Init_Func_Slave_Aware = nullptr;
    decltype(&::Fg_InitHandle) Fg_Init_Func = nullptr;
    decltype(&::Fg_getParameterIdByName) DLL_Fg_getParameterIdByName = nullptr;
    /// A second binding, for errors before there is an inner handle.
    decltype(&::Fg_getLastErrorNumber) DLL_Fg_getLastErrorNumber = nullptr;

    std::unique_ptr<Fg_ParameterInfo> mParameterInfo = std::make_unique<Fg_ParameterInfo>();
    Fg_Error mError;

    /// Looks a runtime function up by name; null when the runtime lacks it.
    template <class Function>
    void bind(Function& function, const char* name) const {
        function = reinterpret_cast<Function>(dlsym(dll.get(), name));
    }
};
