#pragma once

#include "console/Failure.h"
#include "console/HostLibrary.h"
#include "platform/RuntimeForPrograms.h"

#include <string>

namespace orbctl {

template <typename Signature>
class HostFunction;

/// A function of the host that is found by its name while the program runs. Calling one that was not found
/// throws.
template <typename Result, typename... Values>
class HostFunction<Result(Values...)> {
  public:
    explicit HostFunction(const char* name) : mName(name) {}

    /// Takes the library's function unless one was found before.
    void bind(const HostLibrary& library) {
        if (mFunction == nullptr)
            mFunction = reinterpret_cast<Result (*)(Values...)>(library.symbol(mName));
    }
    bool isBound() const { return mFunction != nullptr; }
    const char* name() const { return mName; }

    /// \throws Failure (notFound) where the host has no such function
    Result operator()(Values... values) const {
        if (mFunction == nullptr)
            throw Failure(ExitStatus::notFound,
                          std::string("neither the runtime nor the applet has the function ") + mName);
        return mFunction(values...);
    }

  private:
    const char* mName;
    Result (*mFunction)(Values...) = nullptr;
};

/// All that the program asks of the host.
struct HostFunctions {
    HostFunction<decltype(Fg_OpenBoard)> openBoard{"Fg_OpenBoard"};
    HostFunction<decltype(Fg_AppletLibrary)> appletLibrary{"Fg_AppletLibrary"};
    HostFunction<decltype(Fg_FreeGrabber)> freeGrabber{"Fg_FreeGrabber"};
    HostFunction<decltype(Fg_getLastErrorNumber)> lastError{"Fg_getLastErrorNumber"};
    HostFunction<decltype(Info)> info{"Info"};

    HostFunction<decltype(Fg_getNrOfParameter)> parameterCount{"Fg_getNrOfParameter"};
    HostFunction<decltype(Fg_getParameterName)> parameterName{"Fg_getParameterName"};
    HostFunction<decltype(Fg_getParameterId)> parameterId{"Fg_getParameterId"};
    HostFunction<decltype(Fg_getParameterIdByName)> parameterIdByName{"Fg_getParameterIdByName"};
    HostFunction<decltype(Fg_getParameterInfo)> parameterInfo{"Fg_getParameterInfo"};
    HostFunction<decltype(Fg_setParameterWithType)> setParameter{"Fg_setParameterWithType"};
    HostFunction<decltype(Fg_getParameterWithType)> getParameter{"Fg_getParameterWithType"};

    HostFunction<decltype(Fg_saveConfig)> saveConfiguration{"Fg_saveConfig"};
    HostFunction<decltype(Fg_loadConfig)> loadConfiguration{"Fg_loadConfig"};
    HostFunction<decltype(Fg_getParameterInfoXML)> parameterXml{"Fg_getParameterInfoXML"};
    HostFunction<decltype(Fg_getEventMask)> eventMask{"Fg_getEventMask"};
    HostFunction<decltype(Fg_getEventName)> eventName{"Fg_getEventName"};

    HostFunction<decltype(Fg_CreateImageMemory)> createImageMemory{"Fg_CreateImageMemory"};
    HostFunction<decltype(Fg_ReleaseImageMemory)> releaseImageMemory{"Fg_ReleaseImageMemory"};
    HostFunction<decltype(Fg_AcquireEx)> acquire{"Fg_AcquireEx"};
    HostFunction<decltype(Fg_stopAcquireEx)> stopAcquire{"Fg_stopAcquireEx"};
    HostFunction<decltype(Fg_getLastPicNumberEx)> lastPicture{"Fg_getLastPicNumberEx"};
    HostFunction<decltype(Fg_getLastPicNumberBlockingEx)> waitForPicture{"Fg_getLastPicNumberBlockingEx"};

    /// Looks every function that is still missing up in the library.
    void bind(const HostLibrary& library) {
        bindAll(library, openBoard, appletLibrary, freeGrabber, lastError, info, parameterCount,
                parameterName, parameterId, parameterIdByName, parameterInfo, setParameter, getParameter,
                saveConfiguration, loadConfiguration, parameterXml, eventMask, eventName, createImageMemory,
                releaseImageMemory, acquire, stopAcquire, lastPicture, waitForPicture);
    }

  private:
    template <typename... Functions>
    static void bindAll(const HostLibrary& library, Functions&... functions) {
        (functions.bind(library), ...);
    }
};

} // namespace orbctl
