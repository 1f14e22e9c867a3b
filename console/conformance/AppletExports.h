#pragma once

#include "console/HostFunctions.h"
#include "platform/FrameGrabber.h"

namespace orbctl {

/// The entry points of an applet's library that take a handle, as they are there, past the runtime. Missing
/// ones stay unbound.
struct AppletExports {
    HostFunction<decltype(Fg_setParameterWithType)> setParameter{"Fg_setParameterWithType"};
    HostFunction<decltype(Fg_getParameterWithType)> getParameter{"Fg_getParameterWithType"};
    HostFunction<decltype(Fg_getNrOfParameter)> parameterCount{"Fg_getNrOfParameter"};
    HostFunction<decltype(Fg_getParameterName)> parameterName{"Fg_getParameterName"};
    HostFunction<decltype(Fg_getParameterId)> parameterId{"Fg_getParameterId"};
    HostFunction<decltype(Fg_getParameterIdByName)> parameterIdByName{"Fg_getParameterIdByName"};
    HostFunction<decltype(Fg_getParameterInfo)> parameterInfo{"Fg_getParameterInfo"};
    HostFunction<decltype(Fg_getParameterInfoXML)> parameterXml{"Fg_getParameterInfoXML"};
    HostFunction<decltype(Fg_getEventMask)> eventMask{"Fg_getEventMask"};
    HostFunction<decltype(Fg_getEventName)> eventName{"Fg_getEventName"};
    HostFunction<decltype(Fg_saveConfig)> saveConfiguration{"Fg_saveConfig"};
    HostFunction<decltype(Fg_loadConfig)> loadConfiguration{"Fg_loadConfig"};
    HostFunction<decltype(Fg_getLastErrorNumber)> lastError{"Fg_getLastErrorNumber"};
    HostFunction<decltype(Fg_FreeGrabber)> freeGrabber{"Fg_FreeGrabber"};
    HostFunction<decltype(Fg_getAppletId)> appletId{"Fg_getAppletId"};
    HostFunction<decltype(Fg_getStatusEx)> status{"Fg_getStatusEx"};
    HostFunction<decltype(Fg_AcquireEx)> acquire{"Fg_AcquireEx"};
    HostFunction<decltype(Fg_stopAcquireEx)> stopAcquire{"Fg_stopAcquireEx"};
    HostFunction<decltype(Fg_getLastPicNumberEx)> lastPicture{"Fg_getLastPicNumberEx"};
    HostFunction<decltype(Fg_getLastPicNumberBlockingEx)> waitForPicture{"Fg_getLastPicNumberBlockingEx"};
    HostFunction<decltype(Fg_AllocShading)> allocateShading{"Fg_AllocShading"};
    HostFunction<decltype(Fg_FreeShading)> freeShading{"Fg_FreeShading"};
    HostFunction<decltype(Shad_SetSubValueLine)> setSubValue{"Shad_SetSubValueLine"};
    HostFunction<decltype(Shad_SetMultValueLine)> setMultValue{"Shad_SetMultValueLine"};
    HostFunction<decltype(Shad_SetFixedPatternNoiseLine)> setNoise{"Shad_SetFixedPatternNoiseLine"};
    HostFunction<decltype(Shad_GetMaxLine)> maxLine{"Shad_GetMaxLine"};
    HostFunction<decltype(Shad_GetAccess)> getAccess{"Shad_GetAccess"};
    HostFunction<decltype(Shad_FreeAccess)> freeAccess{"Shad_FreeAccess"};
    HostFunction<decltype(Shad_WriteActLine)> writeLine{"Shad_WriteActLine"};
};

} // namespace orbctl
