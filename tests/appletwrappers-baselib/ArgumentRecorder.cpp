// A runtime library that only notes what reaches its functions; most functions are missing in it.

#include "tests/appletwrappers-baselib/ArgumentRecorder.h"

#include "platform/FrameGrabber.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

ArgumentRecord record;

template <class... Values>
int note(const char* function, Fg_Struct* handle, Values... values) {
    record.function = function;
    record.handle = handle;
    record.values = {static_cast<std::intptr_t>(values)...};
    return record.answer;
}

std::intptr_t address(const void* pointer) { return reinterpret_cast<std::intptr_t>(pointer); }

Fg_Struct innerHandle{nullptr};

} // namespace

EXPORTED ArgumentRecord* argumentRecord() { return &record; }

EXPORTED Fg_Struct* Fg_InitHandle(const char*, QXdevice*, fpga_design*) {
    record.inner = &innerHandle;
    return &innerHandle;
}
EXPORTED int Fg_getAppletId(Fg_Struct* handle, const char* name) {
    return note("Fg_getAppletId", handle, address(name));
}
EXPORTED int Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory) {
    return note("Fg_getStatusEx", handle, param, data, dmaIndex, address(memory));
}
EXPORTED int Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory) {
    return note("Fg_AcquireEx", handle, dmaIndex, frames, flag, address(memory));
}
EXPORTED int Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag) {
    return note("Fg_stopAcquireEx", handle, dmaIndex, address(memory), flag);
}
EXPORTED int Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory) {
    return note("Fg_getLastPicNumberEx", handle, dmaIndex, address(memory));
}
EXPORTED int Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout,
                                           dma_mem* memory) {
    return note("Fg_getLastPicNumberBlockingEx", handle, picture, dmaIndex, timeout, address(memory));
}
EXPORTED int Fg_getLastErrorNumber(Fg_Struct* handle) { return handle == &innerHandle ? -777 : -778; }
EXPORTED int Fg_FreeGrabber(Fg_Struct* handle) { return note("Fg_FreeGrabber", handle); }
