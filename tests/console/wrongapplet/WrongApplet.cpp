#include "tests/console/wrongapplet/WrongApplet.h"

#include <cstdlib>
#include <dlfcn.h>

namespace wrong {

namespace {

std::string_view fault() {
    const char* const text = std::getenv("ORBELLINE_APPLET_FAULT");
    return text == nullptr ? "" : text;
}

} // namespace

bool has(std::string_view name) { return fault() == name; }

std::string textOf(std::string_view name) {
    const std::string_view whole = fault();
    const bool isIt =
        whole.size() > name.size() && whole.substr(0, name.size()) == name && whole[name.size()] == ':';
    return std::string(isIt ? whole.substr(name.size() + 1) : "");
}

void* rightFunction(const char* name) {
    static void* const library = dlopen(std::getenv("ORBELLINE_RIGHT_APPLET"), RTLD_NOW | RTLD_LOCAL);
    return library == nullptr ? nullptr : dlsym(library, name);
}

} // namespace wrong

// What is passed on as it is.

EXPORTED void* Std_entry(QXdevice* device, int* error, int slave) {
    return RIGHT(Std_entry)(device, error, slave);
}
EXPORTED int Fg_getNrOfParameter(Fg_Struct* handle) {
    return wrong::passOn(RIGHT(Fg_getNrOfParameter), handle);
}
EXPORTED int Fg_getAppletId(Fg_Struct* handle, const char* name) {
    return wrong::passOn(RIGHT(Fg_getAppletId), handle, name);
}
EXPORTED int Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory) {
    return wrong::passOn(RIGHT(Fg_getStatusEx), handle, param, data, dmaIndex, memory);
}
EXPORTED int Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory) {
    return wrong::passOn(RIGHT(Fg_getLastPicNumberEx), handle, dmaIndex, memory);
}
EXPORTED int Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout,
                                           dma_mem* memory) {
    return wrong::passOn(RIGHT(Fg_getLastPicNumberBlockingEx), handle, picture, dmaIndex, timeout, memory);
}
EXPORTED ShadingMaster* Fg_AllocShading(Fg_Struct* handle, int first, int second) {
    return wrong::passOn(RIGHT(Fg_AllocShading), handle, first, second);
}
EXPORTED int Fg_FreeShading(Fg_Struct* handle, ShadingMaster* shading) {
    return wrong::passOn(RIGHT(Fg_FreeShading), handle, shading);
}
EXPORTED int Shad_SetSubValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                  float value) {
    return wrong::passOn(RIGHT(Shad_SetSubValueLine), handle, shading, first, second, value);
}
EXPORTED int Shad_SetMultValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                   float value) {
    return wrong::passOn(RIGHT(Shad_SetMultValueLine), handle, shading, first, second, value);
}
EXPORTED int Shad_SetFixedPatternNoiseLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                           int value) {
    return wrong::passOn(RIGHT(Shad_SetFixedPatternNoiseLine), handle, shading, first, second, value);
}
EXPORTED int Shad_GetMaxLine(Fg_Struct* handle, ShadingMaster* shading) {
    return wrong::passOn(RIGHT(Shad_GetMaxLine), handle, shading);
}
EXPORTED int Shad_GetAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return wrong::passOn(RIGHT(Shad_GetAccess), handle, shading);
}
EXPORTED int Shad_FreeAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return wrong::passOn(RIGHT(Shad_FreeAccess), handle, shading);
}
#if !defined(WRONG_APPLET_LACKS_A_FUNCTION)
EXPORTED int Shad_WriteActLine(Fg_Struct* handle, ShadingMaster* shading, int line) {
    return wrong::passOn(RIGHT(Shad_WriteActLine), handle, shading, line);
}
#endif
